#!/usr/bin/env bash
# What it costs a library function to read from a large list, dict or text:
#
#   bench/library_reads.sh WRITE_PROGRAMS ORLIB...
#
# WRITE_PROGRAMS is the program of the tests (build/dev/bin/write_programs). For each folder of library
# files library_reads.cpp is compiled with its functions, as programs are but natively, and prints
# the processor time of one call in nanoseconds; the fastest of five rounds.
set -euo pipefail

write_programs=$(realpath "$1")
shift
here=$(cd "$(dirname "$0")" && pwd)
run=$here/../tests/run
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for orlib in "$@"; do
    echo "$orlib"
    "$write_programs" these "$work" "$orlib" getAt includes length contains startsWith dictGet setHas
    "${CXX:-g++}" -std=c++17 -Og -I"$work" -I"$run/native_libraries" -I"$run/native" \
        "$here/library_reads.cpp" -o "$work/reads"
    "$work/reads"
done
