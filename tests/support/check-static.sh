#!/usr/bin/env bash
# Static checks of src/:
#
#   tests/support/check-static.sh [gcc] [clang] [tidy] [cppcheck]     all of them without a word
#   tests/support/check-static.sh changed
#
#   gcc, clang   every file compiles without a warning (they are errors)
#   tidy         clang-tidy with the checks of .clang-tidy: ten minutes of one processor
#   cppcheck     with the suppressions below
#   changed      tidy for what changed since the commit before, in at most two minutes; for make test
#
# A check that finds something prints it; the last line says which failed.
set -uo pipefail
cd "$(dirname "$0")/../.."

jobs=${JOBS:-$(nproc)}
mapfile -t sources < <(find src -name '*.cpp' ! -name '*_windows.cpp' | sort)
warnings=(-std=c++20 -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -Isrc)
failed=()

# for_each COMMAND...: with each source file behind it.
for_each() { printf '%s\0' "${sources[@]}" | xargs -0 -n 1 -P "$jobs" "$@"; }

# Without optimisation gcc does not see all it could warn of.
check_gcc() { for_each g++ "${warnings[@]}" -O1 -S -o /dev/null; }

check_clang() { for_each clang++ "${warnings[@]}" -fsyntax-only; }

check_tidy() {
    for_each sh -c 'clang-tidy --quiet "$1" -- -std=c++20 -Isrc 2> /dev/null' tidy
}

# The sources that changed, also those beside a changed header; uncommitted changes count.
list_changed() {
    git diff --name-only --diff-filter=d HEAD~1 -- src 2> /dev/null | sed -n 's/\.\(cpp\|h\)$/.cpp/p' |
        sort -u | grep -Fx -f <(printf '%s\n' "${sources[@]}")
}

# When nothing changed, or nobody knows what did, some files stand for all.
check_changed() {
    local most=16 every=("${sources[@]}")
    mapfile -t sources < <(list_changed)
    if [ ${#sources[@]} -eq 0 ]; then
        mapfile -t sources < <(printf '%s\n' "${every[@]}" | sed -n '1~8p')
    fi
    if [ ${#sources[@]} -gt "$most" ]; then
        echo "${#sources[@]} files changed; only the first $most are looked at"
        sources=("${sources[@]:0:most}")
    fi
    echo "${#sources[@]} of ${#every[@]} files"
    check_tidy
}

# Left out, with reasons:
#   missingIncludeSystem  the headers of the standard library are not its concern
#   cppcheckError         it gives up on placement new in a template (arena.h)
#   useStlAlgorithm       a loop of one line is as plain as std::transform
#   shadowVariable        a local of a constexpr function and the constant that it makes share a name
check_cppcheck() {
    cppcheck --enable=warning,performance,portability,style --std=c++20 --language=c++ --quiet \
        --error-exitcode=1 --inline-suppr -j "$jobs" -I src \
        --suppress=missingIncludeSystem --suppress=cppcheckError --suppress=useStlAlgorithm \
        --suppress=shadowVariable src
}

[ $# -gt 0 ] || set -- gcc clang tidy cppcheck
for check in "$@"; do
    started=$SECONDS
    if "check_$check"; then
        echo "$check: ok, $((SECONDS - started)) s"
    else
        echo "$check: FAILED"
        failed+=("$check")
    fi
done
if [ ${#failed[@]} -gt 0 ]; then
    echo "failed: ${failed[*]}"
    exit 1
fi
