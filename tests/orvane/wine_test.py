#!/usr/bin/env python3
"""orvane.exe under Wine, with a stand-in in the place of g++.exe and of the built program.

    wine_test.py PATH/TO/orvane.exe PATH/TO/orvanec.exe PATH/TO/gxx_stand_in.exe
"""

import json
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

ORVANE = ORVANEC = STAND_IN = None
WINE_RUN = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "driver", "wine_run.sh")


class WineTest(unittest.TestCase):
    def setUp(self):
        self.root = os.path.realpath(tempfile.mkdtemp(prefix="orvane-"))
        self.addCleanup(shutil.rmtree, self.root)
        self.install = os.path.join(self.root, "install")
        self.work = os.path.join(self.root, "Größe 大")
        os.makedirs(self.install)
        os.makedirs(self.work)
        for program in (ORVANE, ORVANEC):
            shutil.copy(program, self.install)
        shutil.copy(STAND_IN, os.path.join(self.install, "g++.exe"))
        self.write("app.vorla", "vorla Main { }\n")

    def write(self, name, text):
        with open(os.path.join(self.work, name), "w", encoding="utf-8", newline="") as file:
            file.write(text)

    def orvane(self, *arguments, status=0, stdin=b""):
        program = os.path.join(self.install, "orvane.exe")
        done = subprocess.run([WINE_RUN, program, *arguments], cwd=self.work, input=stdin,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=120,
                              check=False)
        self.out = done.stdout.decode().replace("\r\n", "\n")
        self.err = done.stderr.decode().replace("\r\n", "\n")
        self.assertEqual(done.returncode, status, self.out + self.err)

    def test_check_prints_lines_with_cr_lf_and_letters_of_all_kinds(self):
        self.write("größe.vorla", "vorla Main {\r\n    title = \"ä大\"\r\n    on {\r\n")
        self.orvane("check", "größe.vorla", status=1)
        self.assertRegex(self.out, r"\Agröße\.vorla:\d+:\d+: (error|warning): .* \[[a-z-]+\]\n +\d+ \|")
        self.orvane("check", "--format=sarif", "größe.vorla", status=1)
        self.assertEqual(json.loads(self.out)["version"], "2.1.0")
        self.orvane("check", "-", stdin=b"vorla Main {\r\n", status=1)
        self.assertTrue(self.out.startswith("<stdin>:"))

    def test_wrong_use_ends_with_2(self):
        self.orvane("chekc", status=2)
        self.assertIn("Did you mean 'check'?", self.err)

    def test_new_writes_once(self):
        self.orvane("new", "größe")
        with open(os.path.join(self.work, "größe.vorla"), encoding="utf-8") as file:
            self.assertIn('    title = "größe"\n', file.read())
        self.orvane("new", "größe", status=1)

    def test_build_tells_its_steps(self):
        self.orvane("build", "app.vorla")
        self.assertTrue(self.err.endswith("app.vorla: compiling\napp.vorla: built app.exe\n"))

    def test_compiler_that_fails_ends_with_1(self):
        with open(os.path.join(self.install, "gxx.code"), "w", encoding="ascii") as file:
            file.write("1")
        self.orvane("build", "app.vorla", status=1)
        self.assertIn("the C++ compiler failed", self.out)

    # The stand-in for g++ makes no program: the one that lies there is started.
    def test_run_passes_arguments_and_exit_status(self):
        shutil.copy(STAND_IN, os.path.join(self.work, "app.exe"))
        with open(os.path.join(self.work, "gxx.code"), "w", encoding="ascii") as file:
            file.write("7")
        self.orvane("run", "app.vorla", "--", "a b", 'c"d', "e\\", "大", status=7)
        with open(os.path.join(self.work, "gxx.log"), encoding="utf-8") as file:
            self.assertTrue(file.read().endswith('app.exe" "a b" "c\\"d" "e\\\\" "大"'))

    def test_doctor_sees_that_the_compiler_makes_nothing(self):
        self.orvane("doctor", status=1)
        self.assertIn("does not compile a trivial program", self.out)
        self.assertIn("ok     write access: ", self.out)


if __name__ == "__main__":
    ORVANE, ORVANEC, STAND_IN = sys.argv[1:4]
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
