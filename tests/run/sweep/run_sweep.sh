#!/bin/bash
# run_sweep.sh PROGRAM FOLDER some|all
#
# Runs the sweep in an empty FOLDER. A call that ends the program is noted and the sweep goes on behind
# it, so that one run names all culprits. The test holds when every call came back as it should.
program=$1 folder=$2 set=$3
. "$(dirname "$0")/../../support/wine.sh"
wine_up null || exit 1
chmod -R u+w "$folder" 2> /dev/null
rm -rf "$folder"
mkdir -p "$folder/work" || exit 1
cd "$folder/work" || exit 1

first=0 deaths=0 status=0
while :; do
    # What the functions print goes nowhere: texts of a megabyte, many times.
    "$WINE" "$program" "$set" "$(wine_path "$folder/report.txt")" "$(wine_path "$folder/place.txt")" \
        "$first" < /dev/null > /dev/null 2>&1 8>&-
    status=$?
    [ "$status" -eq 0 ] && break
    read -r at call < "$folder/place.txt" || break
    echo "$call: ENDS the program with $status" >> "$folder/report.txt"
    deaths=$((deaths + 1))
    # The same call again: the program does not even reach the next.
    if [ "$deaths" -gt 40 ] || [ "$at" -le "$first" ]; then break; fi
    first=$at
done
tr -d '\r' < "$folder/report.txt" > "$folder/lines.txt"
grep -c . "$folder/lines.txt" > /dev/null || { echo "The sweep wrote no report."; exit 1; }
head -n 200 "$folder/lines.txt"
# A good report is the line of counts alone.
[ "$status" -eq 0 ] && [ "$deaths" -eq 0 ] && [ "$(wc -l < "$folder/lines.txt")" -eq 1 ]
