#!/usr/bin/env bash
# compile_generated.sh GXX WRITE_GENERATED ORLIB WORK FIRST COUNT
#
# Every sensible generated program of those seeds passes the C++ compiler without an error. Only
# syntax and types are looked at; the headers that all programs share are compiled once.
set -euo pipefail
gxx=$1 write_generated=$2 orlib=$3 work=$4 first=$5 count=$6
flags=(-std=c++17 -Og -finput-charset=UTF-8 -w "-I$(dirname "$0")/../../packaging/include")

if [ "$count" -lt 1 ]; then
    echo "Nothing to compile"
    exit 1
fi
rm -rf "$work"
mkdir -p "$work/fixed"
"$write_generated" "$work/programs" "$orlib" "$first" "$count"
printf '#include <%s>\n' windows.h string vector map sstream memory commctrl.h > "$work/fixed/fixed.h"
"$gxx" "${flags[@]}" "$work/fixed/fixed.h" -o "$work/fixed/fixed.h.gch"

failed=0 compiled=0
for folder in "$work"/programs/*/; do
    compiled=$((compiled + 1))
    if ! LC_ALL=C "$gxx" "${flags[@]}" -fsyntax-only -include "$work/fixed/fixed.h" "$folder/main.cpp" \
        2> "$folder/log"; then
        echo "== seed $(basename "$folder")"
        grep -m 3 -E 'error|fatal' "$folder/log" || cat "$folder/log"
        failed=$((failed + 1))
    fi
done
echo "$compiled programs, $failed do not compile"
[ "$compiled" -eq "$count" ] && [ "$failed" -eq 0 ]
