#!/bin/bash
# Builds the version to install, optimised and without tests, in build/release.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/common.sh

scripts/install-packages.sh build
configure release -DFERNHOP_TESTS=OFF -DFERNHOP_BENCHMARKS=OFF -DFERNHOP_WARNINGS_AS_ERRORS=OFF
build release
