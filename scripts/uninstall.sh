#!/bin/bash
# Removes what `make install` put under a prefix. If Fernhop is still the default browser of this user, the role goes back
# to the browser that had it before.
#
#     scripts/uninstall.sh PREFIX
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
prefix="${1:?which prefix?}"
manifest=build/release/install_manifest.txt

if [[ -x "$prefix/bin/fernhop" ]]; then
    "$prefix/bin/fernhop" routing off || echo "uninstall: could not hand the default role back" >&2
    "$prefix/bin/fernhop" quit || true
fi
if [[ ! -f "$manifest" ]]; then
    echo "uninstall: $manifest is not there; run \`make install\` with the same PREFIX first" >&2
    exit 1
fi
while IFS= read -r file || [[ -n "$file" ]]; do
    if [[ "$file" == "$prefix"/* ]]; then
        rm -f -- "$file"
        rmdir -p --ignore-fail-on-non-empty -- "$(dirname "$file")" 2>/dev/null || true
    fi
done <"$manifest"
