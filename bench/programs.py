#!/usr/bin/env python3
"""programs.py STAGE [ROUNDS]: the loops of programs/loops.vorla, built with the installation in STAGE,
against CPython and Lua, natively and under Wine: processor times, and medians of the ratios of runs
that were made side by side."""
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


def build(stage, folder):
    """The loops for Windows, by the command that orvanec ran, and natively; the two programs."""
    command = measuring.translate(stage, PROGRAMS / "loops.vorla", folder)
    generated = folder / "code_generation"
    (generated / "main.cpp").write_bytes((PROGRAMS / "loops_main.cpp").read_bytes())
    measuring.processor_time(command)
    native = folder / "loops"
    measuring.processor_time(
        ["g++", "-std=c++17", "-Og", "-finput-charset=UTF-8", generated / "main.cpp",
         "-I", measuring.ROOT / "tests/run/native", "-o", native])
    return native, folder / "loops.exe"


def words_of(loops):
    return [str(word) for pair in loops.items() for word in pair]


def read(output):
    """{name: (milliseconds, result)} of what a program printed."""
    return {name: (float(time), result)
            for name, time, result in (line.split() for line in output.splitlines())}


def run(command):
    return read(subprocess.run([str(word) for word in command], check=True, capture_output=True,
                               text=True).stdout)


def per_turn(times, loops):
    return {name: times[name][0] / loops[name] for name in loops}


def measure(stage, rounds):
    folder = measuring.ROOT / "build" / "bench" / "programs"
    native, windows = build(stage, folder)
    runs = {"native": [], "wine": [], "python": [], "lua": []}
    for _ in range(rounds):
        results = {
            "native": run([native, *words_of(LOOPS)]),
            "wine": read(measuring.wine("wine_run", windows, *words_of(LOOPS))),
            "python": run(["python3", PROGRAMS / "loops.py", *words_of(INTERPRETED)]),
            "lua": run(["lua5.4", PROGRAMS / "loops.lua", *words_of(INTERPRETED)]),
        }
        for name in LOOPS:
            if len({result[name][1] for result in results.values()}) != 1 and \
                    LOOPS[name] == INTERPRETED[name]:
                raise SystemExit(f"{name}: the results differ: {results}")
        for who, times in results.items():
            runs[who].append(per_turn(times, LOOPS if who in ("native", "wine") else INTERPRETED))
    measuring.wine("wine_down")
    return runs


def report(runs):
    print("| Loop | ns a turn, native | Wine | CPython | Lua | native to CPython | Wine to CPython "
          "| native to Lua |")
    print("|---|---|---|---|---|---|---|---|")
    for name in LOOPS:
        columns = {who: [one[name] for one in times] for who, times in runs.items()}
        medians = [f"{statistics.median(columns[who]) * 1e6:.0f}" for who in columns]
        ratios = [f"{measuring.median_ratio(columns[a], columns[b]):.2f}"
                  for a, b in (("native", "python"), ("wine", "python"), ("native", "lua"))]
        print(f"| {name} | {' | '.join(medians + ratios)} |")


report(measure(pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2]) if len(sys.argv) > 2 else 5))
