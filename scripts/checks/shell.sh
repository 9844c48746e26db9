#!/bin/bash
# Runs shellcheck on every shell script of the tree, recognised by its name or first line.
set -euo pipefail

cd "${1:-$(dirname "${BASH_SOURCE[0]}")/../..}"
scripts() {
    find . -name 'build*' -path './build*' -prune -o -name .git -prune -o -type f -print0 |
        while IFS= read -r -d '' file; do
            if [[ "$file" == *.sh ]] || head -c 30 "$file" | head -n 1 | tr -d '\0' | grep -Eq '^#!.*/(ba|da)?sh'; then
                printf '%s\0' "$file"
            fi
        done
}
scripts | xargs -0 --no-run-if-empty shellcheck --external-sources
