#!/usr/bin/env bash
# Translation speed against other compilers in the same run:
#
#   bench/compare.sh BIN [LINES [ROUNDS]]
#
# BIN is the directory of a release build. Every compiler translates LINES lines (110,000 unless
# told) of like functions, in turn, ROUNDS times (5); the table gives each one's median and best
# processor time, and the median and best of its ratios to ours, which runs just before it. Only
# compilers that are installed take part. Ours writes both C++ files and does not run g++; the others
# write an object file or, as ours does, C or C++.
set -euo pipefail

bin=$1
lines=${2:-110000}
rounds=${3:-5}
here=$(dirname "$0")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cpu_time() { # cpu_time COMMAND...: milliseconds of user and system time
    local TIMEFORMAT='%U %S' report
    report=$({ time "$@" > "$work/output" 2>&1; } 2>&1) || {
        echo "compare.sh: failed: $*" >&2
        tail -n 5 "$work/output" >&2
        return 1
    }
    echo "$report" | awk '{ printf "%d", ($1 + $2) * 1000 }'
}

ours() { "$bin/translate_once" write "$work/big.vorla" "$work"; }
tcc_c() { tcc -c "$work/big.c" -o "$work/big.o"; }
fpc_unit() { (cd "$work" && fpc -v0 big.pas); }
vala_c() { valac -C -d "$work/vala" "$work/big.vala"; }
nim_cpp() { nim cpp --compileOnly --hints:off --warnings:off --nimcache:"$work/nim" "$work/big.nim"; }

names=(ours)
"$bin/generate_source" "$lines" > "$work/big.vorla"
add() { # add NAME COMMAND LANGUAGE FILE: when the command is there
    command -v "$2" > /dev/null || return 0
    "$here/reference_source.py" "$3" "$lines" > "$work/$4"
    names+=("$1")
}
add tcc_c tcc c big.c
add fpc_unit fpc pascal big.pas
add vala_c valac vala big.vala
add nim_cpp nim nim big.nim

for ((round = 0; round < rounds; round++)); do
    for name in "${names[@]}"; do
        before=$(cpu_time ours)
        took=$(cpu_time "$name")
        echo "$name $took $before"
    done
done > "$work/times"

# A time of 0 ms counts as 1.
printf '%-10s %10s %10s %14s %14s %14s\n' compiler 'median ms' 'best ms' lines/s 'median ratio' 'best ratio'
for name in "${names[@]}"; do
    times=$(awk -v name="$name" '$1 == name { print $2 ? $2 : 1 }' "$work/times" | sort -n)
    ratios=$(awk -v name="$name" '$1 == name { print $2 / ($3 ? $3 : 1) }' "$work/times" | sort -g)
    middle=$(((rounds + 1) / 2))
    median=$(sed -n "${middle}p" <<< "$times")
    printf '%-10s %10d %10d %14d %14.2f %14.2f\n' "$name" "$median" "$(head -n 1 <<< "$times")" \
        $((lines * 1000 / median)) "$(sed -n "${middle}p" <<< "$ratios")" "$(tail -n 1 <<< "$ratios")"
done
