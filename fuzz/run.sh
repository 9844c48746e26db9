#!/bin/bash
# Runs every fuzzer that was built for a while, from its seeds in fuzz/seeds/NAME. Nothing in the source tree changes:
# what a run learns is thrown away, and an input that crashes is kept in the build folder.
#
#     fuzz/run.sh [BUILD-FOLDER]
#
# FERNHOP_FUZZ_SECONDS says how long each runs (10 when not given), FERNHOP_FUZZ_SEED where its chance begins (elsewhere
# each time when not given): with the same one it tries the same inputs, as far as its time goes.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
build="${1:-build/fuzz}"
seconds="${FERNHOP_FUZZ_SECONDS:-10}"
seed="${FERNHOP_FUZZ_SEED:-0}"
crashes="$build/fuzz/crashes"

learned="$(mktemp -d)"
trap 'rm -rf "$learned"' EXIT
mkdir -p "$crashes"

mapfile -t fuzzers < <(find "$build/fuzz" -maxdepth 1 -type f -name '*_fuzzer' -perm -u+x | sort)
if [ "${#fuzzers[@]}" -eq 0 ]; then
    echo "no fuzzer in $build/fuzz: configure with -DFERNHOP_FUZZERS=ON and clang first" >&2
    exit 1
fi

status=0
for fuzzer in "${fuzzers[@]}"; do
    name="$(basename "$fuzzer")"
    mkdir "$learned/$name"
    folders=("$learned/$name")
    [ -d "fuzz/seeds/$name" ] && folders+=("fuzz/seeds/$name")
    if "$fuzzer" "${folders[@]}" -max_total_time="$seconds" -seed="$seed" -timeout=10 -rss_limit_mb=2048 -print_final_stats=0 \
        -artifact_prefix="$crashes/$name-" > "$learned/$name.log" 2>&1; then
        echo "$name: $(tail -n 1 "$learned/$name.log")"
    else
        status=1
        tail -n 60 "$learned/$name.log"
        echo "$name: failed, the input is in $crashes" >&2
    fi
done
exit $status
