#!/usr/bin/env bash
# Builds the libFuzzer targets with Clang and runs each for a while, then replays every corpus.
#   scripts/fuzz.sh            short form (45 s a target), as CI runs it
#   QZ_FUZZ_SECONDS=3600 scripts/fuzz.sh   the long form
# New inputs found are kept in build-fuzz/corpus/<target>; a crash leaves its input in
# build-fuzz/findings and fails the script.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
dir="$root/build-fuzz"
seconds=${QZ_FUZZ_SECONDS:-45}
CXX=clang++ cmake -S "$root" -B "$dir" -DQZ_BUILD_FUZZ=ON -DQZ_BUILD_BENCH=OFF \
    -DQZ_BUILD_HOST=OFF -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$dir" -j "$(nproc)" --target fuzz_design_file fuzz_events fuzz_gerber

declare -A seeds=(
    [fuzz_design_file]="$root/examples/designs"
    [fuzz_events]="$root/fuzz/seeds/events"
    [fuzz_gerber]="$root/fuzz/seeds/gerber"
)
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1
mkdir -p "$dir/findings"
run() { # target, log, arguments...
    local target=$1 log=$2
    shift 2
    local status=0
    "$dir/fuzz/$target" "$@" >"$log" 2>&1 || status=$?
    grep -E "^(#[0-9]+[[:space:]]+(INITED|DONE)|stat::|SUMMARY|==[0-9]+==ERROR)" "$log" || true
    if [ "$status" -ne 0 ]; then
        tail -40 "$log"
        echo "== $target failed ($status); see $log"
        exit 1
    fi
}
for target in fuzz_design_file fuzz_events fuzz_gerber; do
    corpus="$dir/corpus/$target"
    mkdir -p "$corpus"
    echo "== $target: ${seconds} s"
    run "$target" "$dir/$target.log" "$corpus" "${seeds[$target]}" -max_total_time="$seconds" \
        -max_len=65536 -rss_limit_mb=2048 -timeout=10 -print_final_stats=1 \
        -artifact_prefix="$dir/findings/$target-"
    echo "== $target: replay of the corpus"
    run "$target" "$dir/$target-replay.log" -runs=0 "$corpus" "${seeds[$target]}"
done
