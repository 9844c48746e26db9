#!/bin/bash
# Builds everything and runs every test: the header check, the portable core alone by the other compiler, all tests under
# the sanitizers, each fuzzer for a moment, and last the whole test suite, whose summary closes the output. The first
# thing that fails ends it.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/common.sh

export FERNHOP_FUZZ_SECONDS="${FERNHOP_FUZZ_SECONDS:-5}"

stage "Packages"
scripts/install-packages.sh build test demo

stage "Build"
configure dev
build dev

stage "Every header compiles by itself"
build dev all_verify_interface_header_sets

stage "The portable core alone, by clang"
configure core -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++
build core
runTests core

stage "Sanitizers and fuzzers, by clang"
configure sanitize
build sanitize
runTests sanitize --label-exclude checks

stage "Fuzzers, $FERNHOP_FUZZ_SECONDS s each"
fuzz/run.sh build/sanitize

stage "All tests"
runTests dev
