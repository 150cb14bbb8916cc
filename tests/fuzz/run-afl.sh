#!/usr/bin/env bash
# run-afl.sh MINUTES
#
# AFL++ on the whole compiler, for what the entry points of the other targets miss: the file, the
# options, the libraries beside it, the written outcome. Needs the package afl++. What it finds lies
# in build/afl/out/default/crashes and hangs.
set -euo pipefail
cd "$(dirname "$0")/../.."
if ! [[ ${1:-} =~ ^[1-9][0-9]*$ ]]; then
    sed -n '2,6s/^# \{0,1\}//p' "$0" >&2
    exit 2
fi
work=build/afl
mkdir -p "$work"
export AFL_USE_ASAN=1 AFL_USE_UBSAN=1 AFL_QUIET=1
{
    cmake -S . -B "$work" -DCMAKE_CXX_COMPILER=afl-clang-fast++ -DCMAKE_BUILD_TYPE=Debug \
        -DCMAKE_CXX_FLAGS_DEBUG='-O1 -g' -DORVANE_AFL=ON
    cmake --build "$work" --target refusing_compiler -j"${JOBS:-$(nproc)}"
} > "$work/build.log" 2>&1 || {
    tail -n 20 "$work/build.log"
    exit 1
}

# Files are written for every input: in memory that takes a fraction of the time.
scratch=$(mktemp -d "$([ -w /dev/shm ] && echo /dev/shm || echo /tmp)/orvane-afl-XXXXXX")
trap 'rm -rf "$scratch"' EXIT
tests/fuzz/make-corpus.sh "$work/first"
cp "$work/bin/refusing_compiler" "$scratch/"
cp -r orlib "$scratch/"
rm -rf "$work/out"
dictionary=$PWD/tests/fuzz/vorla.dict first=$PWD/$work/first/translation out=$PWD/$work/out
(cd "$scratch" && AFL_SKIP_CPUFREQ=1 AFL_I_DONT_CARE_ABOUT_MISSING_CRASHES=1 AFL_NO_UI=1 \
    afl-fuzz -i "$first" -o "$out" -x "$dictionary" -m none -t 5000+ -V $(($1 * 60)) \
    -f "$scratch/app.vorla" -- ./refusing_compiler app.vorla --keep-cpp) > "$work/log" 2>&1 || {
    tail -n 20 "$work/log"
    exit 1
}
grep -E '^(execs_done|execs_per_sec|corpus_count|edges_found|saved_crashes|saved_hangs)' \
    "$work/out/default/fuzzer_stats"
! grep -qE '^saved_(crashes|hangs) *: *[1-9]' "$work/out/default/fuzzer_stats"
