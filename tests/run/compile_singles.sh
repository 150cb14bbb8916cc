#!/usr/bin/env bash
# compile_singles.sh GXX WRITE_PROGRAMS ORLIB WORK
#
# Compiles every library function as the only one of a program, without a warning of -Wall -Wextra.
# What stands in front of the functions (the includes and the runtime type) is the same for most
# programs: each kind of it is compiled once.
set -euo pipefail
gxx=$1 write_programs=$2 orlib=$3 work=$4
# A call such as abs(1) reaches the C function, whose result the calling statement drops.
flags=(-std=c++17 -Og -Wall -Wextra -Werror -Wno-unused-value)

rm -rf "$work"
mkdir -p "$work/fixed"
"$write_programs" single "$work/programs" "$orlib"

# split FOLDER: front.h, from the start to the last line of the runtime type, and rest.h
split() {
    awk -v front="$1/front.h" -v rest="$1/rest.h" '
        /^\/\/ UTF-8 -> ANSI/ { behind = 1 }
        { if (!behind && $0 !~ /^#pragma once/) print > front; if (behind) print > rest }' "$1/import.hpp"
}

failed=0 count=0
for folder in "$work"/programs/*/; do
    count=$((count + 1))
    split "$folder"
    key=$(cksum < "$folder/front.h" | tr ' ' -)
    front=$work/fixed/$key.h
    if [ ! -f "$front" ]; then
        cp "$folder/front.h" "$front"
        "$gxx" "${flags[@]}" -x c++-header "$front" -o "$front.gch"
    fi
    if ! "$gxx" "${flags[@]}" -fsyntax-only -include "$front" -x c++ -include "$folder/rest.h" /dev/null \
        2> "$folder/log"; then
        echo "== $(basename "$folder")"
        head -n 12 "$folder/log"
        failed=$((failed + 1))
    fi
done
echo "$count functions behind $(find "$work/fixed" -name '*.gch' | wc -l) fronts, $failed do not compile alone"
rm -rf "$work/fixed"
[ "$count" -gt 0 ] && [ "$failed" -eq 0 ]
