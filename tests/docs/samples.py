"""Samples in Markdown files.

A sample is a fenced block of the language "vorla". Marks in HTML comments on the lines directly
above it say how it becomes a program and what its compilation must give:

    <!-- in: handler; libraries: --normal; fails: Expected ';' -->

in: handler        the block is the body of a button's click handler (see HANDLER_FRAME)
libraries: ...     options for the command line
fails: TEXT        the compilation fails, and TEXT is among what it prints
file: NAME         above a block of the language "orlib": a library file beside the next samples
"""

import re
from dataclasses import dataclass, field
from pathlib import Path

HANDLER_FRAME = """vorla Sample {
    button ok { x = 20; y = 20; width = 120; height = 40 }
    entry name { x = 160; y = 20; width = 120; height = 36 }
    textarea page { x = 300; y = 20; width = 200; height = 120 }
    combobox choice { x = 20; y = 160; width = 120; height = 200; items = {"one", "two"} }
    listbox items { x = 160; y = 160; width = 120; height = 100; items = {"one", "two"} }
    checkbox agree { x = 300; y = 160; width = 120; height = 36 }
    slider level { x = 300; y = 220; width = 200; height = 40 }
    progress bar { x = 300; y = 280; width = 200; height = 30 }
    text label { x = 300; y = 330; width = 200; height = 28 }
}
Sample.script { on ok.click {
BODY
} }
"""

KNOWN_MARKS = {"in", "libraries", "fails", "file"}


@dataclass
class Sample:
    place: str  # "docs/language.md:12", the line of the opening fence, from 1
    text: str
    marks: dict = field(default_factory=dict)
    files: dict = field(default_factory=dict)  # library files shown before it in the same document

    def program(self):
        return HANDLER_FRAME.replace("BODY", self.text) if self.marks.get("in") else self.text

    def options(self):
        return self.marks.get("libraries", "").split()


def read_marks(comment, place):
    marks = {}
    for piece in re.split(r";\s+(?=[a-z]+:)", comment):
        key, colon, value = piece.partition(":")
        key = key.strip()
        if not colon or key not in KNOWN_MARKS:
            raise ValueError(f"{place}: unknown mark '{piece.strip()}'")
        marks[key] = value.strip()
    if marks.get("in", "handler") != "handler":
        raise ValueError(f"{place}: a sample can only stand in a handler")
    return marks


def find_samples(text, name):
    """The samples of one document, in order."""
    samples, files, marks = [], {}, {}
    lines = iter(enumerate(text.splitlines(), start=1))
    for number, line in lines:
        comment = re.fullmatch(r"<!--(.*)-->", line.strip())
        if comment and re.match(r"\s*(in|libraries|fails|file):", comment[1]):
            marks.update(read_marks(comment[1].strip(), f"{name}:{number}"))
            continue
        fence = re.fullmatch(r"```(\w*)", line)
        if fence:
            body = []
            for _, inner in lines:
                if inner == "```":
                    break
                body.append(inner)
            block = "\n".join(body)
            if fence[1] == "orlib" and "file" in marks:
                files = {**files, marks["file"]: block}
            elif fence[1] == "vorla":
                samples.append(Sample(f"{name}:{number}", block, marks, files))
        if line.strip():
            marks = {}
    return samples


def documents(source):
    return [source / "README.md", *sorted((source / "docs").glob("*.md")),
            source / "docs" / "library" / "traps.md"]


def all_samples(source):
    found = []
    for path in documents(source):
        if path.exists():
            text = path.read_text(encoding="utf-8")
            found += find_samples(text, str(path.relative_to(source)))
    return found


def example_files(source):
    return sorted(Path(source, "examples").glob("*.vorla"))
