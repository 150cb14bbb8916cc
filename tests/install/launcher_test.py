#!/usr/bin/env python3
"""tools/bin/g++.exe of an installation on Windows, under Wine, with a stand-in for the C++ compiler.

    launcher_test.py PATH/TO/packaging PATH/TO/launcher.exe PATH/TO/stand_in.exe PATH/TO/parent.exe
"""

import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
WINE_RUN = os.path.join(HERE, "..", "driver", "wine_run.sh")
PACKAGING = LAUNCHER = STAND_IN = PARENT = None

# What an installation has in tools/fast.
TEXTS = ["entries.h", "includes.h", "lists.h", "memory.h", "runtime.cpp", "runtime.options",
         "texts.h", "value.h"]

LIBRARIES = ("-luser32 -lgdi32 -lkernel32 -lcomctl32 -lcomdlg32 -lshell32 -ladvapi32 "
             "-mwindows").split()


def windows(path):
    return "Z:" + path.replace("/", "\\")


def quoted(argument):
    """Only names without blanks and foreign letters go without quotes."""
    plain = argument.isascii() and not set(argument) & set(' "*?[]@')
    return argument if plain else f'"{argument}"'


class LauncherTest(unittest.TestCase):
    top = "install"

    def setUp(self):
        self.root = os.path.realpath(tempfile.mkdtemp(prefix="orvane-"))
        self.addCleanup(shutil.rmtree, self.root)
        self.tools = self.path(self.top, "tools")
        self.fast = os.path.join(self.tools, "fast")
        for folder in ("tools/bin", "tools/mingw64/bin",
                       "tools/mingw64/libexec/gcc/x86_64-w64-mingw32/12"):
            os.makedirs(self.path(self.top, folder))
        shutil.copytree(os.path.join(PACKAGING, "include"), os.path.join(self.tools, "include"))
        shutil.copytree(os.path.join(PACKAGING, "fast"), self.fast)
        self.tell("value", os.path.join(self.fast, "value.h"))
        self.launcher = os.path.join(self.tools, "bin", "g++.exe")
        shutil.copy(LAUNCHER, self.launcher)
        self.compiler = os.path.join(self.tools, "mingw64", "bin", "g++.exe")
        shutil.copy(STAND_IN, self.compiler)
        self.cc1plus = os.path.join(self.tools, "mingw64", "libexec", "gcc", "x86_64-w64-mingw32",
                                    "12", "cc1plus.exe")
        self.tell("cc1plus", self.cc1plus)
        os.makedirs(self.path("work", "code_generation"))
        self.environment = dict(os.environ)
        self.executable = self.path("work", "app.exe")

    def path(self, *names):
        return os.path.join(self.root, *names)

    def tell(self, name, path=None):
        with open(path or os.path.join(os.path.dirname(self.compiler), name), "wb"):
            pass

    def take_back(self, name):
        os.remove(os.path.join(os.path.dirname(self.compiler), name))

    def told(self, name):
        return os.path.exists(os.path.join(os.path.dirname(self.compiler), name))

    def arguments(self, *more, output=None):
        return ["-std=c++17", "-Og", *more, "-finput-charset=UTF-8",
                windows(self.path("work", "code_generation", "main.cpp")),
                windows(os.path.join(self.tools, "bin", "resource.o")),
                "-o", windows(output or self.executable),
                *("-I" + windows(os.path.join(self.tools, name))
                  for name in ("include", "orlib", "parameter")), *LIBRARIES]

    def start(self, arguments, program=None):
        return subprocess.Popen([WINE_RUN, program or self.launcher, *arguments],
                                env=self.environment, stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                cwd=self.path("work"))

    def finish(self, process):
        output, errors = (text.decode("utf-8").replace("\r\n", "\n")
                          for text in process.communicate(timeout=60))
        return process.returncode, output, errors

    def launch(self, *arguments, status=0, errors=""):
        """Runs it, checks exit code and messages, and gives back the compiler's calls."""
        calls = os.path.join(os.path.dirname(self.compiler), "calls")
        if os.path.exists(calls):
            os.remove(calls)
        found = self.finish(self.start(arguments or self.arguments()))
        self.assertEqual(found, (status, "", errors))
        return self.calls()

    def calls(self):
        path = os.path.join(os.path.dirname(self.compiler), "calls")
        if not os.path.exists(path):
            return []
        with open(path, encoding="utf-8") as file:
            return file.read().splitlines()

    def header_calls(self, calls):
        return [call for call in calls if "-x c++-header" in call]

    def program(self):
        with open(self.executable, encoding="utf-8") as file:
            return file.read()

    def no_leftovers(self):
        left = [name for name in os.listdir(self.path("work")) if name.startswith(".orvane")]
        self.assertEqual(left, [])

    def wait_until(self, condition):
        for _ in range(1500):
            if condition():
                return
            time.sleep(0.02)
        self.fail("nothing happened within 30 seconds")


