#!/bin/bash
# Removes what `make install` put under a prefix. If Fernhop is still this user's default browser, the role first goes back to
# the browser that had it before. Rules and settings stay.
#
#     scripts/uninstall.sh PREFIX
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
prefix="$(realpath -m "${1:?which prefix?}")"
build="${FERNHOP_BUILD:-build/release}"
fernhop="$prefix/bin/fernhop"

if [[ ! -f "$build/cmake_install.cmake" ]]; then
    echo "uninstall: nothing is built in $build; \`make build\` first, to know what was installed" >&2
    exit 1
fi
if [[ -x "$fernhop" ]]; then
    if "$fernhop" status --json | tr -d ' \n' | grep -q '"routing":true'; then
        "$fernhop" routing off || echo "uninstall: could not hand the role of default browser back" >&2
    fi
    "$fernhop" quit || true
fi

# What installing writes is asked of installing itself, into a folder that nobody sees: a list kept from the last time
# would be that of another prefix as soon as one was used.
staged="$(mktemp -d)"
trap 'rm -rf "$staged"' EXIT
DESTDIR="$staged" cmake --install "$build" --prefix "$prefix" >/dev/null
find "$staged$prefix" -depth \( -type f -o -type l \) -printf '%P\0' | while IFS= read -r -d '' file; do
    rm -f -- "$prefix/$file"
done

entries="$prefix/share/applications"
if [[ -f "$entries/mimeinfo.cache" ]]; then
    update-desktop-database -q "$entries" || true
    if [[ -z "$(find "$entries" -name '*.desktop' -print -quit)" ]]; then
        rm -f "$entries/mimeinfo.cache"
    fi
fi
find "$staged$prefix" -mindepth 1 -depth -type d -printf '%P\0' | while IFS= read -r -d '' folder; do
    rmdir --ignore-fail-on-non-empty -- "$prefix/$folder" 2>/dev/null || true
done
