#!/bin/bash
# fuzz.sh [SECONDS] : lets each fuzzer of base/ run for so long (20), and says how much it tried. Each begins with the inputs
# of tests/base/fuzz/corpus and with what earlier runs found new ways with, which the cache keeps. An input that fails
# lies in out/fuzz; it belongs into the corpus with the mend.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
kept=${XDG_CACHE_HOME:-$HOME/.cache}/tamvelo/fuzz
mkdir -p build out/fuzz
cmake --preset fuzz >build/fuzz.log
cmake --build --preset fuzz --target fuzzers
failed=0
for source in tests/base/fuzz/*Fuzz.cpp; do # not what a build of before left in its folder
    name=$(basename "$source" Fuzz.cpp)
    log=out/fuzz/$name.log
    mkdir -p "$kept/$name"
    if "build/fuzz/$name-fuzz" -max_total_time="${1:-20}" -timeout=10 -max_len=4096 -print_final_stats=1 -artifact_prefix="out/fuzz/$name-" \
        "$kept/$name" "tests/base/fuzz/corpus/$name" >"$log" 2>&1; then
        echo "fuzz $name: $(sed -n 's/^stat::number_of_executed_units: //p' "$log") executions"
    else
        tail -n 40 "$log"
        failed=1
    fi
done
exit "$failed"
