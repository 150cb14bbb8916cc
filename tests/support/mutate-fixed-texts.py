#!/usr/bin/env python3
"""Shows that the tests notice a change of any fixed text of the generated programs, and of the messages
of the checks.

    mutate-fixed-texts.py DIRECTORY [--count 40] [--seed 1]

DIRECTORY holds golden_test, unit_codegen and orvane of a build. For each of a sample of the texts in
src/codegen, one letter of the text is exchanged in copies of these programs, and one of them must
fail. Texts that the compiler has turned into instructions or shares among places are not found in a
program exactly once, and no candidates; those of fewer than 12 characters neither, nor those that a
unit test spells as a whole: the linker keeps one copy for both, which changes in both.

In the same way the messages: with a letter exchanged in its text or hint, a message must no longer be
printed as its page in docs/messages shows it. Pages whose command is a build are left out, and texts
that a unit test asserts as a whole: those that no page shows.
"""

import argparse
import pathlib
import random
import re
import shutil
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True  # the source tree stays clean
ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests/orvane"))

import pages_test as pages  # noqa: E402

SHORTEST = 12
PROGRAMS = ("golden_test", "unit_codegen")
RAW_TEXT = re.compile(r'R"\((.*?)\)"', re.DOTALL)
TEXT = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
PLACEHOLDER = re.compile(r"\$\w+\$")


# ---- The generated programs ----

def list_texts(source):
    """The pieces of the file's literals that stand in the program as they are written."""
    code = "\n".join(line for line in source.read_text(encoding="utf-8").splitlines()
                     if not line.lstrip().startswith(("//", "#include")))
    for raw in RAW_TEXT.findall(code):
        for line in raw.splitlines():
            yield from PLACEHOLDER.split(line)
    for text in TEXT.findall(RAW_TEXT.sub("", code)):
        yield from re.split(r"\\.", text)


def texts_of_unit_tests(stage):
    return {text for test in (ROOT / "tests/unit" / stage).glob("*.*")
            for text in TEXT.findall(test.read_text(encoding="utf-8"))}


def candidates(program):
    found = {}
    shared = texts_of_unit_tests("codegen")
    for source in sorted((ROOT / "src/codegen").glob("*.cpp")):
        for text in list_texts(source):
            piece = text.strip()
            if len(piece) >= SHORTEST and piece not in shared and re.search("[a-z]", piece):
                found.setdefault(piece, source.name)
    return [(piece, name) for piece, name in found.items() if program.count(piece.encode()) == 1]


def mutate(program, piece, chance):
    """The program with one letter of the text exchanged, and the text as it is then."""
    places = [at for at, letter in enumerate(piece) if letter.isascii() and letter.islower()]
    at = chance.choice(places)
    other = "q" if piece[at] != "q" else "z"
    changed = piece[:at] + other + piece[at + 1:]
    return program.replace(piece.encode(), changed.encode()), changed


def notices(directory, name, program):
    copy = pathlib.Path(directory) / name
    copy.write_bytes(program)
    copy.chmod(0o755)
    result = subprocess.run([copy, "--gtest_fail_fast", "--gtest_brief=1"], cwd=ROOT,
                            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                            stderr=subprocess.DEVNULL, check=False)
    copy.unlink()
    return result.returncode != 0


# ---- The messages ----

MESSAGE = re.compile(r'^MESSAGE\(\w+, "([\w-]+)", \w+, "((?:[^"\\]|\\.)*)", "((?:[^"\\]|\\.)*)"', re.M)


def example_of(message):
    """The blocks of the page's example, or none when a build prints it."""
    text = (ROOT / "docs/messages" / f"{message}.md").read_text(encoding="utf-8")
    blocks = pages.blocks_of(pages.sections_of(text)[1]["Example"])
    return None if "orvane build" in blocks.get("sh", "") else blocks


def stored(text):
    """A literal of the program as a whole: the pages in the program show the same texts."""
    return b"\0" + text.replace('\\"', '"').encode() + b"\0"


def message_candidates(program):
    found = {}
    asserted = "\n".join(texts_of_unit_tests("check"))
    for table in sorted((ROOT / "src/check").glob("messages_*.def")):
        for message, *texts in MESSAGE.findall(table.read_text(encoding="utf-8")):
            for text in texts:
                if len(text) >= SHORTEST and text not in asserted and program.count(stored(text)) == 1:
                    found.setdefault(text, message)
    return [(piece, message) for piece, message in found.items() if example_of(message)]


def prints_example(stage, message):
    blocks = example_of(message)
    pages.STAGE = stage
    with tempfile.TemporaryDirectory(prefix="orvane-") as folder:
        pages.lay_out(blocks, folder)
        return pages.orvane(blocks.get("sh", pages.CHECK).strip(), folder)[0] == blocks[""]


def mutate_messages(directory, count, chance):
    program = (directory / "orvane").read_bytes()
    pool = message_candidates(program)
    sample = chance.sample(pool, min(count, len(pool)))
    noticed = 0
    with tempfile.TemporaryDirectory(prefix="orvane-") as stage:
        (pathlib.Path(stage) / "orlib").symlink_to(ROOT / "orlib")
        copy = pathlib.Path(stage) / "orvane"
        for piece, message in sample:
            copy.write_bytes(program)
            copy.chmod(0o755)
            if not prints_example(stage, message):
                sys.exit(f"{message}: not as its page shows it, without a change")
            _, changed = mutate(b"", piece, chance)
            copy.write_bytes(program.replace(stored(piece), stored(changed)))
            if prints_example(stage, message):
                print(f"NOT NOTICED: {message}: {changed}", flush=True)
            else:
                noticed += 1
    print(f"messages: {noticed} of {len(sample)} changes noticed, of {len(pool)} texts")
    return bool(sample) and noticed == len(sample)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("directory", type=pathlib.Path)
    parser.add_argument("--count", type=int, default=40)
    parser.add_argument("--seed", type=int, default=1)
    options = parser.parse_args()
    programs = {name: (options.directory / name).read_bytes() for name in PROGRAMS}
    chance = random.Random(options.seed)
    pool = candidates(programs["golden_test"])
    sample = chance.sample(pool, min(options.count, len(pool)))
    noticed = 0
    with tempfile.TemporaryDirectory(prefix="orvane-") as directory:
        for name in PROGRAMS:
            if notices(directory, name, programs[name]):
                sys.exit(f"{name} fails without a change")
        for piece, source in sample:
            seed = chance.random()
            for name in PROGRAMS:
                mutant, changed = mutate(programs[name], piece, random.Random(seed))
                if mutant != programs[name] and notices(directory, name, mutant):
                    noticed += 1
                    break
            else:
                print(f"NOT NOTICED: {source}: {changed}", flush=True)
    print(f"generated texts: {noticed} of {len(sample)} changes noticed, of {len(pool)} texts")
    all_messages = mutate_messages(options.directory, options.count, chance)
    sys.exit(0 if noticed == len(sample) and all_messages else 1)


if __name__ == "__main__":
    main()
