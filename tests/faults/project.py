"""A project to be built while something goes wrong, and what must be true of it afterwards."""

import os
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "driver"))
from installation import Installation  # noqa: E402  (found beside the other process tests)

# Keeps what it was given, so that a test sees what a real g++ would have compiled.
GXX = """
mkdir -p seen
cp code_generation/main.cpp code_generation/import.hpp seen
echo program > app.exe
"""

SOURCE = 'import "tools";\nvorla Main { title = "Hi"; button ok { text = "OK"; } }\n' \
         "S.script { void run() { x = twice(2); } }\n"
LIBRARY = "int twice(int a) { return a + a; }\n"
NOTES = "what the user keeps beside the source\n"


class Project(unittest.TestCase):
    compiler = None

    def setUp(self):
        self.installed = Installation(self.compiler)
        self.installed.__enter__()
        self.addCleanup(self.installed.__exit__)
        self.installed.write_gxx(GXX)
        self.fresh()

    def fresh(self):
        """The project as it was before any build."""
        work = self.installed.path("work")
        for name in ("app.exe", "seen/main.cpp", "seen/import.hpp", "code_generation/main.cpp",
                     "code_generation/import.hpp"):
            if os.path.lexists(os.path.join(work, name)):
                os.remove(os.path.join(work, name))
        if os.path.isdir(os.path.join(work, "code_generation")):
            os.rmdir(os.path.join(work, "code_generation"))
        self.installed.write("work/app.vorla", SOURCE)
        self.installed.write("work/orlib/tools.orlib", LIBRARY)
        self.installed.write("work/notes.txt", NOTES)

    def path(self, *names):
        return self.installed.path("work", *names)

    def seen(self):
        """Both files as g++ got them, or nothing when it did not run."""
        if not self.installed.has("work/seen/main.cpp"):
            return None
        return self.installed.read("work/seen/main.cpp"), self.installed.read("work/seen/import.hpp")

    def check_user_files(self):
        for name, text in (("app.vorla", SOURCE), ("orlib/tools.orlib", LIBRARY),
                           ("notes.txt", NOTES)):
            self.assertEqual(self.installed.read("work/" + name).decode(), text)

    def check_no_debris(self):
        """Nothing beside the source but the folder of the two files, and in it nothing else."""
        self.assertLessEqual(set(os.listdir(self.path())),
                             {"app.vorla", "orlib", "notes.txt", "seen", "app.exe",
                              "code_generation"})
        self.assertEqual(os.listdir(self.path("orlib")), ["tools.orlib"])
        if self.installed.has("work/code_generation"):
            self.assertLessEqual(set(os.listdir(self.path("code_generation"))),
                                 {"main.cpp", "import.hpp"})


def run_tests():
    Project.compiler = os.path.abspath(sys.argv.pop(1))
    unittest.main()
