#!/bin/bash
# Builds everything and runs every test: the macOS application against its double, and last the suite of this desktop,
# whose summary closes the output. The first thing that fails ends it. `make sanitize` looks further.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/common.sh

stage "Packages"
scripts/install-packages.sh build test demo

stage "Build"
configure dev
build dev

# It holds the portable core without GLib, and under sanitizers, too.
stage "The macOS application and the core against their double"
configure macos-double
build macos-double
runTests macos-double

stage "All tests"
runTests dev
