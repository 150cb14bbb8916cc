#!/usr/bin/env bash
# What the library functions of a program cost when it is built:
#
#   bench/library_compile.sh STAGE [ROUNDS]
#
# STAGE is an installation tree (`cmake --install`). library_use/ holds two programs with the same
# window and like statements: none.vorla without a library function, twenty.vorla with twenty. Each is
# translated and then compiled ROUNDS times (9) in turn, by the installation's g++.exe, which has a
# precompiled header, and by the plain cross compiler. The table gives the median of the processor
# times and its ratio to that of none. "includes" is none with the include lines that the names of the
# twenty functions bring in, so that their share is seen.
set -euo pipefail

stage=$(cd "$1" && pwd)
rounds=${2:-9}
plain=${ORVANE_PLAIN_GXX:-x86_64-w64-mingw32-g++-posix}
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
libraries="-luser32 -lgdi32 -lkernel32 -lcomctl32 -lcomdlg32 -lshell32 -ladvapi32 -mwindows"

"$stage/tools/bin/g++.exe" --orvane-make-pch
for name in none twenty; do
    mkdir -p "$name"
    cp "$here/library_use/$name.vorla" .
    "$stage/orvanec" "$name.vorla" --keep-cpp > "$name.log" 2>&1 || { cat "$name.log" >&2; exit 1; }
    cp code_generation/main.cpp code_generation/import.hpp "$name/"
done
mkdir includes
cp none/main.cpp includes/
grep '^#include' twenty/import.hpp > lines
awk 'NR == FNR { lines = lines $0 "\n"; next }
    /^#include/ { if (!done++) printf "%s", lines; next } { print }' lines none/import.hpp > includes/import.hpp

cpu_time() { # cpu_time COMMAND...: milliseconds of user and system time
    local TIMEFORMAT='%U %S' report
    report=$({ time "$@" > "$work/output" 2>&1; } 2>&1) || {
        cat "$work/output" >&2
        return 1
    }
    echo "$report" | awk '{ printf "%d\n", ($1 + $2) * 1000 }'
}

build() { # build COMPILER PROGRAM: as orvanec does it
    # shellcheck disable=SC2086
    "$1" -std=c++17 -Og -finput-charset=UTF-8 "$work/$2/main.cpp" -o "$work/$2/app.exe" \
        -I"$stage/tools/include" -I"$stage/tools/orlib" -I"$stage/tools/parameter" $libraries
}

median() { sort -n "$1" | awk '{ value[NR] = $1 } END { print value[int((NR + 1) / 2)] }'; }

for ((round = 0; round < rounds; round++)); do
    for name in none includes twenty; do
        cpu_time build "$stage/tools/bin/g++.exe" "$name" >> "installation.$name"
        cpu_time build "$plain" "$name" >> "plain.$name"
    done
done

printf '%-14s %8s %10s %8s %16s %14s\n' compiler none includes twenty includes/none twenty/none
for compiler in installation plain; do
    printf '%s %s %s %s\n' "$compiler" "$(median $compiler.none)" "$(median $compiler.includes)" \
        "$(median $compiler.twenty)" |
        awk '{ printf "%-14s %8d %10d %8d %16.2f %14.2f\n", $1, $2, $3, $4, $3 / $2, $4 / $2 }'
done
