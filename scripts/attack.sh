#!/bin/bash
# Attacks Fernhop from outside, with large counts: hostile input, shortage, kills, and 100,000 ordinary links. Everything happens on
# private buses and in temporary folders. Arguments go to the attack, such as --only kills.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/common.sh

scripts/install-packages.sh build test
configure dev
build dev
exec /usr/bin/python3 -B scripts/attack/attack.py "$@" build/dev
