#!/usr/bin/env bash
# compile_bare.sh GXX WRITE_PROGRAMS ORLIB WORK
#
# Compiles all library functions together, each called with every kind of operand, behind nothing but
# the include lines that every program has. The others depend on the names that a program calls, so a
# function that needed one of them would compile here and there only.
set -euo pipefail
gxx=$1 write_programs=$2 orlib=$3 work=$4

rm -rf "$work"
"$write_programs" every "$work" "$orlib"
# The print statement of the program goes with <iostream>; it is no library function.
grep -v -E '^#include <(iostream|fstream|cmath|cstdlib|ctime|filesystem|cstdio|algorithm)>|^std::cout' \
    "$work/import.hpp" > "$work/bare.hpp"
dropped=$(($(grep -c '^#include' "$work/import.hpp") - $(grep -c '^#include' "$work/bare.hpp")))
# A call such as abs(1) reaches the C function, whose result the calling statement drops.
"$gxx" -std=c++17 -Wall -Wextra -Werror -Wno-unused-value -fsyntax-only -x c++ -include "$work/bare.hpp" /dev/null
# All eight were there to be dropped, and seven are left: the names of all functions are in the program.
echo "$dropped include lines dropped, $(grep -c '^#include' "$work/bare.hpp") left"
[ "$dropped" -eq 8 ] && [ "$(grep -c '^#include' "$work/bare.hpp")" -eq 7 ]
