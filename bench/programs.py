#!/usr/bin/env python3
"""programs.py STAGE [ROUNDS]: the loops of programs/loops.vorla, built with the installation in STAGE,
against CPython and Lua, natively and under Wine: processor times, and medians of the ratios of runs
that were made side by side. Then what all but the texts take with everything compiled by -Og, and
with a type that has nothing but its members."""
import os
import pathlib
import statistics
import subprocess
import sys

import measuring

LOOPS = {"integers": 2000000, "floats": 2000000, "strings": 10000, "lists": 600, "maps": 40000,
         "methods": 600000, "comprehensions": 1000, "typed_integers": 20000000}
# The interpreters get fewer turns of the loop that takes them long.
INTERPRETED = {**LOOPS, "typed_integers": 2000000}
PROGRAMS = measuring.ROOT / "bench" / "programs"
RUNTIME_OPTIONS = ("-O2", "-fno-ipa-cp", "-fno-ipa-sra")
BOUNDED = ("integers", "floats", "lists", "maps", "methods", "comprehensions")
# The C library of Linux keeps what was freed instead of giving it back and asking for it again.
KEEPING = {"GLIBC_TUNABLES": "glibc.malloc.trim_threshold=1000000000:"
                             "glibc.malloc.mmap_threshold=1000000000"}


def build(stage, folder):
    """The loops natively, with the functions that an installation compiles in advance and without, and
    for Windows, by the command that orvanec ran; the three programs."""
    command = measuring.translate(stage, PROGRAMS / "loops.vorla", folder)
    generated = folder / "code_generation"
    (generated / "main.cpp").write_bytes((PROGRAMS / "loops_main.cpp").read_bytes())
    measuring.processor_time(command)
    runtime = folder / "runtime.o"
    compile_natively([stage / "tools/fast/runtime.cpp", "-c", *RUNTIME_OPTIONS], runtime)
    native = compile_natively(["-Og", "-DORVANE_VALUE_COMPILED", runtime, generated / "main.cpp"],
                              folder / "loops")
    own = compile_natively(["-Og", generated / "main.cpp"], folder / "loops_alone")
    return native, own, folder / "loops.exe"


def compile_natively(words, result):
    measuring.processor_time(["g++", "-std=c++17", "-finput-charset=UTF-8", *words,
                              "-I", measuring.ROOT / "tests/run/native", "-o", result])
    return result


def build_plain(folder):
    """The same loops natively with plain_value.h in the place of the type, by -O3."""
    plain = folder / "plain"
    plain.mkdir(exist_ok=True)
    text = (folder / "code_generation" / "import.hpp").read_text(encoding="utf-8")
    start, end = text.index("struct Value {\n"), text.index("// UTF-8 -> ANSI")
    (plain / "import.hpp").write_text(
        text[:start] + (PROGRAMS / "plain_value.h").read_text() + text[end:], encoding="utf-8")
    (plain / "main.cpp").write_bytes((PROGRAMS / "loops_main.cpp").read_bytes())
    return compile_natively(["-O3", plain / "main.cpp"], plain / "loops")


def words_of(loops):
    return [str(word) for pair in loops.items() for word in pair]


def read(output):
    """{name: (milliseconds, result)} of what a program printed."""
    return {name: (float(time), result)
            for name, time, result in (line.split() for line in output.splitlines())}


def run(command, **settings):
    return read(subprocess.run([str(word) for word in command], check=True, capture_output=True,
                               text=True, env={**os.environ, **settings}).stdout)


def per_turn(times, loops):
    return {name: time / loops[name] for name, (time, _) in times.items()}


def measure(stage, rounds):
    folder = measuring.ROOT / "build" / "bench" / "programs"
    native, own, windows = build(stage, folder)
    plain = build_plain(folder)
    bounded = words_of({name: LOOPS[name] for name in BOUNDED})
    runs = {"native": [], "wine": [], "python": [], "lua": [], "own": [], "plain": []}
    for _ in range(rounds):
        results = {
            "native": run([native, *words_of(LOOPS)]),
            "wine": read(measuring.wine("wine_run", windows, *words_of(LOOPS))),
            "python": run(["python3", PROGRAMS / "loops.py", *words_of(INTERPRETED)]),
            "lua": run(["lua5.4", PROGRAMS / "loops.lua", *words_of(INTERPRETED)]),
            "own": run([own, *bounded]),
            "plain": run([plain, *bounded], **KEEPING),
        }
        for name in LOOPS:
            if len({result[name][1] for result in results.values() if name in result}) != 1 and \
                    LOOPS[name] == INTERPRETED[name]:
                raise SystemExit(f"{name}: the results differ: {results}")
        for who, times in results.items():
            runs[who].append(per_turn(times, INTERPRETED if who in ("python", "lua") else LOOPS))
    measuring.wine("wine_down")
    return runs


def print_rows(runs, names, columns, ratios):
    """A row per loop: the medians of some columns, and of ratios between two."""
    for name in names:
        medians = [f"{statistics.median(one[name] for one in runs[who]) * 1e6:.0f}" for who in columns]
        quotients = [measuring.median_ratio([one[name] for one in runs[a]],
                                            [one[name] for one in runs[b]]) for a, b in ratios]
        print(f"| {name} | {' | '.join(medians + [f'{ratio:.2f}' for ratio in quotients])} |")


def report(runs):
    print("| Loop | ns a turn, native | Wine | CPython | Lua | native to CPython | Wine to CPython "
          "| native to Lua |")
    print("|---|---|---|---|---|---|---|---|")
    print_rows(runs, LOOPS, ("native", "wine", "python", "lua"),
               (("native", "python"), ("wine", "python"), ("native", "lua")))
    print("\n| Loop | all by -Og | only the members, -O3 | all by -Og to CPython "
          "| only the members to CPython | only the members to Lua |")
    print("|---|---|---|---|---|---|")
    print_rows(runs, BOUNDED, ("own", "plain"),
               (("own", "python"), ("plain", "python"), ("plain", "lua")))


report(measure(pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2]) if len(sys.argv) > 2 else 5))
