#!/usr/bin/env bash
# Translation speed against other compilers in the same run:
#
#   bench/compare.sh BIN [LINES [ROUNDS]]
#
# BIN is the directory of a release build. Every compiler translates LINES lines (110,000 unless
# told) of like functions, in turn, ROUNDS times (5), short ones ten times in each; the table gives
# each one's best processor time and its ratio to ours. Only compilers that are installed take part.
# Ours writes both C++ files and does not run g++; the others write an object file or, as ours does,
# C or C++.
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

declare -A best
try() { # try NAME: runs it once
    took=$(cpu_time "$1")
    [ -n "${best[$1]:-}" ] && [ "${best[$1]}" -le "$took" ] || best[$1]=$took
}
# What else the machine does falls on the whole of a run of a tenth of a second, and on a part of one
# of seconds: short runs get more tries.
for ((round = 0; round < rounds; round++)); do
    for name in "${names[@]}"; do
        try "$name"
        [ "$took" -ge 500 ] || for ((again = 0; again < 9; again++)); do try "$name"; done
    done
done

printf '%-10s %10s %14s %8s\n' compiler ms lines/s ratio
for name in "${names[@]}"; do
    awk -v name="$name" -v ms="${best[$name]}" -v ours="${best[ours]}" -v lines="$lines" 'BEGIN {
        printf "%-10s %10d %14d %8.2f\n", name, ms, lines * 1000 / (ms ? ms : 1), ms / (ours ? ours : 1) }'
done
