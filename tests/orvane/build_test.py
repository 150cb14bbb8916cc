#!/usr/bin/env python3
"""The commands build and run, with shell scripts in the places of g++ and Wine.

    build_test.py PATH/TO/orvane PATH/TO/orvanec
"""

import json
import os
import signal
import sys
import time

from workplace import BAD, GOOD, CommandTest, Session, main

PROGRAM = """import shapes

vorla Main {
    button go { x = 1; y = 2; width = 50; height = 20; text = "Go" }
}

Main.script {
    on go.click {
        int total = area(1, 2) + subtotal;
    }
}
"""

LIBRARY = """// Areas.
int area(int width, int height) {
    int result = width;
    return result * hight;
}
"""

HINT = "      = Add --verbose to read what the C++ compiler says itself.\n"

# Says that a name is missing, at the line and column where it stands in a generated file.
COMPLAINS = """
complain() { # FILE NAME
    awk -v file="$1" -v name="$2" 'index($0, name) {
        print file ":" NR ":" index($0, name) ": error: '"'"'" name "'"'"' was not declared in this scope"
        exit
    }' "$1" >&2
}
"""


class BuildTest(CommandTest):
    def setUp(self):
        super().setUp()
        self.write_gxx()
        self.write("app.vorla", GOOD)


class Build(BuildTest):
    def test_makes_the_program_and_tells_each_step_in_a_pipe(self):
        result = self.orvane("build", "app.vorla")
        self.assertEqual(result.out, "")
        self.assertEqual(result.err, "app.vorla: checking\napp.vorla: reading\n"
                                     "app.vorla: translating\napp.vorla: compiling\n"
                                     "app.vorla: built app.exe\n")
        self.assertTrue(os.path.exists(self.path("app.exe")))

    def test_progress_on_a_terminal_is_one_line(self):
        shown = self.on_terminal("build", "app.vorla", NO_COLOR="1")
        self.assertEqual(shown, "app.vorla: checking\r\x1b[Kapp.vorla: reading\r\x1b[K"
                                "app.vorla: translating\r\x1b[Kapp.vorla: compiling\r\x1b[K"
                                "app.vorla: built app.exe\n")

    def test_errors_stop_the_build(self):
        self.write("app.vorla", BAD)
        self.write_gxx("touch started\n")
        result = self.orvane("build", "app.vorla", status=1)
        self.assertIn("error: ", result.out)
        self.assertTrue(result.err.endswith("1 error\n"))
        self.assertEqual(sorted(os.listdir(self.work)), ["app.vorla"])

    def test_without_checks_the_compilers_own_message_is_told(self):
        self.write("app.vorla", BAD)
        result = self.orvane("build", "app.vorla", "--no-check", status=1)
        self.assertEqual(result.out, "")
        self.assertRegex(result.err, r"app\.vorla: error: .* at line \d+\n")

    def test_all_files_are_built_also_behind_one_that_fails(self):
        self.write("bad.vorla", BAD)
        self.write("two.vorla", GOOD)
        self.orvane("build", "app.vorla", "bad.vorla", "two.vorla", status=1)
        self.assertTrue(os.path.exists(self.path("app.exe")))
        self.assertTrue(os.path.exists(self.path("two.exe")))

    def test_options_of_the_compiler_reach_it(self):
        self.orvane("build", "app.vorla", "--keep-cpp", "--debug")
        self.assertIn("DEBUG SUPPORT", self.read("code_generation/import.hpp"))

    def test_gives_the_bytes_that_orvanec_gives(self):
        self.orvane("build", "app.vorla", "--keep-cpp")
        ours = self.read("code_generation/main.cpp"), self.read("code_generation/import.hpp")
        self.assertEqual(os.system(f"cd {self.work} && {self.install}/orvanec app.vorla --keep-cpp "
                                   "> /dev/null"), 0)
        theirs = self.read("code_generation/main.cpp"), self.read("code_generation/import.hpp")
        self.assertEqual(ours, theirs)

    def test_verbose_shows_what_both_compilers_print(self):
        self.write_gxx("echo a remark >&2\n" + "")
        text = self.orvane("build", "app.vorla", "--verbose").err
        self.assertIn("=== Orvane Compiler v6.0.0 ===\n[1/7] Reading source file: app.vorla\n", text)
        self.assertTrue(text.endswith("What the C++ compiler says:\na remark\n"))

    def test_missing_compiler_is_an_error(self):
        os.remove(os.path.join(self.install, "g++.exe"))
        self.assertTrue(self.orvane("build", "app.vorla", status=1).err.endswith(
            "app.vorla: error: g++ not found in any known location.\n"))

    def test_missing_library_is_told(self):
        text = self.orvane("build", "app.vorla", "--math").err
        self.assertIn("app.vorla: warning: math.orlib not found\n", text)

    def test_json_has_the_errors_and_progress_stays_apart(self):
        self.write("app.vorla", BAD)
        report = json.loads(self.orvane("build", "app.vorla", "--format=json", status=1).out)
        self.assertEqual(report["errors"], 1)