class Programs(LauncherTest):
    def test_first_build_makes_the_header_and_uses_it(self):
        calls = self.launch()
        self.assertEqual(len(calls), 3)
        tools = windows(self.tools)
        header = [windows(self.compiler), "-std=c++17", "-Og", "-g0", "-finput-charset=UTF-8",
                  "-mwindows", f"-I{tools}\\include", f"-I{tools}\\orlib", f"-I{tools}\\parameter",
                  "-x", "c++-header", f"{tools}\\fast\\includes.h", "-o", f"{tools}\\fast\\new.gch",
                  "-DORVANE_VALUE_COMPILED"]
        self.assertEqual(calls[0], " ".join(quoted(argument) for argument in header))

        runtime = [windows(self.compiler), f"@{tools}\\fast\\runtime.options",
                   f"-I{tools}\\include", "-c", f"{tools}\\fast\\runtime.cpp",
                   "-o", f"{tools}\\fast\\new.o"]
        self.assertEqual(calls[1], " ".join(quoted(argument) for argument in runtime))

        start, name = calls[2].split(" -o ")
        name = name.split(" -I")[0].split(' "-I')[0]
        folder = windows(self.path("work"))
        self.assertRegex(name.strip('"')[len(folder):], r"^\\\.orvane-\d+\.exe$")
        arguments = self.arguments()
        place = arguments.index("-o")
        before = [windows(self.compiler), "-include", f"{tools}\\fast\\includes.h",
                  "-DORVANE_VALUE_COMPILED", f"{tools}\\fast\\runtime.o", *arguments[:place]]
        after = [*arguments[place + 2:], "-static", "-s"]
        self.assertEqual(start, " ".join(quoted(argument) for argument in before))
        self.assertTrue(calls[2].endswith(" ".join(quoted(argument) for argument in after)))
        self.assertEqual(self.program(), "complete ")
        self.assertEqual(sorted(os.listdir(self.fast)),
                         sorted([*TEXTS, "includes.h.gch", "lock", "made", "runtime.o"]))
        self.no_leftovers()

    def test_later_builds_take_the_header_that_is_there(self):
        self.launch()
        calls = self.launch()
        self.assertEqual((len(calls), "-include" in calls[0]), (1, True))

    def test_programs_with_symbols_have_a_header_of_their_own(self):
        self.launch()
        calls = self.launch(*self.arguments("-g"))
        fast = f"{windows(self.tools)}\\fast"
        self.assertEqual(len(calls), 2)
        self.assertIn(" -g ", calls[0])
        self.assertTrue(calls[0].endswith(
            " ".join(quoted(text) for text in
                     (f"{fast}\\symbols\\includes.h", "-o", f"{fast}\\symbols\\new.gch"))))
        for symbols, folder in (("-g", f"{fast}\\symbols"), (None, fast)):
            calls = self.launch(*self.arguments(*filter(None, [symbols])))
            self.assertEqual(len(calls), 1)
            self.assertIn(f" -include {quoted(folder + chr(92) + 'includes.h')} ", calls[0])
            self.assertEqual("runtime.o" in calls[0], symbols is None)
        self.assertTrue(calls[0].endswith(" -mwindows -static -s"))

    def test_other_commands_run_as_they_are(self):
        for arguments in (["--version"], ["-c", "a b.cpp"], self.arguments("-DLATE")):
            calls = self.launch(*arguments)
            expected = " ".join(f'"{text}"' if " " in text else text for text in arguments)
            compiler = quoted(windows(self.compiler))
            self.assertEqual(calls[0].replace('"', ""),
                             f"{compiler} {expected} -static -s".replace('"', ""))
            self.assertEqual(len(calls), 1)

    def test_settings_of_another_toolchain_do_not_reach_the_compiler(self):
        self.environment["CPATH"] = "Z:\\elsewhere"
        self.launch()
        self.assertEqual(self.program(), "complete ")

    def test_missing_compiler_is_told(self):
        os.remove(self.compiler)
        tools = windows(self.tools)
        self.launch(*self.arguments(), status=1, errors=(
            f'g++.exe: the C++ compiler is missing: put the folder "mingw64" of the Windows package '
            f'into "{tools}", so that "{tools}\\mingw64\\bin\\g++.exe" is there\n'))

    def test_broken_compiler_is_told(self):
        with open(self.compiler, "wb") as file:
            file.write(b"no program")
        status, _, errors = self.finish(self.start(self.arguments()))
        self.assertEqual(status, 1)
        self.assertTrue(errors.startswith(f'g++.exe: cannot start "{windows(self.compiler)}": '))
        self.assertFalse(os.path.exists(self.executable))


