#!/usr/bin/env python3
"""Depth and size: the compiler stays linear in time, small in memory, and never breaks.

    limits_test.py [--full|--deep] [--wine RUN] [--table FILE] PATH/TO/orvanec [PATH/TO/gxx_stand_in.exe]

Every case is translated in two sizes. Checked are the exit status, the last words, the processor
time of the larger against the smaller, and the largest memory: at most 40 times the source and 20
megabytes more. The runs take some hundredths of a second, which another process can double; a time
that looks too long is measured again, and the shortest of each size are compared. With --wine, RUN starts the Windows program, and what a run of the empty
program takes there comes on top.
"""

import argparse
import math
import os
import pathlib
import resource
import shutil
import signal
import sys
import tempfile

import cases

MEGABYTE = 1_000_000
SOURCE_FACTOR = 40
ALLOWANCE = 20 * MEGABYTE
GROWTH = 4          # the larger size of a case
SLOWNESS = 1.6      # of a linear time, for the noise of a busy machine
NOTICEABLE = 0.03   # seconds; less is not compared
ATTEMPTS = 5        # measurements of a case whose time looks too long
DEEPEST = 1000      # levels of nesting that are followed


class Run:
    """What one translation took and gave."""

    def __init__(self, status, seconds, memory, output):
        self.status, self.seconds, self.memory, self.output = status, seconds, memory, output


class Bench:
    def __init__(self, options, root):
        self.root = pathlib.Path(root)
        self.wine = options.wine
        self.install = self.root / "install"
        self.work = self.root / "work"
        self.install.mkdir()
        self.program = self.install / os.path.basename(options.compiler)
        shutil.copy(options.compiler, self.program)
        gxx = self.install / "g++.exe"
        if options.stand_in:
            shutil.copy(options.stand_in, gxx)
        else:
            gxx.write_text("#!/bin/sh\nexit 0\n")
            gxx.chmod(0o755)
        self.overhead = 0
        if self.wine:
            self.overhead = self.translate(["vorla M { }\n"])[1].memory

    def translate(self, chunks, libraries=None, count=0):
        """The bytes that were read, and the run."""
        shutil.rmtree(self.work, ignore_errors=True)
        self.work.mkdir()
        size = 0
        with open(self.work / "app.vorla", "w", encoding="ascii", newline="\n") as file:
            for chunk in chunks:
                size += file.write(chunk)
        if libraries:
            folder = self.work / "orlib"
            folder.mkdir()
            libraries(folder, count)
            size += sum(file.stat().st_size for file in folder.iterdir())
        return size, self.run()

    def run(self):
        """The child's memory is counted from its start: this process has to be smaller than it."""
        command = [str(self.program), "app.vorla", "--keep-cpp"]
        if self.wine:
            command.insert(0, self.wine)
        child = os.fork()
        if child == 0:
            os.chdir(self.work)
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
            for name, descriptor in (("out", 1), ("err", 2)):
                os.dup2(os.open(name, os.O_WRONLY | os.O_CREAT, 0o666), descriptor)
            os.execv(command[0], command)
        _, status, usage = os.wait4(child, 0)
        return Run(os.waitstatus_to_exitcode(status), usage.ru_utime + usage.ru_stime,
                   usage.ru_maxrss * 1024, self.words_written())

    def words_written(self):
        folder = self.work / "code_generation"
        return sum(file.stat().st_size for file in folder.iterdir()) if folder.is_dir() else 0

    def last_words(self, name="out"):
        with open(self.work / name, "rb") as file:
            file.seek(max(0, os.path.getsize(self.work / name) - 400))
            return file.read().decode(errors="replace").replace("\r\n", "\n")


class Report:
    def __init__(self):
        self.rows = {}  # the last run of each case and size
        self.failures = []

    def check(self, name, condition, what):
        if not condition:
            self.failures.append(f"FAILED {name}: {what}")
            print(self.failures[-1], flush=True)

    def add(self, name, count, size, run, limit):
        self.rows[name, count] = (size, run, limit)
        print(f"{name}: {count}, {size / MEGABYTE:.2f} MB, {run.seconds:.2f} s, "
              f"{run.memory / MEGABYTE:.1f} MB of {limit / MEGABYTE:.1f}", flush=True)

    def write_table(self, path):
        with open(path, "w", encoding="utf-8") as file:
            file.write("| Case | Pieces | Source (MB) | Written (MB) | Processor time (s) | "
                       "Memory (MB) | Limit (MB) |\n|---|---:|---:|---:|---:|---:|---:|\n")
            for (name, count), (size, run, limit) in self.rows.items():
                file.write(f"| {name} | {count:,} | {size / MEGABYTE:.2f} | "
                           f"{run.output / MEGABYTE:.2f} | {run.seconds:.2f} | "
                           f"{run.memory / MEGABYTE:.1f} | {limit / MEGABYTE:.1f} |\n")


def memory_limit(size, overhead):
    return SOURCE_FACTOR * size + ALLOWANCE + overhead


def check_built(bench, report, name, count, size, run):
    limit = memory_limit(size, bench.overhead)
    report.add(name, count, size, run, limit)
    report.check(name, run.status == 0, f"status {run.status}, {bench.last_words()}")
    report.check(name, bench.last_words().endswith("\n=== Build complete! ===\n"),
                 bench.last_words())
    report.check(name, run.memory <= limit, "too much memory")


