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
configure dev
# The analysis reads generated headers too.
build dev
scripts/checks/tidy.sh build/dev
endStage
