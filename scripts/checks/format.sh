#!/bin/bash
# Lists the C++ and Objective-C++ files that are not formatted; with --fix, formats them in place.
#
#     format.sh [--fix] [ROOT]
set -euo pipefail

mode=(--dry-run --Werror)
if [[ "${1:-}" == --fix ]]; then
    mode=(-i)
    shift
fi
cd "${1:-$(dirname "${BASH_SOURCE[0]}")/../..}"
find . \( -path ./build -o -path ./.git \) -prune -o \
    -type f \( -name '*.h' -o -name '*.cpp' -o -name '*.mm' -o -name '*.m' -o -name '*.c' \) -print0 |
    xargs -0 --no-run-if-empty -P "$(nproc)" -n 20 clang-format --style=file "${mode[@]}"
