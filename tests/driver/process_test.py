#!/usr/bin/env python3
"""The compiler as a process: exit statuses, pipes, files and the g++ of its installation.

    process_test.py PATH/TO/orvanec
"""

import os
import signal
import sys
import unittest

from installation import Installation

COMPILER = None
BANNER = "=== Orvane Compiler v6.0.0 ===\n"
LIBRARIES = "-luser32 -lgdi32 -lkernel32 -lcomctl32 -lcomdlg32 -lshell32 -ladvapi32 -mwindows"

# Writes each argument on a line of its own beside the sources.
DUMP_ARGUMENTS = 'printf "%s\\n" "$0" "$@" > arguments\n'


class ProcessTest(unittest.TestCase):
    install = "install"

    def setUp(self):
        self.installed = Installation(COMPILER, self.install)
        self.installed.__enter__()
        self.addCleanup(self.installed.__exit__)
        self.installed.write_gxx("exit 0\n")
        self.installed.write("work/app.vorla", "vorla Main { }\n")

    def path(self, *names):
        return self.installed.path(*names)

    def build(self, *arguments, status=0, work="work"):
        """Runs the compiler, checks its status and gives back what it printed."""
        result = self.installed.run(*arguments, work=work)
        output = result.stdout.decode()
        self.assertEqual(result.returncode, status, output + result.stderr.decode())
        if status >= 0:
            self.assertEqual(result.stderr, b"")
        return output

    def arguments(self):
        return self.installed.read("work/arguments").decode().split("\n")[:-1]


class Status(ProcessTest):
    def test_complete_build_ends_with_0(self):
        output = self.build("app.vorla")
        self.assertTrue(output.startswith(BANNER + "[1/7] Reading source file: app.vorla\n"))
        self.assertTrue(output.endswith("\n=== Build complete! ===\n"))

    def test_help_ends_with_0_and_reads_nothing(self):
        output = self.build("--help", "absent.vorla")
        self.assertTrue(output.startswith(BANNER + "Orvane Compiler v6.0.0\nUsage: "))

    def test_rejected_arguments_end_with_1(self):
        for arguments in ([], ["--foo"], ["a", "b"], ["--"], [""]):
            with self.subTest(arguments=arguments):
                output = self.build(*arguments, status=1)
                self.assertTrue(output.startswith(BANNER + "Error: "))
                self.assertTrue(output.endswith("  --help         Show this help message\n"))

    def test_missing_source_ends_with_1(self):
        output = self.build("absent.vorla", status=1)
        self.assertEqual(output, BANNER + "[1/7] Reading source file: absent.vorla\n"
                                          "Error: Cannot open 'absent.vorla'\n")

    def test_unreadable_source_ends_with_1(self):
        self.installed.write("work/app.vorla", "vorla Main { }", 0o000)
        self.assertTrue(self.build("app.vorla", status=1)
                        .endswith("Error: Cannot open 'app.vorla'\n"))

    def test_directory_as_source_ends_with_1(self):
        self.assertTrue(self.build(".", status=1).endswith("Error: Cannot open '.'\n"))

    def test_source_below_a_file_ends_with_1(self):
        self.assertTrue(self.build("app.vorla/x", status=1)
                        .endswith("Error: Cannot open 'app.vorla/x'\n"))

    def test_name_too_long_ends_with_1(self):
        name = "n" * 10000
        self.assertTrue(self.build(name, status=1).endswith(f"Error: Cannot open '{name}'\n"))


