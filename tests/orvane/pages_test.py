#!/usr/bin/env python3
"""The pages of the messages: every id has one, every example prints exactly what its page shows, and
every corrected program prints nothing.

    pages_test.py PATH/TO/stage PATH/TO/docs/messages

A page has the sections "## Example" and "## Way out". In both, a block `vorla` is the program
example.vorla, and a block `orlib` is the file that its first line names. A block `sh` is the command,
when that is not `orvane check example.vorla`. The block without a language is what the command prints.
A way out without a program is one that no program shows.
"""

import os
import re
import shlex
import subprocess
import sys
import tempfile
import unittest

STAGE = PAGES = None
FENCE = re.compile(r"```(\w*)\n(.*?)```\n", re.S)
CHECK = "orvane check example.vorla"


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def page_names():
    return sorted(name[:-3] for name in os.listdir(PAGES) if name.endswith(".md"))


def orvane(command, folder):
    words = shlex.split(command)
    assert words[0] == "orvane", command
    environment = {**os.environ, "LC_ALL": "C.UTF-8"}
    done = subprocess.run([os.path.join(STAGE, "orvane"), *words[1:]], cwd=folder, env=environment,
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, text=True, timeout=120, check=False)
    return done.stdout, done.stderr, done.returncode


def blocks_of(section):
    """The blocks of a section by their languages."""
    found = {}
    for language, text in FENCE.findall(section):
        found.setdefault(language, text)
    return found


def sections_of(page):
    parts = re.split(r"^## (.*)\n", page, flags=re.M)
    return parts[0], dict(zip(parts[1::2], parts[2::2]))


def lay_out(blocks, folder):
    if "vorla" in blocks:
        with open(os.path.join(folder, "example.vorla"), "w", encoding="utf-8") as file:
            file.write(blocks["vorla"])
    if "orlib" in blocks:
        name = re.match(r"// (\S+\.orlib)\n", blocks["orlib"])[1]
        os.makedirs(os.path.join(folder, os.path.dirname(name)), exist_ok=True)
        with open(os.path.join(folder, name), "w", encoding="utf-8") as file:
            file.write(blocks["orlib"])


class Pages(unittest.TestCase):
    def message_ids(self):
        return {line.split()[0]: line.split()[1] for line in
                orvane("orvane explain", STAGE)[0].splitlines()}

    def test_every_message_has_a_page_and_every_page_a_message(self):
        self.assertEqual(page_names(), sorted(self.message_ids()))

    def test_pages_have_their_parts(self):
        for name in page_names():
            with self.subTest(page=name):
                front, sections = sections_of(read(os.path.join(PAGES, name + ".md")))
                self.assertRegex(front, rf"\A# {name}\n\n\S.{{40,}}")
                self.assertEqual(list(sections), ["Example", "Way out"])
                example = blocks_of(sections["Example"])
                self.assertTrue(set(example) <= {"vorla", "orlib", "sh", ""}, set(example))
                self.assertIn(f"[{name}]\n", example[""])

    def test_examples_print_what_their_pages_show(self):
        severities = self.message_ids()
        for name in page_names():
            with self.subTest(page=name), tempfile.TemporaryDirectory() as folder:
                _, sections = sections_of(read(os.path.join(PAGES, name + ".md")))
                blocks = blocks_of(sections["Example"])
                lay_out(blocks, folder)
                command = blocks.get("sh", CHECK).strip()
                self.assertEqual(orvane(command, folder)[0], blocks[""])
                self.assertRegex(blocks[""], rf"{severities[name]}: .* \[{name}\]\n")
                self.assertRegex(blocks[""], r"\n      = \S.+\n")

    def test_corrected_programs_print_nothing(self):
        for name in page_names():
            with self.subTest(page=name), tempfile.TemporaryDirectory() as folder:
                _, sections = sections_of(read(os.path.join(PAGES, name + ".md")))
                blocks = blocks_of(sections["Way out"])
                lay_out(blocks, folder)
                if "vorla" in blocks:
                    self.assertEqual(orvane(CHECK, folder), ("", "", 0))


if __name__ == "__main__":
    STAGE, PAGES = sys.argv[1:3]
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
