#!/usr/bin/env python3
"""builds.py STAGE [ROUNDS]: what it costs to build the examples with the installation in STAGE, its
precompiled header included, against the plain MinGW command on the same two files; what orvanec
itself takes of it; and the first window and the size of a program against one written by hand.
Processor times; medians of runs made side by side."""
import pathlib
import shutil
import statistics
import subprocess
import sys

import measuring

FOLDER = measuring.ROOT / "build" / "bench" / "builds"


def plain_command(command):
    """orvanec's command run by the cross compiler itself, with the two options of the installation."""
    output = command.index("-o")
    return [measuring.MINGW, *command[1:output + 1], FOLDER / "plain.exe", *command[output + 2:],
            "-static", "-s"]


def compare_builds(stage, rounds):
    """Prints a row per example with both times and the ratio, and gives the ratios."""
    print("| Example | orvanec | plain command | ratio |\n|---|---|---|---|")
    ratios = []
    for source in sorted((measuring.ROOT / "examples").glob("*.vorla")):
        folder = FOLDER / source.stem
        plain = plain_command(measuring.translate(stage, source, folder))
        kept = []
        for _ in range(rounds):
            kept.append((measuring.processor_time([stage / "orvanec", folder / source.name,
                                                   "--keep-cpp"], folder),
                         measuring.processor_time(plain)))
        ours, theirs = zip(*kept)
        ratios.append(measuring.median_ratio(ours, theirs))
        print(f"| {source.stem} | {statistics.median(ours):.2f} s | {statistics.median(theirs):.2f} s "
              f"| {ratios[-1]:.2f} |")
    print(f"| median | | | {statistics.median(ratios):.2f} |")


def measure_own_share(stage, rounds):
    """orvanec with a g++.exe that only notes how much memory its parent took so far."""
    folder = FOLDER / "own"
    shutil.rmtree(folder, ignore_errors=True)
    (folder / "tools/bin").mkdir(parents=True)
    (folder / "orlib").symlink_to(stage / "orlib")
    shutil.copy(stage / "orvanec", folder)
    compiler = folder / "tools/bin/g++.exe"
    compiler.write_text(f"#!/bin/sh\ngrep VmHWM /proc/$PPID/status > '{folder}/memory'\n")
    compiler.chmod(0o755)
    print("\n| Program | orvanec alone | the compiler's stand-in | memory |\n|---|---|---|---|")
    empty = statistics.median(measuring.processor_time([compiler]) for _ in range(rounds * 4))
    for source in (measuring.ROOT / "bench/programs/hello.vorla",
                   measuring.ROOT / "examples/calculator.vorla"):
        copy = folder / source.name
        shutil.copy(source, copy)
        times = [measuring.processor_time([folder / "orvanec", copy], folder)
                 for _ in range(rounds * 4)]
        memory = int((folder / "memory").read_text().split()[1])
        print(f"| {source.stem} | {(statistics.median(times) - empty) * 1000:.1f} ms "
              f"| {empty * 1000:.1f} ms | {memory / 1024:.1f} MB |")


def compare_programs(stage, rounds):
    """The first window and the size of hello.vorla and of the same window written by hand."""
    command = measuring.translate(stage, measuring.ROOT / "bench/programs/hello.vorla", FOLDER)
    ours, by_hand = FOLDER / "hello.exe", FOLDER / "hello_win32.exe"
    source = measuring.ROOT / "bench/programs/hello_win32.cpp"
    main = next(word for word in command if word.endswith("main.cpp"))
    measuring.processor_time([command[0], *(source if word == main else by_hand if word == str(ours)
                                            else word for word in command[1:])])
    starter = FOLDER / "first_window.exe"
    measuring.processor_time([measuring.MINGW, "-O1", "-static",
                              measuring.ROOT / "bench/programs/first_window.cpp", "-o", starter])
    pairs = [str(path) for _ in range(rounds * 2) for path in (ours, by_hand)]
    # Elapsed time, most of it waiting for Wine's server: beside other work it says nothing. The server
    # is a new one, so that it has the same right of way.
    under = measuring.real_time()
    if not under:
        print("\nOther programs are not kept away (chrt --rr): read the first window with care.")
    measuring.wine("wine_down")
    times = [float(line) for line in measuring.wine(
        "wine_run", starter, "Bench Hello", *("Z:" + path for path in pairs), under=under).split()]
    measuring.wine("wine_down")
    print("\n| | hello.vorla | by hand | ratio |\n|---|---|---|---|")
    print(f"| first window under Wine | {statistics.median(times[::2]):.0f} ms "
          f"| {statistics.median(times[1::2]):.0f} ms "
          f"| {measuring.median_ratio(times[::2], times[1::2]):.2f} |")
    sizes = [path.stat().st_size for path in (ours, by_hand)]
    print(f"| size | {sizes[0]:,} bytes | {sizes[1]:,} bytes | {sizes[0] / sizes[1]:.2f} |")


def main():
    stage = pathlib.Path(sys.argv[1]).resolve()
    rounds = int(sys.argv[2]) if len(sys.argv) > 2 else 3
    FOLDER.mkdir(parents=True, exist_ok=True)
    subprocess.run([stage / "tools/bin/g++.exe", "--orvane-make-pch"], check=True)
    compare_builds(stage, rounds)
    measure_own_share(stage, rounds)
    compare_programs(stage, rounds)


main()