class RefusedByTheCompiler(BuildTest):
    def setUp(self):
        super().setUp()
        self.write("app.vorla", PROGRAM)
        self.write("orlib/shapes.orlib", LIBRARY)

    def refused(self, script, *options):
        self.write_gxx(COMPLAINS + script + "exit 1\n")
        return self.orvane("build", "app.vorla", "--no-check", *options, status=1)

    def test_error_is_told_at_the_expression_it_comes_from(self):
        result = self.refused("complain $PWD/code_generation/main.cpp subtotal\n")
        self.assertEqual(result.out,
                         "app.vorla:9:34: error: nothing is called 'subtotal' here [cpp-error]\n"
                         "    9 |         int total = area(1, 2) + subtotal;\n"
                         "      |                                  ^~~~~~~~\n" + HINT)
        self.assertNotIn("code_generation", result.err)

    def test_error_in_a_library_body_is_told_in_its_file(self):
        result = self.refused("complain $PWD/code_generation/import.hpp hight\n")
        self.assertEqual(result.out,
                         "orlib/shapes.orlib:4:21: error: nothing is called 'hight' here "
                         "[library-error]\n"
                         "    4 |     return result * hight;\n"
                         "      |                     ^~~~~\n"
                         "      = The library function does not compile; correct it, or call another "
                         "one.\n")

    def test_original_words_stand_behind_verbose(self):
        result = self.refused("complain $PWD/code_generation/main.cpp subtotal\n", "--verbose")
        self.assertRegex(result.err, "What the C\\+\\+ compiler says:\n.*main.cpp:\\d+:\\d+: error: "
                                     "'subtotal' was not declared in this scope\n")

    def test_one_line_is_told_once(self):
        result = self.refused("complain $PWD/code_generation/main.cpp subtotal\n"
                              "complain $PWD/code_generation/main.cpp area\n")
        self.assertEqual(result.out.count("error:"), 1)
        self.assertIn("1 error\n", result.err)

    def test_error_without_a_place_is_told_with_the_original_words(self):
        result = self.refused("echo 'g++.exe: the disk is full' >&2\n")
        self.assertTrue(result.out.startswith(
            "app.vorla:1:1: error: the C++ compiler failed: it says nothing about the program "))
        self.assertIn("What the C++ compiler says:\ng++.exe: the disk is full\n", result.err)

    def test_missing_function_of_the_linker_is_told_at_its_call(self):
        result = self.refused("echo \"ld: x.o:main.cpp:(.text+0x1): undefined reference to "
                              "\\`area(int, int)'\" >&2\n")
        self.assertTrue(result.out.startswith(
            "app.vorla:9:21: error: nothing is called 'area' [cpp-error]\n"))

    def test_source_that_changed_meanwhile_gives_no_wrong_place(self):
        result = self.refused("complain $PWD/code_generation/main.cpp subtotal\n"
                              "sed -i 's/Go/Stop/' app.vorla\n")
        self.assertTrue(result.out.startswith("app.vorla:1:1: error: the C++ compiler failed: "
                                              "nothing is called 'subtotal' here"))

    def test_compiler_ended_by_a_signal_is_a_failure(self):
        result = self.refused("kill -9 $$\n")
        self.assertIn("the C++ compiler failed", result.out)


class Run(BuildTest):
    def test_passes_arguments_and_exit_status(self):
        self.write("program", 'echo "$# $1 $2"; exit 7\n')
        result = self.orvane("run", "app.vorla", "--", "a b", "--normal", status=7)
        self.assertEqual(result.out, "2 a b --normal\n")

    def test_standard_streams_are_the_programs(self):
        self.write("program", "cat\n")
        self.assertEqual(self.orvane("run", "app.vorla", stdin=b"x\ny").out, "x\ny")

    def test_does_not_start_what_was_not_built(self):
        self.write("program", "touch started\n")
        self.orvane("run", "app.vorla")
        os.remove(self.path("started"))
        self.write("app.vorla", BAD)
        result = self.orvane("run", "app.vorla", status=1)
        self.assertEqual(result.out, "")
        self.assertFalse(os.path.exists(self.path("started")))

    def test_says_so_without_wine(self):
        del self.environment["ORVANE_WINE"]
        self.environment["PATH"] = self.root
        if os.path.exists("/usr/lib/wine/wine64"):
            self.environment["ORVANE_WINE"] = os.path.join(self.root, "absent")
        result = self.orvane("run", "app.vorla", status=1)
        self.assertRegex(result.err, "Wine|cannot be started")

    def test_interrupt_reaches_the_program_whose_status_counts(self):
        self.write("program", "trap 'exit 5' INT; touch started; while :; do sleep 0.05; done\n")
        session = Session(self, "run", "app.vorla", own_group=True)
        for _ in range(600):
            if os.path.exists(self.path("started")):
                break
            time.sleep(0.05)
        os.killpg(session.process.pid, signal.SIGINT)
        self.assertEqual(session.process.wait(30), 5)


if __name__ == "__main__":
    main("__main__", sys.argv)
