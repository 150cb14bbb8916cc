#!/usr/bin/env bash
# run-long.sh MINUTES [TARGET...]
#
# Builds the fuzzing targets and runs each of them, or those named, for so many minutes, one after
# the other. Ends with a table: inputs tried, inputs per second, edges of the code that the collected
# inputs reach, and how many inputs broke something. Those lie in build/fuzz/long/TARGET/found.
#
# Collected inputs stay in build/fuzz/long/TARGET/corpus, and the next run goes on from there.
set -euo pipefail
# The loader writes files for every input; in memory that takes a fifth of the time.
if [ -w /dev/shm ]; then export TMPDIR=/dev/shm; fi
cd "$(dirname "$0")/../.."
if ! [[ ${1:-} =~ ^[1-9][0-9]*$ ]]; then
    sed -n '2,4s/^# \{0,1\}//p' "$0" >&2
    exit 2
fi
minutes=$1
shift
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    targets=(lexer parser recovery scanner loader texts translation structured)
fi
work=build/fuzz/long
mkdir -p "$work"
if ! { cmake --preset fuzz && cmake --build --preset fuzz -j"${JOBS:-$(nproc)}"; } > "$work/build.log" 2>&1; then
    tail -n 30 "$work/build.log"
    exit 1
fi
tests/fuzz/make-corpus.sh "$work/first"

# The number behind the last occurrence of a word in a log; 0 without one.
number_behind() { # number_behind WORD LOG
    grep -oE "$1 *[0-9]+" "$2" | tail -n 1 | grep -oE '[0-9]+$' || echo 0
}

rows=()
findings=0
for target in "${targets[@]}"; do
    folder=$work/$target
    mkdir -p "$folder/corpus" "$folder/found"
    rm -f "$folder"/found/*
    # A copy, so that a build meanwhile changes nothing about the run.
    cp "build/fuzz/bin/fuzz_$target" "$folder/program"
    status=0
    "$folder/program" -max_total_time=$((minutes * 60)) -max_len=4096 -timeout=20 \
        -rss_limit_mb=2048 -print_final_stats=1 -dict=tests/fuzz/vorla.dict \
        -artifact_prefix="$folder/found/" "$folder/corpus" "$work/first/$target" \
        > "$folder/log" 2>&1 || status=$?
    found=$(find "$folder/found" -type f | wc -l)
    if [ "$status" -ne 0 ] && [ "$found" -eq 0 ]; then found=1; fi
    findings=$((findings + found))
    rows+=("$(printf '%-12s %12s %8s %9s %9s' "$target" \
        "$(number_behind 'number_of_executed_units:' "$folder/log")" \
        "$(number_behind 'average_exec_per_sec:' "$folder/log")" \
        "$(number_behind 'cov:' "$folder/log")" "$found")")
    echo "${rows[-1]}"
done

echo
printf '%-12s %12s %8s %9s %9s\n' target executions exec/s coverage findings
printf '%s\n' "${rows[@]}"
[ "$findings" -eq 0 ]
