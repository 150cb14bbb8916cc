#!/usr/bin/env bash
# compile_singles.sh GXX WRITE_PROGRAMS ORLIB WORK
#
# Compiles every library function as the only one of a program, without a warning of -Wall -Wextra.
# The fixed headers are compiled once.
set -euo pipefail
gxx=$1 write_programs=$2 orlib=$3 work=$4
# A call such as abs(1) reaches the C function, whose result the calling statement drops.
flags=(-std=c++17 -Og -Wall -Wextra -Werror -Wno-unused-value)

rm -rf "$work"
mkdir -p "$work/fixed"
"$write_programs" single "$work/programs" "$orlib"
printf '#include <%s>\n' windows.h string vector map sstream memory commctrl.h > "$work/fixed/fixed.h"
"$gxx" "${flags[@]}" "$work/fixed/fixed.h" -o "$work/fixed/fixed.h.gch"

failed=0 count=0
for folder in "$work"/programs/*/; do
    count=$((count + 1))
    if ! "$gxx" "${flags[@]}" -include "$work/fixed/fixed.h" -x c++ -include "$folder/import.hpp" \
        -c /dev/null -o "$folder/object.o" 2> "$folder/log"; then
        echo "== $(basename "$folder")"
        head -n 12 "$folder/log"
        failed=$((failed + 1))
    fi
    rm -f "$folder/object.o"
done
echo "$count functions, $failed do not compile alone"
[ "$count" -gt 0 ] && [ "$failed" -eq 0 ]
