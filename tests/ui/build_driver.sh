#!/bin/sh
# build_driver.sh COMPILER OUTPUT: builds ui_driver.exe with a MinGW cross compiler.
set -eu
cd "$(dirname "$0")"
exec "$1" -std=c++17 -O1 -s -static -municode -DUNICODE \
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror \
    ui_driver.cpp control_report.cpp program_under_test.cpp -o "$2" -lgdi32
