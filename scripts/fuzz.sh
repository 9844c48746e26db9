#!/bin/bash
# Builds every fuzzer and runs each for a while.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/common.sh

export FERNHOP_FUZZ_SECONDS="${FERNHOP_FUZZ_SECONDS:-60}"
scripts/install-packages.sh build test
configure fuzz
build fuzz
fuzz/run.sh build/fuzz
