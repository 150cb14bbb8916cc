#!/usr/bin/env python3
"""orvanec.exe under Wine, with a stand-in in the place of g++.exe.

    wine_test.py PATH/TO/orvanec.exe PATH/TO/gxx_stand_in.exe
"""

import os
import shutil
import subprocess
import sys
import unittest

from installation import Installation

COMPILER = None
STAND_IN = None
WINE_RUN = os.path.join(os.path.dirname(os.path.abspath(__file__)), "wine_run.sh")
BANNER = "=== Orvane Compiler v6.0.0 ===\n"
LIBRARIES = "-luser32 -lgdi32 -lkernel32 -lcomctl32 -lcomdlg32 -lshell32 -ladvapi32 -mwindows"


class WineTest(unittest.TestCase):
    install = "install"

    def setUp(self):
        self.installed = Installation(COMPILER, self.install)
        self.installed.__enter__()
        self.addCleanup(self.installed.__exit__)
        shutil.copy(STAND_IN, self.installed.path(self.install, "g++.exe"))
        self.installed.write("work/app.vorla", "vorla Main { }\n")

    def path(self, *names):
        """As Windows writes it."""
        return "Z:" + self.installed.path(*names).replace("/", "\\")

    def build(self, *arguments, status=0):
        """Runs the compiler, checks its status and gives back what it printed."""
        program = self.installed.path(self.install, "orvanec.exe")
        result = subprocess.run([WINE_RUN, program, *arguments], cwd=self.installed.path("work"),
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                stderr=subprocess.DEVNULL, timeout=120, check=False)
        output = result.stdout.decode().replace("\r\n", "\n")
        if status is not None:
            self.assertEqual(result.returncode, status, output)
        self.status = result.returncode
        return output

    def command(self, source="app", install=None, above=""):
        install = install or self.install
        return (f'"{self.path(install, "g++.exe")}" -std=c++17 -Og -finput-charset=UTF-8 '
                f'"{self.path("work/code_generation/main.cpp")}" '
                f'-o "{self.path("work", source + ".exe")}" -I"{self.path(above, "include")}" '
                f'-I"{self.path(above, "orlib")}" -I"{self.path(above, "parameter")}" {LIBRARIES}')

    def received(self):
        return self.installed.read(self.install + "/gxx.log").decode()


class Builds(WineTest):
    def test_complete_build(self):
        output = self.build("app.vorla")
        self.assertEqual(output, BANNER + "[1/7] Reading source file: app.vorla\n"
                         "  Size: 15 bytes\n"
                         "[2/7] Lexing...\n"
                         "  Tokens: 5\n"
                         "[3/6] Parsing...\n"
                         "  AST OK\n"
                         "[4/7] Loading libraries...\n"
                         "  (no libraries to load)\n"
                         "\n"
                         "[5/7] Generating C++ code...\n"
                         "  debugMode = false\n"
                         f"  {self.path('work/code_generation/main.cpp')}\n"
                         f"  {self.path('work/code_generation/import.hpp')}\n"
                         "[6/6] Compiling with g++...\n"
                         f"  Command: {self.command()}\n"
                         "  Compiled OK\n"
                         f"  Output: {self.path('work/app.exe')}\n"
                         "  Intermediate files cleaned.\n"
                         "\n=== Build complete! ===\n")
        self.assertEqual(self.received(), self.command())

    def test_names_of_all_languages(self):
        self.installed.write("work/größe 计算.vorla", "vorla Main { }")
        output = self.build("größe 计算.vorla")
        self.assertIn("[1/7] Reading source file: größe 计算.vorla\n", output)
        self.assertIn(f"  Output: {self.path('work/größe 计算.exe')}\n", output)
        self.assertEqual(self.received(), self.command("größe 计算"))

    def test_files_have_a_byte_order_mark_and_plain_line_feeds(self):
        self.build("app.vorla", "--keep-cpp")
        for name in ("main.cpp", "import.hpp"):
            content = self.installed.read("work/code_generation/" + name)
            self.assertTrue(content.startswith(b"\xef\xbb\xbf// " + name.encode()))
            self.assertNotIn(b"\r", content)

    def test_source_is_read_in_text_mode(self):
        self.installed.write("work/app.vorla", b"vorla Main {\r\n}\r\n")
        self.assertIn("  Size: 15 bytes\n", self.build("app.vorla"))

    def test_source_in_a_subdirectory(self):
        self.installed.write("work/sub dir/x.vorla", "vorla Main { }")
        output = self.build("sub dir/x.vorla")
        self.assertIn(f"  Output: {self.path('work/sub dir/x.exe')}\n", output)

    def test_source_by_its_full_path(self):
        output = self.build(self.path("work/app.vorla"))
        self.assertIn(f"  Output: {self.path('work/app.exe')}\n", output)

    def test_library_beside_the_compiler(self):
        self.installed.write("install/orlib/math.orlib", 'import "more.orlib" int f() { }')
        self.installed.write("install/orlib/more.orlib", "int g() { }")
        output = self.build("app.vorla", "--math")
        self.assertIn("  -> orlib/math.orlib ... Loading: "
                      + self.path("install/orlib/math.orlib") + "\n"
                      "Loading: " + self.path("install/orlib/more.orlib") + "\n"
                      "  function: g\n  function: f\nOK\n", output)

    def test_library_import_that_is_no_utf8_is_not_found(self):
        self.installed.write("work/orlib/math.orlib", b'import "\xff\xfe" int f() { }')
        program = self.installed.path("install/orvanec.exe")
        result = subprocess.run([WINE_RUN, program, "app.vorla", "--math"],
                                cwd=self.installed.path("work"), stdout=subprocess.PIPE,
                                stderr=subprocess.DEVNULL, timeout=120, check=False)
        self.assertEqual(result.returncode, 0)
        self.assertIn(b"Warning: import not found: \xff\xfe (from ", result.stdout)


