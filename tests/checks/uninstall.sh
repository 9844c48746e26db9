#!/bin/bash
# Installs a build into a home of its own, makes Fernhop the default browser, and sees that uninstalling hands the role back
# and leaves nothing but the user's settings.
#
#     uninstall.sh SOURCE_FOLDER BUILD_FOLDER
set -euo pipefail

source="$1"
export FERNHOP_BUILD="$2"
if [[ "${3:-}" != inside ]]; then
    home="$(mktemp -d)"
    trap 'rm -rf "$home"' EXIT
    mkdir "$home/run" && chmod 700 "$home/run"
    env -u DISPLAY -u WAYLAND_DISPLAY HOME="$home" XDG_CONFIG_HOME="$home/.config" XDG_DATA_HOME="$home/.local/share" \
        XDG_CACHE_HOME="$home/.cache" XDG_RUNTIME_DIR="$home/run" XDG_DATA_DIRS="$home/system" XDG_CURRENT_DESKTOP= \
        dbus-run-session -- "$0" "$source" "$FERNHOP_BUILD" inside
    exit
fi

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

mkdir -p "$HOME/system/applications"
printf '[Desktop Entry]\nType=Application\nName=Old\nExec=true %%u\nMimeType=x-scheme-handler/http;x-scheme-handler/https;\n' \
    >"$HOME/system/applications/old.desktop"
mkdir -p "$HOME/.config" "$HOME/.local/share/applications"
printf '[Default Applications]\nx-scheme-handler/http=old.desktop\nx-scheme-handler/https=old.desktop\n' \
    >"$HOME/.config/mimeapps.list"
echo mine >"$HOME/.local/share/mine"

cmake --install "$FERNHOP_BUILD" --prefix "$HOME/.local" >/dev/null
"$HOME/.local/bin/fernhop" routing on
grep -q '^x-scheme-handler/https=org.fernhop' "$HOME/.config/mimeapps.list" || fail "Fernhop did not become the default"

"$source/scripts/uninstall.sh" "$HOME/.local"

grep -q '^x-scheme-handler/https=old.desktop' "$HOME/.config/mimeapps.list" || fail "the role was not handed back"
left="$(find "$HOME/.local" -type f)"
[[ "$left" == "$HOME/.local/share/mine" ]] || fail "left in the prefix: $left"
