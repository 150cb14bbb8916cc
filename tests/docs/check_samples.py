"""Compiles the samples of the documentation and the example programs.

    check_samples.py samples|examples|self --compiler ORVANEC --source ROOT --work FOLDER
"""

import argparse
import os
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean

from samples import all_samples, example_files, find_samples
from stage import Stage

# Without the three warnings that fixed texts of all programs give: parameters and references to
# fields that not every body uses, and a structure of which only the first member is given.
WARNINGS = "-Wall -Wextra -Wno-unused-parameter -Wno-unused-variable -Wno-missing-field-initializers"


def complaint_about(sample, status, output):
    """What is wrong with the outcome of a sample, or None."""
    expected = sample.marks.get("fails")
    if expected is None:
        return None if status == 0 else f"{sample.place}: does not compile\n{output}"
    if status == 0:
        return f"{sample.place}: compiles, but is shown as failing with \"{expected}\""
    if expected not in output:
        return f"{sample.place}: fails without saying \"{expected}\"\n{output}"
    return None


def check_sample(stage, work, index, sample):
    folder = work / f"sample{index}"
    folder.mkdir(parents=True, exist_ok=True)
    for name, text in sample.files.items():
        (folder / name).write_text(text + "\n", encoding="utf-8")
    (folder / "sample.vorla").write_text(sample.program() + "\n", encoding="utf-8")
    status, output = stage.compile("sample.vorla", sample.options(), folder)
    warned = [line for line in output.splitlines() if "warning: " in line.lower()]
    if warned and "fails" not in sample.marks:
        return f"{sample.place}: " + warned[0]
    return complaint_about(sample, status, output)


def check_example(stage, work, index, path):
    folder = work / path.stem
    folder.mkdir(parents=True, exist_ok=True)
    copy = folder / path.name
    copy.write_bytes(path.read_bytes())
    status, output = stage.compile(copy, [], folder)
    if status != 0 or not copy.with_suffix(".exe").exists():
        return f"{path.name}: does not build\n{output}"
    if "warning: " in output.lower() or "FAIL" in output:
        return f"{path.name}: builds with complaints\n{output}"
    return None


def run_all(check, stage, work, things):
    """Checks everything, prints the complaints and returns the exit status."""
    if not things:
        print("nothing found to check")
        return 1
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        outcomes = pool.map(lambda pair: check(stage, work, *pair), enumerate(things))
        complaints = [outcome for outcome in outcomes if outcome]
    for complaint in complaints:
        print(complaint)
    print(f"{len(things)} checked, {len(complaints)} wrong")
    return 1 if complaints else 0


def check_samples(stage, source, work):
    stage.check_only()
    return run_all(check_sample, stage, work, all_samples(source))


def check_examples(stage, source, work):
    stage.build_all(WARNINGS)
    return run_all(check_example, stage, work, example_files(source))


# Four samples of which the check must find exactly the last three wrong.
SELF_DOCUMENT = """
<!-- in: handler; fails: Expected ';' -->
```vorla
int a = 1
```

```vorla
vorla Main { button ok { on click { alert(missing); } } }
```

<!-- fails: Expected ';' -->
```vorla
vorla Main { }
```

<!-- in: handler; fails: Expected ')' -->
```vorla
alert("x")
```
"""


def check_self(stage, source, work):
    """Whether the check would notice wrong samples."""
    stage.check_only()
    samples = find_samples(SELF_DOCUMENT, "self")
    wrong = [bool(check_sample(stage, work, index, sample)) for index, sample in enumerate(samples)]
    if wrong != [False, True, True, True]:
        print(f"samples found wrong: {wrong}")
        return 1
    return 0 if run_all(check_sample, stage, work, []) == 1 else 1


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("part", choices=["samples", "examples", "self"])
    parser.add_argument("--compiler", required=True, type=Path)
    parser.add_argument("--source", required=True, type=Path)
    parser.add_argument("--work", required=True, type=Path)
    options = parser.parse_args()
    work = options.work.resolve()
    stage = Stage(options.compiler, options.source, work / "stage")
    check = {"samples": check_samples, "examples": check_examples, "self": check_self}[options.part]
    return check(stage, options.source.resolve(), work)


if __name__ == "__main__":
    sys.exit(main())
