#!/bin/bash
# Runs every benchmark that was built, one after the other.
#
#     benchmarks/run.sh [BUILD-FOLDER] [ARGUMENT-OF-GOOGLE-BENCHMARK...]
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
build="${1:-build/release}"
shift || true

found=no
while IFS= read -r benchmark; do
    found=yes
    echo "== $(basename "$benchmark")"
    "$benchmark" "$@"
done < <(find "$build/benchmarks" -maxdepth 1 -type f -name '*_benchmark' -perm -u+x | sort)
if [ "$found" = no ]; then
    echo "no benchmark in $build/benchmarks: build with -DFERNHOP_BENCHMARKS=ON first" >&2
    exit 1
fi
