"""Checks the comments of the library functions and the pages made of them.

    library_pages.py comments|pages|examples --compiler ORVANEC --source ROOT --work FOLDER
"""

import argparse
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

sys.dont_write_bytecode = True  # the source tree stays clean

from stage import Stage


def load_generator(source):
    sys.path.insert(0, str(source / "docs" / "library"))
    import generate
    return generate


def recognised_functions(stage, work, library):
    """The functions that the compiler itself finds in a library file, without those of its imports."""
    folder = work / library.name
    folder.mkdir(parents=True, exist_ok=True)
    (folder / "empty.vorla").write_text(f"import {library.name}\nvorla Empty {{ }}\n")
    _, output = stage.compile("empty.vorla", [], folder)
    names = re.findall(r"^  function: (\w+)$", output, re.MULTILINE)
    imported = set()
    for name in library.imports:
        imported |= {f.name for f in read_other(stage, name)}
    return [name for name in names if name not in imported]


def read_other(stage, name):
    """The functions of an imported file and of its own imports."""
    library = stage.generator.read_library(stage.generator.ROOT / "orlib" / name)
    functions = list(library.functions)
    for other in library.imports:
        functions += read_other(stage, other)
    return functions


def check_comments(stage, work):
    complaints = []
    for library in stage.generator.libraries():
        if not library.purpose:
            complaints.append(f"{library.name}: does not say what it is for")
        for function in stage.generator.public_functions(library):
            place = f"{library.name}: {function.signature()}"
            if not function.meaning:
                complaints.append(f"{place} has no meaning")
            if not function.examples:
                complaints.append(f"{place} has no example")
            if not any(re.search(rf"\b{function.name}\s*\(", line) for line in function.examples):
                complaints.append(f"{place} is not called by its example")
        defined = [f.name for f in library.functions]
        recognised = recognised_functions(stage, work, library)
        if recognised != defined:
            odd = set(recognised) ^ set(defined)
            complaints.append(f"{library.name}: {len(defined)} definitions, but the compiler "
                              f"recognises {len(recognised)}; differing: {sorted(odd)}")
    return complaints


def check_pages(stage, work):
    complaints = [f"docs/library/{name} is out of date: run docs/library/generate.py"
                  for name in stage.generator.out_of_date()]
    # The check must notice a page that differs and one that no library has.
    pages = stage.generator.pages()
    if "index.md" not in pages or len(pages) < 20:
        complaints.append(f"only {len(pages)} pages are made")
    # A reference that is only read is a value to the reader of a page; nothing is said to change.
    made = stage.generator.Function("f", "int", stage.generator.read_parameters(
        "const Value& list, Value& other, value x, y, const char* text"), [])
    kinds = [kind for kind, _ in made.parameters]
    if kinds != ["value", "Value&", "value", "value", "const char*"] or made.changed() != ["other"]:
        complaints.append(f"parameters are read as {made.parameters}")
    if made.signature() != "f(list, other, x, y, text)":
        complaints.append(f"a signature is shown as {made.signature()}")
    return complaints


def compile_examples(stage, work, library):
    """The examples of one library, in one program."""
    folder = work / f"examples_{library.name}"
    folder.mkdir(parents=True, exist_ok=True)
    imports = "".join(f"import {other.name}\n" for other in stage.generator.libraries())
    program = imports + stage.generator.examples_program(library)
    (folder / "examples.vorla").write_text(program, encoding="utf-8")
    status, output = stage.compile("examples.vorla", [], folder)
    if status == 0 and "FAIL" not in output:
        return None
    shown = [line for line in output.splitlines()
             if "function: " not in line and "Loading: " not in line]
    return f"the examples of {library.name} do not compile\n" + "\n".join(shown[-40:])


def check_examples(stage, work):
    stage.check_only()
    with ThreadPoolExecutor(2) as pool:
        outcomes = pool.map(lambda library: compile_examples(stage, work, library),
                            stage.generator.libraries())
        return [outcome for outcome in outcomes if outcome]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("part", choices=["comments", "pages", "examples"])
    parser.add_argument("--compiler", required=True, type=Path)
    parser.add_argument("--source", required=True, type=Path)
    parser.add_argument("--work", required=True, type=Path)
    options = parser.parse_args()
    work = options.work.resolve()
    stage = Stage(options.compiler, options.source, work / "stage")
    stage.generator = load_generator(options.source.resolve())
    if options.part == "comments":
        # Only what the compiler says about the libraries is looked at.
        stage.translate_only()
    check = {"comments": check_comments, "pages": check_pages, "examples": check_examples}
    complaints = check[options.part](stage, work)
    for complaint in complaints:
        print(complaint)
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
