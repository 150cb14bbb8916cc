#!/usr/bin/env bash
# compile_check.sh sample|all WORK
#
# Builds expected outcomes of the golden cases as the compiler would have g++ build them, with
# -Wall -Wextra: the cases in compile.list, or all that have a main.cpp. A warning that does not match
# a line of unavoidable-warnings.txt is an error. A case with a file no-compile (which says why) must
# not compile. Programs and logs lie in WORK.
set -euo pipefail

golden=$(cd "$(dirname "$0")" && pwd)
packaging=$golden/../../packaging

# With the include lines of shared texts replaced.
copy_expected() { # copy_expected CASE FOLDER
    cp "$golden/$1/expected/main.cpp" "$2/main.cpp"
    local line
    while IFS= read -r line || [ -n "$line" ]; do
        case $line in
            '@@include '*) cat "$golden/shared/${line#@@include }" ;;
            *) printf '%s\n' "$line" ;;
        esac
    done < "$golden/$1/expected/import.hpp" > "$2/import.hpp"
}

# The command line of the compiler, but for the warnings.
run_gxx() { # run_gxx FOLDER
    LC_ALL=C "$packaging/gxx-wrapper.sh" -std=c++17 -Og -finput-charset=UTF-8 "$1/main.cpp" \
        -o "$1/app.exe" -I"$packaging/include" -luser32 -lgdi32 -lkernel32 -lcomctl32 -lcomdlg32 \
        -lshell32 -ladvapi32 -mwindows -Wall -Wextra > "$1/log" 2>&1
}

unexpected_warnings() { # unexpected_warnings LOG
    grep 'warning: ' "$1" | grep -vEf <(grep -v '^#' "$golden/unavoidable-warnings.txt" | grep .)
}

check_case() { # check_case CASE WORK
    local folder=$2/$1 status=0
    rm -rf "$folder"
    mkdir -p "$folder"
    copy_expected "$1" "$folder"
    run_gxx "$folder" || status=$?
    if [ -f "$golden/$1/no-compile" ]; then
        if [ "$status" -ne 0 ]; then return 0; fi
        echo "$1: has a file no-compile, but compiles"
        return 1
    fi
    if [ "$status" -ne 0 ]; then
        echo "$1: does not compile"
        grep -m 5 -E 'error|undefined reference' "$folder/log" || cat "$folder/log"
        return 1
    fi
    if unexpected_warnings "$folder/log"; then
        echo "$1: compiles with warnings (above)"
        return 1
    fi
}

list_cases() { # list_cases sample|all
    case $1 in
        sample) grep -v '^#' "$golden/compile.list" | grep . ;;
        all) (cd "$golden" && for file in */*/expected/main.cpp; do echo "${file%/expected/*}"; done) ;;
        *) echo "compile_check.sh: sample or all, not '$1'" >&2; return 2 ;;
    esac
}

if [ "$1" = --case ]; then
    check_case "$2" "$3"
    exit
fi
mkdir -p "$2"
list_cases "$1" > "$2/cases"
count=$(wc -l < "$2/cases")
echo "$count cases"
if [ "$count" -lt 10 ]; then
    echo "Too few: the list of cases is broken"
    exit 1
fi
xargs -a "$2/cases" -P "$(nproc)" -I{} "$0" --case {} "$2"