class Libraries(WineTest):
    """Names that mean more than a file to Windows lead nowhere but to the search folders."""

    def loaded(self, name):
        escaped = name.replace("\\", "\\\\")
        self.installed.write("work/app.vorla", f'import "{escaped}"; vorla Main {{ }}\n')
        return self.build("app.vorla")

    def test_outside_the_search_folders_are_not_found(self):
        self.installed.write("secret.orlib", "int secret() { return 1; }")
        for path in ("../secret", "..\\secret", self.path("secret"), "Z:secret", "Z:../secret",
                     "\\\\?\\" + self.path("secret"), "//localhost/share/secret",
                     "orlib/..\\../secret.orlib", "...", ".. ", "../", "..\\"):
            with self.subTest(path):
                self.assertNotIn("function: ", self.loaded(path))

    def test_that_are_devices_are_not_read(self):
        for name in ("NUL", "nul.orlib", "CON", "con.orlib", "CONIN$", "AUX", "COM1", "LPT1.orlib",
                     "PIPE", "\\\\.\\NUL", "\\\\.\\CON", "//./COM1"):
            with self.subTest(name):
                self.assertNotIn("function: ", self.loaded(name))

    def test_that_are_streams_of_another_file_are_not_found(self):
        self.installed.write("work/orlib/plain.txt", "int hidden() { return 1; }")
        for name in ("plain.txt:stream", "plain.txt:stream.orlib", ":stream"):
            with self.subTest(name):
                self.assertNotIn("function: ", self.loaded(name))

    def test_that_a_library_imports_from_a_device_are_not_read(self):
        for name in ("NUL", "CON", "COM1", "\\\\.\\NUL", "//./CON"):
            with self.subTest(name):
                self.installed.write("work/orlib/math.orlib", f'import "{name}" int f() {{ }}')
                output = self.build("app.vorla", "--math")
                self.assertIn("  function: f\n", output)
                self.assertRegex(output, "Warning: (import not found: |Cannot read )")


