"""The samples of the documentation and the example programs, as `orvane check` sees them: nothing is
said about those that compile, and those that are shown as failing are refused.

    checked_samples.py --command ORVANE --source ROOT --work FOLDER
"""

import argparse
import os
import shutil
import subprocess
import sys
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean

from samples import all_samples, example_files


def check(command, file, options, folder):
    run = subprocess.run([command, "check", file, *options], cwd=folder, text=True,
                         errors="replace", stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                         timeout=120, env={**os.environ, "LC_ALL": "C.UTF-8"})
    return run.returncode, run.stdout


def complaint_about(place, fails, status, output):
    if fails:
        return None if status == 1 else f"{place}: is shown as failing, and nothing is said"
    return None if status == 0 and not output else f"{place}: is not free of messages\n{output}"


def check_samples(command, source, work):
    for index, sample in enumerate(all_samples(source)):
        folder = work / f"sample{index}"
        folder.mkdir(parents=True)
        for name, text in sample.files.items():
            (folder / name).write_text(text + "\n", encoding="utf-8")
        (folder / "sample.vorla").write_text(sample.program() + "\n", encoding="utf-8")
        status, output = check(command, "sample.vorla", sample.options(), folder)
        yield complaint_about(sample.place, "fails" in sample.marks, status, output)


def check_examples(command, source):
    for path in example_files(source):
        yield complaint_about(path.name, False, *check(command, path.name, [], path.parent))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--command", type=Path, required=True)
    parser.add_argument("--source", type=Path, required=True)
    parser.add_argument("--work", type=Path, required=True)
    options = parser.parse_args()
    shutil.rmtree(options.work, ignore_errors=True)
    options.work.mkdir(parents=True)
    installed = options.work / "orvane"  # as an installation has it: the libraries beside it
    shutil.copy2(options.command, installed)
    shutil.copytree(options.source / "orlib", options.work / "orlib")
    results = [*check_samples(installed.resolve(), options.source, options.work.resolve()),
               *check_examples(installed.resolve(), options.source)]
    complaints = [result for result in results if result]
    print("\n".join([*complaints, f"{len(results)} checked, {len(complaints)} wrong"]))
    return 1 if complaints or not results else 0


if __name__ == "__main__":
    sys.exit(main())
