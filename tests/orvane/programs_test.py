#!/usr/bin/env python3
"""The command orvane in a complete installation, with the real C++ compiler.

    programs_test.py PATH/TO/stage
"""

import os
import shutil
import subprocess
import sys
import tempfile
import unittest

STAGE = None


class Programs(unittest.TestCase):
    def setUp(self):
        self.work = os.path.realpath(tempfile.mkdtemp(prefix="orvane-"))
        self.addCleanup(shutil.rmtree, self.work)

    def orvane(self, *arguments, status=0):
        done = subprocess.run([os.path.join(STAGE, "orvane"), *arguments], cwd=self.work,
                              env={**os.environ, "LC_ALL": "C.UTF-8"}, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                              timeout=300, check=False)
        self.assertEqual(done.returncode, status, done.stdout + done.stderr)
        return done

    def write(self, name, text):
        with open(os.path.join(self.work, name), "w", encoding="utf-8") as file:
            file.write(text)

    def test_templates_check_without_a_message_and_compile(self):
        for template in ("form", "notepad", "list", "empty"):
            with self.subTest(template=template):
                self.orvane("new", template, "--template", template)
                checked = self.orvane("check", template + ".vorla")
                self.assertEqual((checked.stdout, checked.stderr), ("", ""))
                self.assertEqual(self.orvane("build", template + ".vorla").stdout, "")
                self.assertTrue(os.path.exists(os.path.join(self.work, template + ".exe")))

    def test_doctor_finds_nothing_wrong(self):
        text = self.orvane("doctor").stdout
        self.assertNotIn("wrong", text)
        self.assertTrue(text.endswith("All is well.\n"))

    # The five mistakes are in the text of a function, of a class and of a handler; in front of two
    # of them stand letters of several bytes and wide ones.
    def test_errors_of_the_compiler_are_told_where_they_come_from(self):
        self.write("app.vorla", """class Point {
    public int px;
    public int move(int by) { px = by + distance1; return px; }
}

int twice(int n) {
    return n * faktor;
}

vorla Main {
    button go { x = 1; y = 2; width = 50; height = 20; text = "Go" }
}

Main.script {
    on go.click {
        string s = "äö" + "你好" + missing1;
        int a = twice(1, 2);
        int a = 3;
    }
}
""")
        result = self.orvane("build", "app.vorla", "--no-check", status=1)
        heads = [line for line in result.stdout.splitlines() if ": error: " in line]
        self.assertEqual(heads, [
            "app.vorla:3:41: error: nothing is called 'distance1' here [cpp-error]",
            "app.vorla:7:16: error: nothing is called 'faktor' here [cpp-error]",
            "app.vorla:16:34: error: nothing is called 'missing1' here [cpp-error]",
            "app.vorla:17:17: error: too many arguments for 'twice' [cpp-error]",
            "app.vorla:18:13: error: 'a' is declared twice [cpp-error]"])
        self.assertEqual(result.stderr.splitlines()[-1], "5 errors")


if __name__ == "__main__":
    STAGE = sys.argv[1]
    unittest.main(argv=[sys.argv[0], *sys.argv[2:]])
