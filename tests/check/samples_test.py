"""The samples of the documentation are free of warnings, but for those that show what a warning is
about, and those that show what does not compile are refused.

    samples_test.py CORPUS_LIST SOURCE_ROOT WORK_FOLDER
"""

import subprocess
import sys
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean
sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "docs"))

from samples import all_samples

# The frame around handlers has no places for its controls, and not every sample uses a library.
FRAME_COMMENT = "// orvane: allow-file overlapping-controls\n"

# The samples that show a peculiarity, by a text that only they have, and the ids of the warnings
# that are right about them.
SHOWN = {}


def program_of(sample):
    imports = "".join(f"import {option[2:]}\n" for option in sample.options())
    comment = FRAME_COMMENT if sample.marks.get("in") else ""
    return imports + comment + sample.program() + "\n"


def complaint_about(sample, verdict, ids):
    if "fails" in sample.marks:
        return None if verdict == "error" else f"{sample.place}: shown as failing, but not refused"
    shown = {i for text, allowed in SHOWN.items() if text in sample.text for i in allowed}
    unexpected = set(ids) - shown
    return f"{sample.place}: {' '.join(sorted(unexpected))}" if unexpected else None


def main():
    tool, source, work = sys.argv[1], Path(sys.argv[2]), Path(sys.argv[3])
    work.mkdir(parents=True, exist_ok=True)
    samples = [sample for sample in all_samples(source) if not sample.files]
    paths = []
    for index, sample in enumerate(samples):
        paths.append(work / f"sample{index}.vorla")
        paths[-1].write_text(program_of(sample), encoding="utf-8")
    run = subprocess.run([tool, *paths], text=True, check=True, stdout=subprocess.PIPE)
    complaints = []
    for sample, line in zip(samples, run.stdout.splitlines(), strict=True):
        _, verdict, ids = line.split("\t")
        complaints.append(complaint_about(sample, verdict, ids.split()))
    complaints = [complaint for complaint in complaints if complaint]
    print("".join(complaint + "\n" for complaint in complaints), end="")
    print(f"{len(samples)} samples, {len(complaints)} wrong")
    return 1 if complaints or not samples else 0


if __name__ == "__main__":
    sys.exit(main())