class Failures(LauncherTest):
    ERROR = "main.cpp:1:1: error: \u00e4 is wrong\n"

    def test_mistake_in_the_program_is_shown_once_and_keeps_the_executable(self):
        self.launch()
        self.tell("program_fails")
        self.launch(*self.arguments(), status=3, errors=self.ERROR)
        self.assertEqual(self.program(), "complete ")
        self.no_leftovers()
        self.take_back("program_fails")
        self.assertEqual(self.header_calls(self.launch()), [])

    def test_damaged_header_is_noticed_and_replaced(self):
        self.launch()
        self.tell("header_damaged")
        calls = self.launch()
        self.assertEqual(["-include" in call for call in calls], [True, False])
        self.take_back("header_damaged")
        self.assertEqual(len(self.header_calls(self.launch())), 1)

    def test_header_that_cannot_be_made_is_done_without(self):
        self.tell("header_fails")
        calls = self.launch()
        self.assertEqual([len(calls), len(self.header_calls(calls))], [2, 1])
        self.assertNotIn("-include", calls[1])
        self.assertEqual(self.header_calls(self.launch()), [])
        self.launch("--orvane-make-pch", status=1, errors=(
            "g++.exe: the precompiled header could not be made; builds work without it, only "
            "slower\n"))
        self.take_back("header_fails")
        self.launch("--orvane-make-pch")
        self.assertEqual(self.header_calls(self.launch()), [])

    def test_runtime_that_cannot_be_compiled_is_done_without(self):
        self.tell("runtime_fails")
        calls = self.launch()
        self.assertEqual([len(calls), len(self.header_calls(calls))], [3, 1])
        self.assertNotIn("-include", calls[2])
        self.assertEqual(sorted(os.listdir(self.fast)),
                         sorted([*TEXTS, "failed", "lock"]))
        self.take_back("runtime_fails")
        self.launch("--orvane-make-pch")
        self.assertIn("runtime.o", self.launch()[0])

    def test_changed_or_lost_runtime_makes_another(self):
        self.launch()
        for name in (*TEXTS, "runtime.o"):
            os.utime(os.path.join(self.fast, name), (1, 1))
            self.assertEqual(len(self.header_calls(self.launch())), 1, name)
        os.remove(os.path.join(self.fast, "runtime.o"))
        self.assertEqual(len(self.header_calls(self.launch())), 1)

    def test_changed_compiler_or_cut_header_makes_another(self):
        self.launch()
        os.utime(self.cc1plus, (1, 1))
        self.assertEqual(len(self.header_calls(self.launch())), 1)
        self.tell("cut", os.path.join(self.fast, "includes.h.gch"))
        self.assertEqual(len(self.header_calls(self.launch())), 1)

    def test_header_goes_into_the_local_data_where_the_installation_cannot_be_written(self):
        os.mkdir(os.path.join(self.fast, "lock"))  # so that no file of that name can be made
        calls = self.launch()
        self.addCleanup(shutil.rmtree, self.local_data(calls[0]))
        beside = os.listdir(self.local_data(calls[0]))
        self.assertLessEqual({"includes.h", "entries.h", "lists.h"}, set(beside))
        self.assertEqual(len(self.header_calls(calls)), 1)
        self.assertRegex(calls[-1], r'-include "?C:\\.*\\Orvane\\\d+\\includes\.h"? ')
        self.assertEqual(sorted(os.listdir(self.fast)),
                         sorted([*TEXTS, "lock"]))
        self.assertEqual(self.header_calls(self.launch()), [])

    def test_header_with_symbols_lies_apart_there_too(self):
        os.makedirs(os.path.join(self.fast, "symbols", "lock"))
        calls = self.launch(*self.arguments("-g"))
        self.addCleanup(shutil.rmtree, os.path.dirname(self.local_data(calls[0])))
        self.assertEqual(len(self.header_calls(calls)), 1)
        self.assertRegex(calls[-1], r'-include "?C:\\.*\\Orvane\\\d+\\symbols\\includes\.h"? ')
        self.assertEqual(self.header_calls(self.launch(*self.arguments("-g"))), [])

    def local_data(self, call):
        """The folder of the header that a call makes; Wine has its own idea of the user's folders."""
        path = call.rsplit(" -o ", 1)[1].strip('"').rsplit("\\", 1)[0]
        drive = os.environ["ORVANE_TEST_PREFIX"] + "-null/drive_c"
        return os.path.join(drive, *path.split("\\")[1:])

    def test_directory_in_the_place_of_the_executable(self):
        os.mkdir(self.executable)
        status, _, errors = self.finish(self.start(self.arguments()))
        self.assertEqual(status, 1)
        self.assertTrue(errors.startswith(f'g++.exe: cannot write "{windows(self.executable)}": '))
        self.no_leftovers()


