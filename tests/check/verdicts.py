"""The true verdicts about the programs of the corpus, and the table that holds them.

    verdicts.py record --compiler ORVANEC --source ROOT --work FOLDER [PROGRAM...]
    verdicts.py run    --compiler ORVANEC --source ROOT --work FOLDER [PROGRAM...]
    verdicts.py test   --compiler ORVANEC --source ROOT --work FOLDER
    verdicts.py page   --source ROOT [--verdicts FILE]

`record` compiles every program as its user would, but for the linking, and writes corpus.csv. `run`
builds the programs whose comments say what they print, runs them under Wine and compares. `test`
records again and tells what differs from the table. `page` writes the pages of docs/checks.md that
are made of the table.

The first line of a program says what it is about. Two more may follow:

    // misleads: what happens in place of what it seems to say
    // prints: the lines of its output, with " | " between them
"""

import argparse
import csv
import os
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean
sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "docs"))

from stage import Stage

COLUMNS = ["program", "verdict", "behaviour", "reason"]
ORVANEC, GXX, ACCEPTED = "orvanec refuses", "g++ refuses", "accepted"


@dataclass
class Program:
    path: Path
    subject: str
    misleads: str
    prints: list

    @property
    def name(self):
        return self.path.stem


def read_program(path):
    comments = []
    for line in path.read_text(encoding="utf-8").splitlines():
        if not line.startswith("// "):
            break
        comments.append(line[3:])
    marks = {}
    for comment in comments[1:]:
        key, colon, text = comment.partition(": ")
        if colon and key in ("misleads", "prints"):
            marks[key] = text
    if not comments:
        raise ValueError(f"{path.name}: the first line does not say what it is about")
    prints = marks["prints"].split(" | ") if "prints" in marks else []
    return Program(path, comments[0], marks.get("misleads", ""), prints)


def corpus(source, names):
    folder = Path(source, "tests", "check", "corpus")
    programs = [read_program(path) for path in sorted(folder.glob("*.vorla"))]
    if names:
        programs = [program for program in programs if program.name in names]
    if not programs:
        raise ValueError("no programs")
    return programs


def copy_of(program, work):
    folder = work / program.name
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "app.vorla").write_bytes(program.path.read_bytes())
    return folder


def gxx_reason(output):
    """The text of the first error of g++, without its place."""
    for line in output.splitlines():
        found = re.search(r"error: (.*)", line)
        if found:
            plain = found[1].replace("‘", "'").replace("’", "'")
            return re.sub(r" \{aka '[^']*'\}", "", plain)
    return "no error message"


def orvanec_reason(output):
    """What the exception says, without its place."""
    found = re.search(r"what\(\): +(.*)", output)
    return re.sub(r" at line \d+", "", found[1]) if found else "no message"


def verdict_of(stage, work, program):
    """The row of the table. The compiler ends by a signal when it refuses, with 1 after g++."""
    status, output = stage.compile("app.vorla", [], copy_of(program, work))
    if status == 0:
        behaviour = "misleads" if program.misleads else "behaves"
        return [program.name, ACCEPTED, behaviour, program.misleads]
    if status == 1 and "error: " in output:
        return [program.name, GXX, "", gxx_reason(output)]
    return [program.name, ORVANEC, "", orvanec_reason(output)]


def find_verdicts(options, names):
    programs = corpus(options.source, names)
    work = options.work.resolve()
    stage = Stage(options.compiler, options.source, work / "stage")
    stage.check_only()
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        rows = list(pool.map(lambda program: verdict_of(stage, work, program), programs))
    # A program that is refused neither misleads nor prints, so its comments must not say so.
    claims = [f"{program.name}: comments on its behaviour, but {row[1]}: {row[3]}"
              for program, row in zip(programs, rows)
              if (program.misleads or program.prints) and row[1] != ACCEPTED]
    return rows, claims


def table_path(source):
    return Path(source, "tests", "check", "corpus.csv")


def read_table(source):
    with open(table_path(source), encoding="utf-8", newline="") as file:
        return [[row[column] for column in COLUMNS] for row in csv.DictReader(file)]


def write_table(source, rows):
    with open(table_path(source), "w", encoding="utf-8", newline="") as file:
        writer = csv.writer(file, lineterminator="\n")
        writer.writerow(COLUMNS)
        writer.writerows(rows)


def record(options):
    rows, claims = find_verdicts(options, options.programs)
    if options.programs:
        known = {row[0]: row for row in read_table(options.source)}
        known.update((row[0], row) for row in rows)
        rows = sorted(known.values())
    write_table(options.source, rows)
    for verdict in (ORVANEC, GXX, ACCEPTED):
        print(f"{verdict}: {sum(row[1] == verdict for row in rows)}")
    print("".join(claim + "\n" for claim in claims), end="")
    return 1 if claims else 0


def test(options):
    recorded = {row[0]: row for row in read_table(options.source)}
    rows, claims = find_verdicts(options, [])
    found = {row[0]: row for row in rows}
    wrong = [name for name in sorted(recorded.keys() | found.keys())
             if recorded.get(name, [])[:3] != found.get(name, [])[:3]]
    for name in wrong:
        print(f"{name}: the table has {recorded.get(name)}, found {found.get(name)}")
    print("".join(claim + "\n" for claim in claims), end="")
    print(f"{len(found)} programs, {len(wrong)} wrong")
    return 1 if wrong or claims else 0


def output_of(options, work, program):
    """What the built program prints under Wine."""
    script = Path(options.source, "tests", "run", "run_program.sh").resolve()
    executable = (work / program.name / "app.exe").resolve()
    run = subprocess.run(
        ["sh", script, executable, work / program.name / "run"], text=True, errors="replace",
        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=300, cwd=work,
        env={**os.environ, "ORVANE_TEST_PREFIX": str(work / "wineprefix")})
    return run.stdout.replace("\r", "").splitlines()


def wine_down(options, work):
    script = Path(options.source, "tests", "support", "wine.sh").resolve()
    subprocess.run(["sh", "-c", f". '{script}' && wine_environment null && wine_down"], cwd=work,
                   env={**os.environ, "ORVANE_TEST_PREFIX": str(work / "wineprefix")})


def run_programs(options):
    programs = [program for program in corpus(options.source, options.programs) if program.prints]
    work = options.work.resolve()
    stage = Stage(options.compiler, options.source, work / "stage")
    stage.build_all("-O0")
    wrong = 0
    for program in programs:
        status, output = stage.compile("app.vorla", [], copy_of(program, work))
        printed = output_of(options, work, program) if status == 0 else ["does not compile"]
        if printed != program.prints:
            wrong += 1
            print(f"{program.name}: prints {printed}, said to print {program.prints}")
    wine_down(options, work)
    print(f"{len(programs)} run, {wrong} wrong")
    return 1 if wrong or not programs else 0


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("part", choices=["record", "run", "test"])
    parser.add_argument("programs", nargs="*")
    parser.add_argument("--compiler", required=True, type=Path)
    parser.add_argument("--source", required=True, type=Path)
    parser.add_argument("--work", required=True, type=Path)
    options = parser.parse_args()
    return {"record": record, "run": run_programs, "test": test}[options.part](options)


if __name__ == "__main__":
    sys.exit(main())
