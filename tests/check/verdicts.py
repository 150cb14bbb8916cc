"""The true verdicts about the programs of the corpus, and the table that holds them.

    verdicts.py record --compiler ORVANEC --source ROOT --work FOLDER [PROGRAM...]
    verdicts.py run    --compiler ORVANEC --source ROOT --work FOLDER [PROGRAM...]
    verdicts.py test   --compiler ORVANEC --source ROOT --work FOLDER
    verdicts.py page   --source ROOT --list CORPUS_LIST [--check]

`record` compiles every program as its user would, but for the linking, and writes corpus.csv. `run`
builds the programs whose comments say what they print, runs them under Wine and compares. `test`
records again and tells what differs from the table. `page` writes docs/checks.md from the table and
from what the program corpus_list prints, or with --check tells whether it has to be written.

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


# ---- The page ----

PAGE_HEAD = """# What the checks notice

`orvane check` reads a program before the C++ compiler does. This page is the record of how well: each of
the {total} programs in [`tests/check/corpus`](../tests/check/corpus) tests one thing, and its true
verdict was found by compiling it. What programs really print was found by running them.

| The program | programs | error | warning | nothing |
|---|---|---|---|---|
{summary}

Of the {refused} programs that do not compile, {found} ({percent:.1f} %) are refused by the checks; of the
{accepted} that compile, {false} are.
"""

GROUPS = [("does not parse", ORVANEC, ""), ("is refused by the C++ compiler", GXX, ""),
          ("compiles and misleads", ACCEPTED, "misleads"),
          ("compiles and behaves", ACCEPTED, "behaves")]


def listed(executable):
    """What the checks say, by program: error, warning or nothing, and the ids."""
    run = subprocess.run([executable], text=True, check=True, stdout=subprocess.PIPE)
    return {name: (said, ids) for name, said, ids in
            (line.split("\t") for line in run.stdout.splitlines())}


def summary_row(title, names, said):
    counts = [sum(said[name][0] == kind for name in names) for kind in ("error", "warning", "nothing")]
    return f"| {title} | {len(names)} | " + " | ".join(str(count) for count in counts) + " |"


def describe(program, row):
    reason = f": {row[3]}" if row[3] else ""
    return f"- {program.subject.rstrip('.')}{reason} (`{program.name}`)\n"


def section(title, explanation, programs, rows, names):
    if not names:
        return ""
    text = "".join(describe(programs[name], rows[name]) for name in names)
    return f"\n## {title}\n\n{explanation}\n\n{text}"


def escape(text):
    return text.replace("|", "\\|").replace("<", "&lt;").replace("*", "\\*")


def table_of(programs, rows, said):
    lines = ["\n## All programs\n", "| Program | About | Verdict | Said |", "|---|---|---|---|"]
    for name, row in rows.items():
        verdict = row[2] or row[1]
        ids = said[name][1].replace(" ", ", ")
        lines.append(f"| `{name}` | {escape(programs[name].subject)} | {verdict} | {ids} |")
    return "\n".join(lines) + "\n"


def make_page(options):
    rows = {row[0]: row for row in read_table(options.source)}
    programs = {program.name: program for program in corpus(options.source, [])}
    said = listed(options.list.resolve())

    def pick(condition):
        return [name for name, row in rows.items() if condition(row, said[name][0])]

    groups = [(title, pick(lambda row, _: row[1] == verdict and row[2] == behaviour))
              for title, verdict, behaviour in GROUPS]
    refused = pick(lambda row, _: row[1] != ACCEPTED)
    found = pick(lambda row, kind: row[1] != ACCEPTED and kind == "error")
    false = pick(lambda row, kind: row[1] == ACCEPTED and kind == "error")
    page = PAGE_HEAD.format(
        total=len(rows), refused=len(refused), found=len(found), false=len(false) or "none",
        percent=100 * len(found) / len(refused), accepted=len(rows) - len(refused),
        summary="\n".join(summary_row(title, names, said) for title, names in groups))
    page += section("Refused and not noticed", "The C++ compiler is the first to say something.",
                    programs, rows, [name for name in refused if said[name][0] != "error"])
    page += section("Misleading and not noticed",
                    "These compile, do something else than they seem to say, and nothing warns.",
                    programs, rows,
                    pick(lambda row, kind: row[2] == "misleads" and kind == "nothing"))
    page += section("Warned about without need", "These do what they say.", programs, rows,
                    pick(lambda row, kind: row[2] == "behaves" and kind == "warning"))
    return page + table_of(programs, rows, said)


def page(options):
    path = Path(options.source, "docs", "checks.md")
    text = make_page(options)
    if not options.check:
        path.write_text(text, encoding="utf-8")
        return 0
    if path.exists() and path.read_text(encoding="utf-8") == text:
        return 0
    print("docs/checks.md is not what the table and the checks give; write it again")
    return 1


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("part", choices=["record", "run", "test", "page"])
    parser.add_argument("programs", nargs="*")
    parser.add_argument("--compiler", type=Path)
    parser.add_argument("--source", required=True, type=Path)
    parser.add_argument("--work", type=Path)
    parser.add_argument("--list", type=Path)
    parser.add_argument("--check", action="store_true")
    options = parser.parse_intermixed_args()
    if options.part == "page":
        return page(options)
    if not options.compiler or not options.work:
        parser.error("--compiler and --work are missing")
    return {"record": record, "run": run_programs, "test": test}[options.part](options)


if __name__ == "__main__":
    sys.exit(main())
