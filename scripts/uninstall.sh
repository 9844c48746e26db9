#!/bin/bash
# Removes what `make install` put under a prefix. If Fernhop is still the default browser of this user, the role goes back
# to the browser that had it before.
#
#     scripts/uninstall.sh PREFIX [BUILD_FOLDER]
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
prefix="$(realpath -m -- "${1:?which prefix?}")"
manifest="${2:-${FERNHOP_BUILD:-build/release}}/install_manifest.txt"

giveRoleBack() {
    if [[ -x "$prefix/bin/fernhop" ]]; then
        "$prefix/bin/fernhop" routing off || echo "uninstall: could not hand the default role back" >&2
        "$prefix/bin/fernhop" quit || true
    fi
}

# Each file, and the folders that it leaves empty.
removeFiles() {
    local file
    while IFS= read -r file || [[ -n "$file" ]]; do
        if [[ "$file" == "$prefix"/* ]]; then
            rm -f -- "$file"
            (cd "$prefix" && rmdir -p --ignore-fail-on-non-empty -- "$(dirname "${file#"$prefix"/}")" 2>/dev/null) || true
        fi
    done <"$manifest"
}

refreshCaches() {
    if [[ -d "$prefix/share/applications" ]] && command -v update-desktop-database >/dev/null; then
        update-desktop-database -q "$prefix/share/applications" || true
    fi
    if [[ -f "$prefix/share/icons/hicolor/icon-theme.cache" ]] && command -v gtk-update-icon-cache >/dev/null; then
        gtk-update-icon-cache -q -t -f "$prefix/share/icons/hicolor" || true
    fi
}

# Before anything else: once the role is given back, the manifest may be found missing, but not the other way round.
giveRoleBack
scripts/autostart.sh off "$prefix"
if [[ ! -f "$manifest" ]]; then
    echo "uninstall: $manifest is not there; run \`make install\` with the same PREFIX first" >&2
    exit 1
fi
removeFiles
refreshCaches
