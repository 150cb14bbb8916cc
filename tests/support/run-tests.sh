#!/usr/bin/env bash
# All tests, in the order in which they find mistakes soonest:
#   1. the development build and everything that ctest knows, the Windows compiler included,
#   2. the build with the address and undefined-behaviour sanitizers: unit and golden tests, and a
#      short run of each fuzzing target, always with the same inputs. It is clang's, so that src/ is
#      also free of the other compiler's warnings.
# Build output goes to build/<preset>/build.log and is shown when a build fails. The last line says
# how many tests passed and failed; a GoogleTest program counts with each of its tests.
set -uo pipefail
cd "$(dirname "$0")/../.."

jobs=${JOBS:-$(nproc)}
long_tests='_all$|_long$|^screen$' # labels
passed=0
failed=0
rm -f build/*/ctest.log

build() { # build PRESET [TARGET...]: counts a failed build as a failed test
    local preset=$1 log=build/$1/build.log
    shift
    local started=$SECONDS
    mkdir -p "build/$preset"
    echo "== $preset: building"
    if { cmake --preset "$preset" &&
        cmake --build --preset "$preset" -j"$jobs" ${1:+--target "$@"}; } > "$log" 2>&1; then
        echo "   built in $((SECONDS - started)) s"
        return 0
    fi
    grep -E -A12 'error|FAILED|CMake Error' "$log" | head -n 60
    echo "   the whole log: $log"
    failed=$((failed + 1))
    return 1
}

count_tests() { # adds up what the log of ctest says about its tests
    local counts
    counts=$(awk '
        /^\[  PASSED  \] [0-9]+ tests?\./ { good += $4; cases += $4 }
        /^\[  FAILED  \] [0-9]+ tests?, listed below/ { bad += $4; cases += $4 }
        /^Test Passed\.$/ { if (!cases) good++; cases = 0 }
        /^Test Failed\.$/ { if (!cases) bad++; cases = 0 }
        END { print good + 0, bad + 0 }' "$1")
    passed=$((passed + ${counts% *}))
    failed=$((failed + ${counts#* }))
}

run_tests() { # run_tests PRESET [CTEST OPTIONS]
    local preset=$1
    shift
    echo "== $preset: testing"
    local before=$failed
    ctest --preset "$preset" -j"$jobs" --no-tests=error --output-on-failure "$@" \
        < /dev/null > "build/$preset/ctest.log" 2>&1
    local status=$?
    tail_of_tests "build/$preset/ctest.log" "$status"
    count_tests "build/$preset/Testing/Temporary/LastTest.log"
    if [ "$status" -ne 0 ] && [ "$failed" -eq "$before" ]; then failed=$((failed + 1)); fi
}

tail_of_tests() { # everything that failed, or the list of tests and the closing lines
    if [ "$2" -ne 0 ]; then tail -n 200 "$1"; else grep -E '^ *[0-9]+/[0-9]+ Test|tests passed|Total Test' "$1"; fi
}

last_words_of_failures() { # the last lines of each failed test in the log of ctest
    awk -v most=12 '
        function tell(i) {
            for (i = count > most ? count - most : 0; i < count; ++i) print "   " lines[i]
            failing = count = 0
        }
        /^ *[0-9]+\/[0-9]+ Test +#/ { tell(); if (/\*\*\*/) { failing = 1; print; next } }
        /^ +Start +[0-9]+: / || /^[0-9]+% tests passed/ { tell() }
        failing && NF { lines[count++] = $0 }
        END { tell() }' "$1"
}

# Every golden outcome and every library function on its own are compiled by `make test-long`; here
# a sample stands for them.
build dev && run_tests dev -LE "$long_tests"
build asan unit_and_golden_tests fuzz_targets && run_tests asan -L '^(unit|golden|fuzz)$'

if [ "$failed" -ne 0 ]; then # once more at the end, where a reader of a long log looks first
    for preset in dev asan; do
        if [ -f "build/$preset/ctest.log" ]; then last_words_of_failures "build/$preset/ctest.log"; fi
    done
fi
echo
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