class SyntaxErrors(ProcessTest):
    EXPECTED = (BANNER + "[1/7] Reading source file: bad.vorla\n"
                "  Size: 7 bytes\n"
                "[2/7] Lexing...\n"
                "  Tokens: 3\n"
                "[3/6] Parsing...\n"
                "[PARSER ERROR] Expected 44, got 69 at line 1: Expected vorla name\n")

    def setUp(self):
        super().setUp()
        self.installed.write("work/bad.vorla", "vorla {")

    def test_end_abnormally_with_everything_printed_to_a_pipe(self):
        self.assertEqual(self.build("bad.vorla", status=-signal.SIGABRT), self.EXPECTED)

    def test_end_abnormally_with_everything_printed_to_a_file(self):
        with open(self.path("output"), "wb") as output:
            result = self.installed.run("bad.vorla", stdout=output)
        self.assertEqual(result.returncode, -signal.SIGABRT)
        self.assertEqual(self.installed.read("output").decode(), self.EXPECTED)

    def test_make_no_output_directory(self):
        self.build("bad.vorla", status=-signal.SIGABRT)
        self.assertFalse(self.installed.has("work/code_generation"))


class Gxx(ProcessTest):
    def test_receives_every_argument_exactly(self):
        self.installed.write_gxx(DUMP_ARGUMENTS)
        self.installed.write("install/resource.o", "")
        self.build("app.vorla", "--debug")
        self.assertEqual(self.arguments(), [
            self.path("install/g++.exe"), "-std=c++17", "-Og", "-g", "-finput-charset=UTF-8",
            self.path("work/code_generation/main.cpp"), self.path("install/resource.o"),
            "-o", self.path("work/app.exe"), "-I" + self.path("include"),
            "-I" + self.path("orlib"), "-I" + self.path("parameter"), *LIBRARIES.split(" ")])

    def test_command_is_printed_as_one_line(self):
        output = self.build("app.vorla")
        self.assertIn(f'  Command: "{self.path("install/g++.exe")}" -std=c++17 -Og '
                      f'-finput-charset=UTF-8 "{self.path("work/code_generation/main.cpp")}" '
                      f'-o "{self.path("work/app.exe")}" -I"{self.path("include")}" '
                      f'-I"{self.path("orlib")}" -I"{self.path("parameter")}" {LIBRARIES}\n',
                      output)

    def test_output_stands_between_the_command_and_its_result(self):
        self.installed.write_gxx("echo from gxx\n")
        output = self.build("app.vorla")
        self.assertIn(LIBRARIES + "\nfrom gxx\n  Compiled OK\n", output)

    def test_errors_reach_standard_error(self):
        self.installed.write_gxx("echo wrong >&2\nexit 1\n")
        result = self.installed.run("app.vorla")
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr, b"wrong\n")

    def test_inherits_directory_and_environment(self):
        self.installed.write_gxx('printf "%s" "$PWD:$ORVANE_PROBE" > probe\n')
        os.environ["ORVANE_PROBE"] = "seen"
        self.addCleanup(os.environ.pop, "ORVANE_PROBE")
        self.build("app.vorla")
        self.assertEqual(self.installed.read("work/probe").decode(), self.path("work") + ":seen")

    def test_failure_ends_with_1_and_keeps_the_files(self):
        self.installed.write_gxx("exit 3\n")
        output = self.build("app.vorla", status=1)
        self.assertTrue(output.endswith("\nError: Compilation failed (exit code 3).\n"))
        self.assertTrue(self.installed.has("work/code_generation/main.cpp"))
        self.assertTrue(self.installed.has("work/code_generation/import.hpp"))

    def test_end_by_a_signal_is_a_failure(self):
        self.installed.write_gxx("kill -KILL $$\n")
        output = self.build("app.vorla", status=1)
        self.assertTrue(output.endswith("\nError: Compilation failed (exit code 137).\n"))

    def test_that_cannot_start_ends_with_1(self):
        attempts = {"not executable": ("#!/bin/sh\nexit 0\n", 0o644),
                    "no program": ("just text\n", 0o755),
                    "a Windows program": (b"MZ\x90\x00", 0o755),
                    "empty": ("", 0o755)}
        for name, (content, mode) in attempts.items():
            with self.subTest(name):
                self.installed.write("install/g++.exe", content, mode)
                output = self.build("app.vorla", status=1)
                self.assertTrue(output.endswith(LIBRARIES + "\nError: Failed to start compiler.\n"))
                self.assertTrue(self.installed.has("work/code_generation/main.cpp"))

    def test_that_is_nowhere_ends_with_1(self):
        os.remove(self.path("install/g++.exe"))
        output = self.build("app.vorla", status=1)
        self.assertTrue(output.endswith("[6/6] Compiling with g++...\n"
                                        "Error: g++ not found in any known location.\n"))
        self.assertTrue(self.installed.has("work/code_generation/main.cpp"))

    def test_is_not_searched_in_the_path(self):
        os.remove(self.path("install/g++.exe"))
        self.installed.write_gxx("exit 0\n", "elsewhere/g++.exe")
        before = os.environ["PATH"]
        os.environ["PATH"] = self.path("elsewhere") + ":" + before
        self.addCleanup(os.environ.__setitem__, "PATH", before)
        self.assertIn("g++ not found", self.build("app.vorla", status=1))

    def test_is_found_in_five_places_in_order(self):
        places = ["work/tools/bin", "tools/bin", "install/tools/bin", ".", "install"]
        os.remove(self.path("install/g++.exe"))
        for place in places:
            with self.subTest(place):
                self.installed.write_gxx(DUMP_ARGUMENTS, os.path.join(place, "g++.exe"))
                self.build("app.vorla")
                self.assertEqual(self.arguments()[0],
                                 os.path.normpath(self.path(place, "g++.exe")))

    def test_in_a_tools_directory_has_its_headers_beside_its_parent(self):
        os.remove(self.path("install/g++.exe"))
        self.installed.write_gxx(DUMP_ARGUMENTS, "install/tools/bin/g++.exe")
        self.installed.write("install/tools/resource.o", "")
        self.build("app.vorla")
        arguments = self.arguments()
        self.assertIn("-I" + self.path("install/tools/include"), arguments)
        self.assertIn("-I" + self.path("install/tools/orlib"), arguments)
        self.assertIn("-I" + self.path("install/tools/parameter"), arguments)
        self.assertIn(self.path("install/tools/resource.o"), arguments)