class Failures(WineTest):
    def test_help_ends_with_0(self):
        self.assertIn("  --help         Show this help message\n", self.build("--help"))

    def test_rejected_arguments_end_with_1(self):
        self.assertIn("Error: Unknown argument '--foo'\n", self.build("a", "--foo", status=1))
        self.assertIn("Error: No source file specified.\n", self.build(status=1))

    def test_missing_source_ends_with_1(self):
        self.assertTrue(self.build("absent.vorla", status=1)
                        .endswith("Error: Cannot open 'absent.vorla'\n"))

    def test_directory_as_source_ends_with_1(self):
        self.assertTrue(self.build(".", status=1).endswith("Error: Cannot open '.'\n"))

    def test_devices_as_sources_end_and_write_nothing(self):
        before = self.installed.files()
        for name in ("NUL", "CON", "COM1", "AUX", "\\\\.\\NUL", "app.vorla:stream", ":x"):
            with self.subTest(name):
                output = self.build(name, status=1)
                self.assertTrue(output.endswith(f"Error: Cannot open '{name}'\n"), output)
                self.assertEqual(self.installed.files(), before)

    def test_arguments_are_not_expanded(self):
        self.assertTrue(self.build("*.vorla", status=1)
                        .endswith("Error: Cannot open '*.vorla'\n"))

    def test_syntax_error_ends_abnormally_with_everything_printed(self):
        self.installed.write("work/bad.vorla", "vorla {")
        output = self.build("bad.vorla", status=None)
        self.assertNotIn(self.status, (0, 1, 124))
        self.assertEqual(output, BANNER + "[1/7] Reading source file: bad.vorla\n"
                         "  Size: 7 bytes\n"
                         "[2/7] Lexing...\n"
                         "  Tokens: 3\n"
                         "[3/6] Parsing...\n"
                         "[PARSER ERROR] Expected 44, got 69 at line 1: Expected vorla name\n")

    def test_failing_gxx_ends_with_1_and_keeps_the_files(self):
        self.installed.write("install/gxx.code", "3")
        output = self.build("app.vorla", status=1)
        self.assertTrue(output.endswith("\nError: Compilation failed (exit code 3).\n"))
        self.assertTrue(self.installed.has("work/code_generation/main.cpp"))

    def test_exit_code_of_a_crash_is_printed_unsigned(self):
        self.installed.write("install/gxx.code", "-1073741819")
        output = self.build("app.vorla", status=1)
        self.assertTrue(output.endswith("\nError: Compilation failed (exit code 3221225477).\n"))

    def test_gxx_that_cannot_start_ends_with_1(self):
        os.remove(self.installed.path("install/g++.exe"))
        os.mkdir(self.installed.path("install/g++.exe"))
        output = self.build("app.vorla", status=1)
        self.assertTrue(output.endswith(LIBRARIES + "\nError: Failed to start compiler.\n"))

    def test_gxx_that_is_nowhere_ends_with_1(self):
        os.remove(self.installed.path("install/g++.exe"))
        output = self.build("app.vorla", status=1)
        self.assertTrue(output.endswith("Error: g++ not found in any known location.\n"))

    def test_file_in_place_of_the_output_directory(self):
        self.installed.write("work/code_generation", "in the way")
        output = self.build("app.vorla", status=1)
        self.assertTrue(output.endswith("Error: Cannot write '"
                                        + self.path("work/code_generation/main.cpp") + "'\n"))

    def test_source_that_is_its_own_executable(self):
        for name in ("app.exe", "APP.EXE"):
            with self.subTest(name):
                self.installed.write("work/app.exe", "vorla Main { }")
                output = self.build(name, status=1)
                self.assertIn("[6/6] Compiling with g++...\nError: Cannot write '", output)
                self.assertEqual(self.installed.read("work/app.exe"), b"vorla Main { }")


class InstallationWithOddNames(WineTest):
    install = "Meine Programme/größe/编译器"

    def test_works(self):
        output = self.build("app.vorla")
        command = self.command(above="Meine Programme/größe")
        self.assertIn(f"  Command: {command}\n  Compiled OK\n", output)
        self.assertEqual(self.received(), command)


class InstallationBelowTools(WineTest):
    install = "devtools/bin"

    def test_counts_as_a_tools_directory(self):
        self.build("app.vorla")
        self.assertEqual(self.received(), self.command(above="devtools"))


class InstallationFarDown(WineTest):
    install = "/".join(["d" * 80] * 3)

    def test_looks_in_the_working_directory(self):
        self.assertIn("g++ not found", self.build("app.vorla", status=1))
        os.makedirs(self.installed.path("work/tools/bin"))
        shutil.copy(STAND_IN, self.installed.path("work/tools/bin/g++.exe"))
        self.build("app.vorla")
        self.assertEqual(self.installed.read("work/tools/bin/gxx.log").decode(),
                         self.command(install="work/tools/bin", above="work/tools"))


class Executable(unittest.TestCase):
    def test_needs_only_libraries_of_the_system(self):
        headers = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", COMPILER],
                                 stdout=subprocess.PIPE, check=True).stdout.decode()
        needed = {line.split()[-1].lower() for line in headers.splitlines() if "DLL Name" in line}
        self.assertTrue(needed)
        self.assertLessEqual(needed, {"kernel32.dll", "msvcrt.dll"})


if __name__ == "__main__":
    STAND_IN = os.path.abspath(sys.argv.pop(2))
    COMPILER = os.path.abspath(sys.argv.pop(1))
    unittest.main()
