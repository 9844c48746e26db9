#!/bin/bash
# Removes what `make install` installed under a prefix. If Fernhop is still the default browser of this user, the previous
# default browser is restored.
#
#     scripts/uninstall.sh PREFIX [BUILD_FOLDER]
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
prefix="$(realpath -m -- "${1:?which prefix?}")"
manifest="${2:-${FERNHOP_BUILD:-build/release}}/install_manifest.txt"

giveRoleBack() {
    if [[ -x "$prefix/bin/fernhop" ]]; then
        "$prefix/bin/fernhop" routing off || echo "uninstall: could not restore the default browser" >&2
        "$prefix/bin/fernhop" quit || true
    fi
}

# Removes each file, and folders that become empty.
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

# First, so that the default browser is restored even if the manifest is missing.
giveRoleBack
scripts/autostart.sh off "$prefix"
if [[ ! -f "$manifest" ]]; then
    echo "uninstall: $manifest is not there; run \`make install\` with the same PREFIX first" >&2
    exit 1
fi
removeFiles
refreshCaches