class InstallationBelowTools(ProcessTest):
    install = "devtools/deep/bin"

    def test_counts_as_a_tools_directory(self):
        os.remove(self.path(self.install, "g++.exe"))
        self.installed.write_gxx(DUMP_ARGUMENTS, "devtools/deep/g++.exe")
        self.build("app.vorla")
        self.assertEqual(self.arguments()[0], self.path("devtools/deep/g++.exe"))
        self.assertIn("-I" + self.path("devtools/include"), self.arguments())


class InstallationFarDown(ProcessTest):
    install = "/".join(["d" * 100] * 3)

    def test_looks_in_the_working_directory(self):
        self.assertIn("g++ not found", self.build("app.vorla", status=1))
        self.installed.write_gxx(DUMP_ARGUMENTS, "work/g++.exe")
        self.build("app.vorla")
        self.assertEqual(self.arguments()[0], self.path("work/g++.exe"))


class InstallationWithOddNames(ProcessTest):
    install = "My Programs/größe/编译器"

    def test_works(self):
        self.installed.write_gxx(DUMP_ARGUMENTS)
        self.installed.write("work/mein programm 计算.vorla", "")
        self.build("mein programm 计算.vorla")
        arguments = self.arguments()
        self.assertEqual(arguments[0], self.path(self.install, "g++.exe"))
        self.assertIn(self.path("work/mein programm 计算.exe"), arguments)
        self.assertIn("-I" + self.path("My Programs/größe/include"), arguments)


