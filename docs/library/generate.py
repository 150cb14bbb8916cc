#!/usr/bin/env python3
"""Makes the pages of the library functions from the library files themselves.

    generate.py           writes docs/library/*.md
    generate.py --check   only says which pages are out of date; the exit status is 1 when one is

A library file begins with comment lines that say what it is for. Directly above each function stand
comment lines of this form; helpers, whose names begin with orx, need only the first:

    // padLeft(s, width, fill): text filled up in front to a width in characters.
    // A meaning may take more lines.
    // Fails: what the function gives when it cannot do it; left out when it always can
    // Example: setText(label, padLeft("7", 3, "0"));

    // == Heading ==     begins a group of functions on the page

An example is one or more statements of a handler of a window with the controls of EXAMPLE_FRAME; it
must compile. Several lines "Example:" are joined.
"""

import re
import sys
from dataclasses import dataclass, field
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
PAGES = Path(__file__).resolve().parent

# The window that examples live in. The statements of each example are the body of one handler.
EXAMPLE_FRAME = """vorla Sample {
    button ok { }
    button cancel { }
    button tick { }
    entry name { }
    textarea page { }
    combobox choice { items = {"one", "two"} }
    listbox items { items = {"one", "two"} }
    checkbox agree { }
    radio large { }
    slider level { }
    progress bar { }
    text label { }
    tab pages { items = {"General", "Details"} }
    canvas board { }
    picture photo { }
    status foot { }
}
Sample.script {
HANDLERS}
"""

DEFINITION = re.compile(r"^(value|int|bool|string) (\w+)\((.*)\) \{$")


@dataclass
class Function:
    name: str
    result: str
    parameters: list  # of (type, name)
    comment: list  # the lines above, without the slashes
    heading: str = ""
    meaning: str = ""
    fails: str = ""
    examples: list = field(default_factory=list)

    def is_public(self):
        return not self.name.startswith("orx")

    def signature(self):
        return f"{self.name}({', '.join(name for _, name in self.parameters)})"

    def changed(self):
        return [name for kind, name in self.parameters if kind == "Value&"]


@dataclass
class Library:
    name: str
    purpose: str
    imports: list
    functions: list


def read_parameters(text):
    """(type, name) of each. A program sees no difference between `const Value&` and `value`."""
    pieces = [piece.strip() for piece in text.split(",") if piece.strip()]
    pairs = [tuple(piece.rsplit(None, 1)) if " " in piece else ("value", piece) for piece in pieces]
    return [("value" if kind == "const Value&" else kind, name) for kind, name in pairs]


def read_comment(function):
    """Fills meaning, fails and examples from the comment lines."""
    head = function.signature() + ": "
    if not function.comment or not function.comment[0].startswith(head):
        return
    meaning, part = [function.comment[0][len(head):]], "meaning"
    fails = []
    for line in function.comment[1:]:
        if line.startswith("Fails: "):
            part = "fails"
            fails.append(line[len("Fails: "):])
        elif line.startswith("Example: "):
            part = "example"
            function.examples.append(line[len("Example: "):])
        elif part == "meaning":
            meaning.append(line)
        elif part == "fails":
            fails.append(line)
    function.meaning = " ".join(meaning)
    function.fails = " ".join(fails)


def read_library(path):
    purpose, comment, heading = [], [], ""
    library = Library(path.stem, "", [], [])
    for line in path.read_text(encoding="utf-8").splitlines():
        group = re.fullmatch(r"// == (.*) ==", line)
        definition = DEFINITION.match(line)
        if group:
            heading = group[1]
        elif line.startswith("//"):
            comment.append(line[2:].strip())
            continue
        elif definition:
            function = Function(definition[2], definition[1], read_parameters(definition[3]),
                                comment, heading)
            read_comment(function)
            library.functions.append(function)
        elif re.match(r'import "', line):
            library.imports.append(line.split('"')[1])
        if not purpose and comment:
            purpose = comment
        comment = []
    library.purpose = " ".join(purpose or comment)
    return library


def libraries():
    """All libraries with functions for programs, by name."""
    found = [read_library(path) for path in sorted((ROOT / "orlib").glob("*.orlib"))]
    return [library for library in found if any(f.is_public() for f in library.functions)]


def is_twin(function):
    """Whether this form only catches C++ numbers for a form of the same name with values."""
    return any(kind in ("int", "double", "const char*") for kind, _ in function.parameters)


def public_functions(library):
    return [f for f in library.functions if f.is_public() and not is_twin(f)]


def examples_program(library):
    """One program with the examples of all functions of a library, a handler for each."""
    handlers = ""
    for number, function in enumerate(public_functions(library)):
        body = "\n        ".join(function.examples)
        handlers += f"    on ok.example{number} {{\n        {body}\n    }}\n"
    return EXAMPLE_FRAME.replace("HANDLERS", handlers)


def cell(text):
    return text.replace("|", "\\|")


def function_text(function):
    lines = [f"### `{function.signature()}` → {function.result}", "", function.meaning]
    if function.changed():
        lines += ["", "Changes: " + ", ".join(f"`{name}`" for name in function.changed())
                  + " (give a variable)."]
    if function.fails:
        lines += ["", "On failure: " + function.fails]
    lines += ["", "```vorla", *function.examples, "```", ""]
    return "\n".join(lines)


def page_text(library):
    functions = public_functions(library)
    text = f"# {library.name}\n\n{library.purpose}\n\n"
    text += f"{len(functions)} functions; load them with `import {library.name}` or " \
            f"`--{library.name}`. All libraries: [index](index.md).\n\n"
    heading = None
    for function in functions:
        if function.heading != heading and function.heading:
            text += f"## {function.heading}\n\n"
        heading = function.heading
        text += function_text(function) + "\n"
    return text.rstrip("\n") + "\n"


def index_text(all_libraries):
    total = sum(len(public_functions(library)) for library in all_libraries)
    text = f"# Library functions\n\n{total} functions in {len(all_libraries)} libraries. "
    text += "`import normal` loads string, array, io, math and win32 at once. What to write in place " \
            "of what the language lacks is in [traps](traps.md).\n\n"
    text += "| Library | Functions | For |\n|---|---|---|\n"
    for library in all_libraries:
        text += f"| [{library.name}]({library.name}.md) | {len(public_functions(library))} " \
                f"| {cell(library.purpose)} |\n"
    text += "\n## All functions\n\n| Function | Result | Library | Meaning |\n|---|---|---|---|\n"
    rows = [(function, library) for library in all_libraries
            for function in public_functions(library)]
    rows.sort(key=lambda row: (row[0].name.lower(), len(row[0].parameters)))
    for function, library in rows:
        text += f"| `{function.signature()}` | {function.result} | " \
                f"[{library.name}]({library.name}.md) | {cell(function.meaning)} |\n"
    return text


def pages():
    """File name and text of each page."""
    all_libraries = libraries()
    made = {f"{library.name}.md": page_text(library) for library in all_libraries}
    made["index.md"] = index_text(all_libraries)
    return made


def out_of_date():
    made = pages()
    written = {path.name for path in PAGES.glob("*.md")} - {"traps.md"}
    wrong = [name for name, text in made.items()
             if name not in written or (PAGES / name).read_text(encoding="utf-8") != text]
    return sorted(wrong + list(written - set(made)))


def main():
    if sys.argv[1:] == ["--check"]:
        for name in out_of_date():
            print(f"docs/library/{name} is out of date: run docs/library/generate.py")
        return 1 if out_of_date() else 0
    for name, text in pages().items():
        (PAGES / name).write_text(text, encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main())