class Processes(LauncherTest):
    def test_messages_appear_on_the_console_of_the_parent(self):
        self.tell("program_fails")
        process = self.start([windows(self.launcher), "x.cpp"], program=PARENT)
        status, output, _ = self.finish(process)
        self.assertEqual(status, 0)
        first, last = output.splitlines()
        self.assertTrue(first.startswith("main.cpp:1:1: error: "), output)
        self.assertTrue(first.endswith(" is wrong"), output)
        self.assertEqual(last, "exit code 3")

    def test_second_build_does_not_wait_for_the_header_of_the_first(self):
        self.tell("wait")
        first = self.start(self.arguments())
        self.wait_until(lambda: self.told("waiting"))
        second = self.start(self.arguments(output=self.path("work", "second.exe")))
        self.wait_until(lambda: len(self.calls()) == 2)
        self.assertEqual(len(self.header_calls(self.calls())), 1)
        self.assertNotIn("-include", self.calls()[1])
        self.take_back("wait")
        for process in (first, second):
            self.assertEqual(self.finish(process), (0, "", ""))
        self.assertEqual(len(self.header_calls(self.calls())), 1)

    def test_compiler_ends_with_the_launcher(self):
        self.tell("wait")
        process = self.start(["slow.cpp"])
        self.wait_until(lambda: self.told("waiting"))
        os.kill(self.process_of(self.launcher), signal.SIGKILL)
        process.communicate(timeout=60)
        self.wait_until(lambda: self.process_of(self.compiler) is None)

    def process_of(self, program):
        """Its number on this system, which shows a Windows program under its Windows path."""
        for name in os.listdir("/proc"):
            try:
                with open(f"/proc/{name}/cmdline", "rb") as file:
                    command = file.read().decode(errors="replace").split("\0")[0]
            except (OSError, NotADirectoryError):
                continue
            if name.isdigit() and command in (program, windows(program)):
                return int(name)
        return None


class OddNames(LauncherTest):
    top = "\u00dcbung $HOME 'a' \u4e2d\u6587"
    test_first_build = Programs.test_first_build_makes_the_header_and_uses_it
    test_other_commands = Programs.test_other_commands_run_as_they_are


if __name__ == "__main__":
    PACKAGING, LAUNCHER, STAND_IN, PARENT = (os.path.abspath(path) for path in sys.argv[1:5])
    del sys.argv[1:5]
    unittest.main()
