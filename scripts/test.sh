#!/bin/bash
# Builds everything and runs every test: the header check, the macOS application against its double, all tests under the
# sanitizers, each fuzzer for a moment, and last the whole test suite, whose summary closes the output. The first
# thing that fails ends it.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/common.sh

export FERNHOP_FUZZ_SECONDS="${FERNHOP_FUZZ_SECONDS:-5}"
# The same inputs for everybody: that a change passes is not to be a matter of luck. `make fuzz` looks further each time.
export FERNHOP_FUZZ_SEED="${FERNHOP_FUZZ_SEED:-1}"

stage "Packages"
scripts/install-packages.sh build test demo

stage "Build"
configure dev
build dev

stage "Every header compiles by itself"
build dev all_verify_interface_header_sets

# It holds the portable core without GLib, by the other compiler, too.
stage "The macOS application and the core against their double, by clang with sanitizers"
configure macos-double
build macos-double
runTests macos-double

stage "Sanitizers and fuzzers, by clang"
configure sanitize
build sanitize
runTests sanitize --label-exclude checks

stage "Fuzzers, $FERNHOP_FUZZ_SECONDS s each"
fuzz/run.sh build/sanitize

stage "All tests"
runTests dev
