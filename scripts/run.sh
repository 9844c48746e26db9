#!/bin/bash
# Builds Fernhop, installs it for this user and starts it in the desktop session. Without a display, or with --demo, runs a
# demonstration on a private desktop instead, which leaves nothing running and nothing in the home folder.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/common.sh

hasDisplay() {
    [[ -n "${DISPLAY:-}" || -n "${WAYLAND_DISPLAY:-}" ]]
}

demonstrate() {
    scripts/install-packages.sh demo
    exec env PYTHONDONTWRITEBYTECODE=1 /usr/bin/python3 scripts/demo/demo.py build/release build/demo
}

startInSession() {
    local prefix="${PREFIX:-$HOME/.local}"
    cmake --install build/release --prefix "$prefix"
    if "$prefix/bin/fernhop" status --json | grep '"running": true' >/dev/null; then
        echo "The previous version of Fernhop is still running: quit it with \`$prefix/bin/fernhop quit\`, then start the new one with \`make run\`."
        return
    fi
    echo "Starting $prefix/bin/fernhop: click its icon in the tray. \`$prefix/bin/fernhop --help\` shows what the command line can do."
    echo "Press Ctrl-C to quit."
    exec "$prefix/bin/fernhop"
}

scripts/build.sh
if [[ "${1:-}" == --demo ]] || ! hasDisplay; then
    demonstrate
else
    startInSession
fi
