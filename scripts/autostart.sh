#!/bin/bash
# Turns the start of Fernhop with the user's session on or off. It is off by default: a link starts Fernhop in any case, so
# autostart is only for having the tray icon from the beginning.
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
        # If it is not our link, the user wrote it, perhaps through a settings dialog.
        if [[ "$(readlink -- "$link" || true)" == "$entry" ]]; then
            rm -f -- "$link"
        fi
        ;;
    *)
        echo "autostart: say \"on\" or \"off\"" >&2
        exit 2
        ;;
esac
