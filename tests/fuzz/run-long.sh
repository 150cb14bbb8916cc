#!/usr/bin/env bash
# run-long.sh MINUTES [TARGET...]
#
# Builds the fuzzing targets and runs each of them, or those named, for so many minutes, TOGETHER (1)
# at a time. Ends with a table: inputs tried, inputs per second, minutes of processor time, edges of
# the code that the collected inputs reach, and how many inputs broke something. Those lie in
# build/fuzz/long/TARGET/found.
#
# Collected inputs stay in build/fuzz/long/TARGET/corpus, and the next run goes on from there.
set -euo pipefail
# The loader writes files for every input; in memory that takes a fifth of the time.
if [ -w /dev/shm ]; then export TMPDIR=/dev/shm; fi
cd "$(dirname "$0")/../.."
if ! [[ ${1:-} =~ ^[1-9][0-9]*$ ]]; then
    sed -n '2,7s/^# \{0,1\}//p' "$0" >&2
    exit 2
fi
minutes=$1
shift
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    targets=(lexer parser recovery scanner loader texts translation structured)
fi
together=${TOGETHER:-1}
work=build/fuzz/long
mkdir -p "$work"
if ! { cmake --preset fuzz &&
    cmake --build --preset fuzz --target fuzz_targets -j"${JOBS:-$(nproc)}"; } > "$work/build.log" 2>&1; then
    tail -n 30 "$work/build.log"
    exit 1
fi
tests/fuzz/make-corpus.sh "$work/first"

# The number behind the last occurrence of a word in a log; 0 without one.
number_behind() { # number_behind WORD LOG
    grep -oE "$1 *[0-9]+" "$2" | tail -n 1 | grep -oE '[0-9]+$' || echo 0
}

# Runs one target. Leaves its status and its processor time, "USER SYSTEM" in seconds, in its folder.
run_target() { # run_target TARGET
    local folder=$work/$1 status=0 TIMEFORMAT='%U %S'
    mkdir -p "$folder/corpus" "$folder/found"
    rm -f "$folder"/found/* "$folder/status"
    # A copy, so that a build meanwhile changes nothing about the run.
    cp "build/fuzz/bin/fuzz_$1" "$folder/program"
    # The limit of an input is wall clock: the targets that run beside this one count in it. Without
    # -entropic=0 the choice of the next input takes two thirds of the time.
    { time "$folder/program" -max_total_time=$((minutes * 60)) -max_len=4096 -entropic=0 \
        -timeout=$((20 * together)) -rss_limit_mb=2048 -print_final_stats=1 \
        -dict=tests/fuzz/vorla.dict -artifact_prefix="$folder/found/" \
        "$folder/corpus" "$work/first/$1" > "$folder/log" 2>&1; } 2> "$folder/seconds" || status=$?
    echo "$status" > "$folder/status"
}

# The number of inputs that broke something; a target that ended otherwise than it should counts too.
findings_of() { # findings_of TARGET
    local found
    found=$(find "$work/$1/found" -type f | wc -l)
    if [ "$found" -eq 0 ] && [ "$(cat "$work/$1/status")" -ne 0 ]; then found=1; fi
    echo "$found"
}

for target in "${targets[@]}"; do
    while [ "$(jobs -pr | wc -l)" -ge "$together" ]; do wait -n; done
    run_target "$target" &
done
wait

printf '%-12s %12s %8s %12s %9s %9s\n' target executions exec/s 'CPU minutes' coverage findings
findings=0
for target in "${targets[@]}"; do
    log=$work/$target/log
    found=$(findings_of "$target")
    findings=$((findings + found))
    printf '%-12s %12s %8s %12s %9s %9s\n' "$target" \
        "$(number_behind 'number_of_executed_units:' "$log")" \
        "$(number_behind 'average_exec_per_sec:' "$log")" \
        "$(tail -n 1 "$work/$target/seconds" | awk '{ printf "%.1f", ($1 + $2) / 60 }')" \
        "$(number_behind 'cov:' "$log")" "$found"
done
[ "$findings" -eq 0 ]
