#!/bin/bash
# Every check of the sources that is no test: formatting, layout, shell scripts, static analysis.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/common.sh

stage "Packages"
scripts/install-packages.sh build test

stage "Formatting"
scripts/checks/format.sh

stage "Layout"
scripts/checks/layout.sh

stage "Shell scripts"
scripts/checks/shell.sh

stage "Static analysis"
configure analysis
# The analysis reads the generated headers; nothing else has to be built for it.
build analysis fernhop_plasma_protocol fernhop_wlr_protocol fernhop_service_interfaces fernhop_tray_interfaces
scripts/checks/tidy.sh build/analysis

# All else is built by clang; what `make build` installs, and the benchmarks, are built by GCC where that is the system's
# compiler.
stage "Warnings of GCC"
configure analysis -B build/gcc -DCMAKE_C_COMPILER=gcc -DCMAKE_CXX_COMPILER=g++ -DCMAKE_CXX_FLAGS_DEBUG=-g0 \
    -DFERNHOP_SOURCES_PER_UNIT=12 -DFERNHOP_BENCHMARKS=ON
build gcc
endStage