class Sources(ProcessTest):
    def test_in_a_subdirectory_have_their_output_beside_them(self):
        self.installed.write("elsewhere/sub/app.vorla", "")
        output = self.build("../elsewhere/./sub/app.vorla", "--keep-cpp")
        self.assertIn(f"  Output: {self.path('elsewhere/sub/app.exe')}\n", output)
        self.assertTrue(self.installed.has("elsewhere/sub/code_generation/main.cpp"))
        self.assertFalse(self.installed.has("work/code_generation"))

    def test_named_by_an_absolute_path(self):
        output = self.build(self.path("work/app.vorla"))
        self.assertIn(f"[1/7] Reading source file: {self.path('work/app.vorla')}\n", output)

    def test_without_extension(self):
        self.installed.write("work/app", "")
        self.assertIn(f"  Output: {self.path('work/app.exe')}\n", self.build("app"))

    def test_named_app_exe_are_not_overwritten(self):
        self.installed.write("work/app.exe", "vorla Main { }")
        output = self.build("app.exe", status=1)
        self.assertTrue(output.endswith("[6/6] Compiling with g++...\nError: Cannot write '"
                                        + self.path("work/app.exe") + "'\n"))
        self.assertEqual(self.installed.read("work/app.exe"), b"vorla Main { }")

    def test_may_be_empty(self):
        self.installed.write("work/empty.vorla", "")
        self.assertIn("  Size: 0 bytes\n[2/7] Lexing...\n  Tokens: 1\n",
                      self.build("empty.vorla"))

    def test_may_come_from_a_pipe(self):
        os.mkfifo(self.path("work/pipe.vorla"))
        os.chmod(self.path("work/pipe.vorla"), 0o666)
        writer = os.fork()
        if writer == 0:
            with open(self.path("work/pipe.vorla"), "wb") as pipe:
                pipe.write(b"vorla Main { }")
            os._exit(0)
        output = self.build("pipe.vorla")
        os.waitpid(writer, 0)
        self.assertIn("  Size: 14 bytes\n", output)

    def test_that_are_devices_are_not_read(self):
        os.symlink("/dev/zero", self.path("work/link.vorla"))
        for name in ("/dev/zero", "/dev/null", "link.vorla"):
            with self.subTest(name):
                output = self.build(name, status=1)
                self.assertTrue(output.endswith(f"Error: Cannot open '{name}'\n"), output)

    def test_with_zero_bytes_are_read_whole(self):
        self.installed.write("work/zero.vorla", b"vorla Main { }\0\0\0// \0\n")
        result = self.installed.run("zero.vorla")
        self.assertIn("  Size: 22 bytes\n", result.stdout.decode())
        self.assertIn(result.returncode, (0, -signal.SIGABRT))

    def test_of_a_hundred_megabytes_of_blanks(self):
        self.installed.write("work/blanks.vorla", b" " * 104857600)
        output = self.build("blanks.vorla")
        self.assertIn("  Size: 104857600 bytes\n[2/7] Lexing...\n  Tokens: 1\n", output)


