#!/bin/bash
# Looks for what the tests alone do not show: headers that do not compile by themselves, faults that only the sanitizers
# see, and inputs that make a fuzzer fail. The first thing that fails ends it.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/common.sh

export FERNHOP_FUZZ_SECONDS="${FERNHOP_FUZZ_SECONDS:-5}"
# The same inputs for everybody: that a change passes is not to be a matter of luck. `make fuzz` looks further each time.
export FERNHOP_FUZZ_SEED="${FERNHOP_FUZZ_SEED:-1}"

stage "Packages"
scripts/install-packages.sh build test demo

stage "Every header compiles by itself"
configure dev
build dev all_verify_interface_header_sets

stage "Sanitizers, by clang"
configure sanitize
build sanitize
runTests sanitize --label-exclude checks

stage "Fuzzers, $FERNHOP_FUZZ_SECONDS s each"
fuzz/run.sh build/sanitize
endStage
