#!/usr/bin/env python3
"""programs.py STAGE [ROUNDS]: the loops of programs/loops.vorla, built with the installation in STAGE,
against CPython and Lua, natively and under Wine: processor times, and medians of the ratios of runs
that were made side by side. Then what all but the texts take with everything compiled by -Og, and what
the writing of their values alone takes."""
import pathlib
import statistics
import subprocess
import sys

import measuring

# As many turns as take half a second: Wine tells processor times in steps of 10 ms.
LOOPS = {"integers": 8000000, "floats": 8000000, "strings": 50000, "lists": 5000, "maps": 400000,
         "methods": 2000000, "comprehensions": 8000, "typed_integers": 80000000}
# The interpreters get fewer turns of the loop that takes them long.
INTERPRETED = {**LOOPS, "typed_integers": 4000000}
PROGRAMS = measuring.ROOT / "bench" / "programs"
ALONE = ("integers", "floats", "lists", "maps", "methods", "comprehensions")
WRITTEN = ("integers", "floats", "lists", "comprehensions")


def build(stage, folder):
    """The loops natively, with the functions that an installation compiles in advance and without, for
    Windows, by the command that orvanec ran, and the writing of their values; the four programs."""
    command = measuring.translate(stage, PROGRAMS / "loops.vorla", folder)
    generated = folder / "code_generation"
    (generated / "main.cpp").write_bytes((PROGRAMS / "loops_main.cpp").read_bytes())
    measuring.processor_time(command)
    runtime = folder / "runtime.o"
    fast = stage / "tools/fast"
    compile_natively([f"@{fast}/runtime.options", fast / "runtime.cpp", "-c"], runtime)
    native = compile_natively(["-Og", "-DORVANE_VALUE_COMPILED", "-include", fast / "includes.h",
                               runtime, generated / "main.cpp"], folder / "loops")
    own = compile_natively(["-Og", generated / "main.cpp"], folder / "loops_alone")
    written = compile_natively(["-O2", runtime, PROGRAMS / "written_values.cpp"], folder / "written")
    return native, own, folder / "loops.exe", written


def compile_natively(words, result):
    measuring.processor_time(["g++", "-std=c++17", "-finput-charset=UTF-8", *words,
                              "-I", measuring.ROOT / "tests/run/native", "-o", result])
    return result


def words_of(names, loops=LOOPS):
    return [str(word) for name in names for word in (name, loops[name])]


def read(output):
    """{name: (milliseconds, result)} of what a program printed."""
    return {name: (float(time), result)
            for name, time, result in (line.split() for line in output.splitlines())}


def run(command):
    return read(subprocess.run([str(word) for word in command], check=True, capture_output=True,
                               text=True).stdout)


def per_turn(times, loops):
    return {name: time / loops[name] for name, (time, _) in times.items()}


def measure(stage, rounds):
    folder = measuring.ROOT / "build" / "bench" / "programs"
    native, own, windows, written = build(stage, folder)
    runs = {"native": [], "wine": [], "python": [], "lua": [], "own": [], "written": []}
    interpreted = words_of(LOOPS, INTERPRETED)
    for _ in range(rounds):
        results = {
            "native": run([native, *words_of(LOOPS)]),
            "wine": read(measuring.wine("wine_run", windows, *words_of(LOOPS))),
            "python": run(["python3", PROGRAMS / "loops.py", *interpreted]),
            "lua": run(["lua5.4", PROGRAMS / "loops.lua", *interpreted]),
            "own": run([own, *words_of(ALONE)]),
            "written": run([written, *words_of(WRITTEN)]),
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
          "| native to Lua | Wine to Lua |")
    print("|---|---|---|---|---|---|---|---|---|")
    print_rows(runs, LOOPS, ("native", "wine", "python", "lua"),
               (("native", "python"), ("wine", "python"), ("native", "lua"), ("wine", "lua")))
    print("\n| Loop | all by -Og | all by -Og to CPython |\n|---|---|---|")
    print_rows(runs, ALONE, ("own",), (("own", "python"),))
    print("\n| Loop | values only written | to CPython | to Lua | native to it |\n|---|---|---|---|---|")
    print_rows(runs, WRITTEN, ("written",),
               (("written", "python"), ("written", "lua"), ("native", "written")))


report(measure(pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2]) if len(sys.argv) > 2 else 5))
