#!/bin/bash
# Builds and runs every benchmark in build/bench, apart from the build that is installed.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/common.sh

scripts/install-packages.sh build test
configure release -B build/bench -DFERNHOP_TESTS=OFF -DFERNHOP_BENCHMARKS=ON
build bench
benchmarks/run.sh build/bench
