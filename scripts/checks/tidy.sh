#!/bin/bash
# Runs clang-tidy on the product's own sources, with the compile commands of BUILD_FOLDER.
#
#     tidy.sh BUILD_FOLDER [ROOT]
set -euo pipefail

database="$(realpath "$1")"
cd "${2:-$(dirname "${BASH_SOURCE[0]}")/../..}"
if [[ ! -f "$database/compile_commands.json" ]]; then
    echo "tidy: $database has no compile_commands.json; configure it first" >&2
    exit 1
fi

compiled() {
    find src -type f -name '*.cpp' | LC_ALL=C sort | while IFS= read -r file; do
        if grep -qF "\"$PWD/$file\"" "$database/compile_commands.json"; then
            printf '%s\0' "$file"
        fi
    done
}
if [[ -z "$(compiled | tr -d '\0')" ]]; then
    echo "tidy: $database compiles no source of its own; FERNHOP_SOURCES_PER_UNIT must be 1" >&2
    exit 1
fi
# GCC's compile commands have warnings that clang does not know.
compiled | xargs -0 --no-run-if-empty -P "$(nproc)" -n 4 clang-tidy --quiet --extra-arg=-Wno-unknown-warning-option -p "$database" 2>&1 |
    sed -E "/^[0-9]+ warnings?( and [0-9]+ errors?)? generated\.$/d"