class OutputFiles(ProcessTest):
    def test_begin_with_a_byte_order_mark(self):
        self.build("app.vorla", "--keep-cpp")
        for name in ("main.cpp", "import.hpp"):
            content = self.installed.read("work/code_generation/" + name)
            self.assertTrue(content.startswith(b"\xef\xbb\xbf// " + name.encode()
                                               + b" - Generated by Orvane\n"))
            self.assertNotIn(b"\r", content)

    def test_are_cleaned_unless_kept(self):
        self.assertIn("  Intermediate files cleaned.\n", self.build("app.vorla"))
        self.assertEqual(os.listdir(self.path("work/code_generation")), [])
        self.assertNotIn("cleaned", self.build("app.vorla", "--keep-cpp"))
        self.assertEqual(sorted(os.listdir(self.path("work/code_generation"))),
                         ["import.hpp", "main.cpp"])

    def test_that_cannot_be_cleaned_are_no_failure(self):
        self.installed.write_gxx("chmod 555 code_generation\n")
        output = self.build("app.vorla")
        self.assertTrue(output.endswith(f"  Output: {self.path('work/app.exe')}\n"
                                        "\n=== Build complete! ===\n"))
        self.assertTrue(self.installed.has("work/code_generation/main.cpp"))

    def test_that_are_gone_are_not_called_cleaned(self):
        self.installed.write_gxx("rm code_generation/import.hpp\n")
        self.assertNotIn("cleaned", self.build("app.vorla"))

    def check_cannot_write(self, name):
        output = self.build("app.vorla", status=1)
        self.assertTrue(output.endswith("Error: Cannot write '"
                                        + self.path("work/code_generation", name) + "'\n"), output)

    def test_in_an_unwritable_directory(self):
        os.chmod(self.path("work"), 0o555)
        self.check_cannot_write("main.cpp")
        self.assertFalse(self.installed.has("work/code_generation"))

    def test_in_an_unwritable_output_directory(self):
        os.mkdir(self.path("work/code_generation"), 0o555)
        self.check_cannot_write("main.cpp")

    def test_with_a_file_in_place_of_their_directory(self):
        self.installed.write("work/code_generation", "in the way")
        self.check_cannot_write("main.cpp")

    def test_with_a_directory_in_place_of_a_file(self):
        self.installed.write("work/code_generation/import.hpp/in the way", "")
        os.chmod(self.path("work/code_generation"), 0o777)
        self.check_cannot_write("import.hpp")

    def test_with_a_pipe_in_place_of_a_file(self):
        for name in ("import.hpp", "main.cpp"):
            with self.subTest(name):
                self.installed.write("work/code_generation/" + name, "")
                os.remove(self.path("work/code_generation", name))
                os.mkfifo(self.path("work/code_generation", name))
                self.check_cannot_write(name)

    def test_on_a_full_disk(self):
        for name in ("import.hpp", "main.cpp"):
            with self.subTest(name):
                self.installed.write("work/code_generation/" + name, "")
                os.remove(self.path("work/code_generation", name))
                os.symlink("/dev/full", self.path("work/code_generation", name))
                self.check_cannot_write(name)


class Libraries(ProcessTest):
    def test_line_shows_before_the_library_is_loaded(self):
        self.installed.write("work/orlib/math.orlib", "int f() { return 1; }")
        output = self.build("app.vorla", "--math")
        self.assertIn("  -> orlib/math.orlib ... Loading: " + self.path("work/orlib/math.orlib")
                      + "\n  function: f\nOK\nReplacementTable (1 functions):\n  f() -> int\n\n",
                      output)

    def test_that_cannot_be_read_are_a_warning(self):
        self.installed.write("work/orlib/math.orlib", "int f() { return 1; }", 0o000)
        os.makedirs(self.path("work/orlib/io"))
        output = self.build("app.vorla", "--math", "--io")
        for name in ("math.orlib", "io"):
            path = self.path("work/orlib", name)
            self.assertIn(f"Loading: {path}\nWarning: Cannot read {path}\nOK\n", output)

    def test_that_import_themselves_are_reported(self):
        self.installed.write("work/orlib/math.orlib", 'import "math.orlib" int f() { }')
        path = self.path("work/orlib/math.orlib")
        self.assertIn(f"Loading: {path}\nError: Circular import detected: {path}\n"
                      "  function: f\nOK\n", self.build("app.vorla", "--math"))

    def test_beside_the_compiler_are_found_from_everywhere(self):
        self.installed.write("install/orlib/math.orlib", "int f() { }")
        self.assertIn("Loading: " + self.path("install/orlib/math.orlib") + "\n",
                      self.build("app.vorla", "--math"))

    def test_that_are_missing_do_not_stop_the_build(self):
        output = self.build("app.vorla", "--math", "--normal")
        self.assertIn("Warning: normal.orlib not found\n  -> normal (standard set) ... OK\n"
                      "  -> orlib/math.orlib ... Warning: math.orlib not found\nOK\n", output)


if __name__ == "__main__":
    COMPILER = os.path.abspath(sys.argv.pop(1))
    unittest.main()
