#!/usr/bin/env bash
# Runs the tests that run in one process, and the programs orvanec and orvane as processes, in a build
# that counts, and reports lines and branches of src/:
#
#   tests/support/measure-coverage.sh [LINES]     fails below so many percent of lines (95)
#
# The list of files is printed; lines that no test runs are in build/coverage/report.
set -euo pipefail
cd "$(dirname "$0")/../.."

least=${1:-95}
jobs=${JOBS:-$(nproc)}
cmake --preset coverage > /dev/null
cmake --build --preset coverage -j"$jobs" --target unit_and_golden_tests corpus_test orvanec orvane | tail -n 1
find build/coverage -name '*.gcda' -delete
bin=build/coverage/bin
# The tests of times measure this build's counters more than the code.
for program in "$bin"/unit_* "$bin"/golden_test "$bin"/corpus_test; do
    "$program" --gtest_brief=1 --gtest_filter='-*ScannerTime*'
done
# As root the tests run the compiler as a user without rights, who has to write the counts as well.
chmod -R a+rwX build/coverage
python3 tests/driver/process_test.py "$bin/orvanec"
for part in command build watch; do
    python3 "tests/orvane/${part}_test.py" "$bin/orvane" "$bin/orvanec"
done

# Branches to the handling of exceptions that nothing throws are no branches of the source.
mkdir -p build/coverage/report
gcovr --root . --filter 'src/' --exclude-throw-branches --exclude-unreachable-branches \
    --txt --html-details build/coverage/report/index.html --print-summary \
    --fail-under-line "$least" build/coverage