def check_sizes(bench, report, name, count, translate):
    """Both sizes; the larger one takes no more than its share of time."""
    shortest = {count: math.inf, count * GROWTH: math.inf}
    for _ in range(ATTEMPTS):
        for pieces in shortest:
            size, run = translate(pieces)
            check_built(bench, report, name, pieces, size, run)
            shortest[pieces] = min(shortest[pieces], run.seconds)
        larger = shortest[count * GROWTH]
        expected = max(shortest[count], NOTICEABLE) * GROWTH * SLOWNESS
        if larger <= expected:
            return
    report.check(name, False, f"{larger:.2f} s where {expected:.2f} are linear")


def check_nesting(bench, report, name, chunks, count, aborted):
    """Half the deepest level is translated; far more is an error with a line."""
    size, run = bench.translate(chunks(DEEPEST // 2 - 10))
    check_built(bench, report, "nested " + name, DEEPEST // 2 - 10, size, run)
    size, run = bench.translate(chunks(count))
    report.check(name, run.status in aborted, f"status {run.status} at {count} levels")
    report.check(name, bench.last_words().endswith("[3/6] Parsing...\n"), bench.last_words())
    report.check(name, bench.wine or "Expected less nesting at line 1" in bench.last_words("err"),
                 bench.last_words("err"))
    report.check(name, not (bench.work / "code_generation").exists(), "files were written")


def run_chains(bench, report, options):
    for name, chunks in cases.CHAINS.items():
        if options.only and options.only not in name:
            continue
        if options.deep:
            size, run = bench.translate(chunks(100_000))
            check_built(bench, report, name, 100_000, size, run)
            continue
        count = chain_size(name, options)
        check_sizes(bench, report, name, count, lambda n, c=chunks: bench.translate(c(n)))


def run_nested(bench, report, options):
    aborted = (3,) if bench.wine else (-signal.SIGABRT,)
    for name, chunks in cases.NESTED.items():
        if not options.only or options.only in name:
            check_nesting(bench, report, name, chunks, 100_000, aborted)


def run_libraries(bench, report, options):
    for name, write, count in (("library files", cases.write_libraries, 2500),
                               ("imports, each of the next", cases.write_import_chain, 250)):
        if options.only and options.only not in name:
            continue
        if not options.full and write is cases.write_libraries:
            count = 250
        if options.deep:
            size, run = bench.translate([cases.LIBRARY_PROGRAM], write, count * GROWTH)
            check_built(bench, report, name, count * GROWTH, size, run)
            continue
        check_sizes(bench, report, name, count,
                    lambda n, w=write: bench.translate([cases.LIBRARY_PROGRAM], w, n))


# A quarter of the larger size. Where every byte or two of the source is a token, where short pieces
# stand for the longest texts, and what is only large in large numbers: ten megabytes and more.
FULL_SIZES = {
    "functions": 250_000, "controls": 250_000, "one long text": 1_250_000, "one long line": 625_000,
    "terms of +": 1_250_000, "names of +": 1_250_000, "members": 1_250_000, "calls": 833_000,
    "statements": 1_250_000, "unary minus": 833_000, "empty objects": 625_000, "ranges": 312_000,
    "deferred blocks": 357_000, "tabs": 357_000,
}


def chain_size(name, options):
    return FULL_SIZES.get(name, 25_000) if options.full else 25_000


def run_squares(bench, report, options):
    """A text that grows with the square of its source takes time and disk, but no memory; one that
    no C++ compiler could take in ends in a message."""
    name = "handlers with all controls"
    if options.only and options.only not in name:
        return
    count = 2000 if options.full else 500
    size, run = bench.translate(cases.handled_controls(count))
    check_built(bench, report, name, count, size, run)
    if not options.full:
        return
    size, run = bench.translate(cases.handled_controls(12_000))
    report.add(name, 12_000, size, run, memory_limit(size, bench.overhead))
    report.check(name, run.status == 1, f"status {run.status}")
    report.check(name, bench.last_words().endswith(
        "Error: Code generation failed: a text is longer than 4 GB\n"), bench.last_words())
    report.check(name, run.memory <= memory_limit(size, bench.overhead), "too much memory")
    report.check(name, run.output == 0, "files were written")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--full", action="store_true")
    parser.add_argument("--deep", action="store_true", help="100,000 pieces of every chain, once")
    parser.add_argument("--wine")
    parser.add_argument("--table")
    parser.add_argument("--only", help="a part of the names of the cases to run")
    parser.add_argument("compiler")
    parser.add_argument("stand_in", nargs="?")
    options = parser.parse_args()
    report = Report()
    with tempfile.TemporaryDirectory(prefix="orvane-") as root:
        bench = Bench(options, root)
        for run_cases in (run_chains, run_nested, run_libraries, run_squares):
            run_cases(bench, report, options)
    if options.table:
        report.write_table(options.table)
    print(f"{len(report.rows)} translations, {len(report.failures)} failures",
          *report.failures, sep="\n")
    sys.exit(1 if report.failures else 0)


if __name__ == "__main__":
    main()
