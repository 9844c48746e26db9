#!/bin/bash
# Starts Fernhop with the user's session, or no longer. Nothing does so by itself: a link starts Fernhop in any case, and only
# who wants the tray icon from the beginning needs more.
#
#     scripts/autostart.sh on|off PREFIX
set -euo pipefail

prefix="$(realpath -m -- "${2:?which prefix?}")"
entry="$prefix/share/applications/org.fernhop.Fernhop.Resident.desktop"
link="${XDG_CONFIG_HOME:-$HOME/.config}/autostart/org.fernhop.Fernhop.Resident.desktop"

case "${1:-}" in
    on)
        [[ -f "$entry" ]] || { echo "autostart: Fernhop is not installed under $prefix" >&2; exit 1; }
        mkdir -p "$(dirname "$link")"
        ln -sfn -- "$entry" "$link"
        ;;
    off)
        # What is no link of ours was written by the user, or by a settings dialog for the user.
        if [[ "$(readlink -- "$link" || true)" == "$entry" ]]; then
            rm -f -- "$link"
        fi
        ;;
    *)
        echo "autostart: on or off?" >&2
        exit 2
        ;;
esac
