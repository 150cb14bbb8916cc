#!/usr/bin/env python3
"""tools/bin/g++.exe of an installation on Linux, with a pretended cross compiler on the PATH.

    wrapper_test.py PATH/TO/packaging
"""

import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

PACKAGING = None

# What an installation has in tools/fast.
TEXTS = ["entries.h", "includes.h", "lists.h", "memory.h", "runtime.cpp", "runtime.options",
         "texts.h", "value.h"]

# Permissions mean nothing to root, so commands run as the user with no rights then.
NOBODY = {"user": 65534, "group": 65534, "extra_groups": []} if os.geteuid() == 0 else {}

# Writes its arguments into the file calls. Files beside it make it fail or wait.
COMPILER = r"""#!/bin/sh
here=$(dirname "$0")
printf '%s\n' "$*" >> "$here/calls"
output= previous=
for argument; do
    if [ "$previous" = -o ]; then output=$argument; fi
    previous=$argument
done
wait_for() {
    [ ! -f "$here/wait" ] || : > "$here/waiting"
    while [ -f "$here/wait" ]; do sleep 0.02; done
}
case " $* " in
    *" -print-prog-name=cc1plus "*)
        echo "$here/cc1plus"
        exit
        ;;
    *" -x c++-header "*)
        printf half > "$output"
        wait_for
        if [ -f "$here/header_fails" ]; then exit 1; fi
        printf '. %s\n.. %s\n' "$here/one.h" "$here/two.h" >&2
        echo header > "$output"
        exit
        ;;
    *"/runtime.cpp "*)
        printf half > "$output"
        if [ -f "$here/runtime_fails" ]; then exit 1; fi
        echo runtime > "$output"
        exit
        ;;
    *" -include "*)
        if [ -f "$here/header_damaged" ]; then
            echo "includes.h.gch: damaged" >&2
            exit 1
        fi
        ;;
    *) if [ -f "$here/wait_in_program" ]; then printf half > "$output"; wait_for; fi ;;
esac
if [ -f "$here/program_fails" ]; then
    echo "main.cpp:1:1: error: this is wrong" >&2
    printf half > "$output"
    exit 3
fi
if [ -f "$here/program_warns" ]; then echo "main.cpp:1:1: warning: look here" >&2; fi
if [ -n "$output" ]; then printf 'complete %s' "${CPATH-}" > "$output"; fi
"""

LIBRARIES = ("-luser32 -lgdi32 -lkernel32 -lcomctl32 -lcomdlg32 -lshell32 -ladvapi32 "
             "-mwindows").split()


class WrapperTest(unittest.TestCase):
    top = "install"

    def setUp(self):
        self.root = os.path.realpath(tempfile.mkdtemp(prefix="orvane-"))
        self.addCleanup(self.remove_root)
        self.tools = self.path(self.top, "tools")
        self.fast = os.path.join(self.tools, "fast")
        os.makedirs(os.path.join(self.tools, "bin"))
        shutil.copytree(os.path.join(PACKAGING, "include"), os.path.join(self.tools, "include"))
        shutil.copytree(os.path.join(PACKAGING, "fast"), self.fast)
        self.write(f"{self.top}/tools/fast/value.h")
        self.wrapper = os.path.join(self.tools, "bin", "g++.exe")
        shutil.copy(os.path.join(PACKAGING, "gxx-wrapper.sh"), self.wrapper)
        for name in ("compiler/one.h", "compiler/two.h", "compiler/cc1plus"):
            self.write(name, name)
        self.write("compiler/x86_64-w64-mingw32-g++-posix", COMPILER, 0o755)
        self.write("work/code_generation/main.cpp", "")
        for folder, _, files in os.walk(self.root):
            os.chmod(folder, 0o777)
            for name in files:
                os.chmod(os.path.join(folder, name), 0o777)
        self.environment = {"PATH": self.path("compiler") + ":" + os.environ["PATH"],
                            "HOME": self.path("home")}
        os.mkdir(self.path("home"))
        os.chmod(self.path("home"), 0o777)
        self.executable = self.path("work", "app.exe")

    def remove_root(self):
        for folder, _, _ in os.walk(self.root):
            os.chmod(folder, 0o777)
        shutil.rmtree(self.root)

    def path(self, *names):
        return os.path.join(self.root, *names)

    def write(self, name, content="", mode=0o666):
        path = self.path(name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            file.write(content)
        os.chmod(path, mode)

    def read(self, name):
        with open(self.path(name), encoding="utf-8") as file:
            return file.read()

    def command(self, *more, output=None):
        return [self.wrapper, "-std=c++17", "-Og", *more, "-finput-charset=UTF-8",
                self.path("work", "code_generation", "main.cpp"),
                os.path.join(self.tools, "bin", "resource.o"),
                "-o", output or self.executable,
                *(f"-I{self.tools}/{name}" for name in ("include", "orlib", "parameter")),
                *LIBRARIES]

    def start(self, command):
        return subprocess.Popen(command, env=self.environment, stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                                encoding="utf-8", cwd=self.path("work"), **NOBODY)

    def run_wrapper(self, command=None, status=0, errors=""):
        """Runs it, checks its exit code and messages, and gives back the compiler's calls."""
        if os.path.exists(self.path("compiler/calls")):
            os.remove(self.path("compiler/calls"))
        process = self.start(command or self.command())
        output, found = process.communicate(timeout=60)
        self.assertEqual((process.returncode, output, found), (status, "", errors))
        if not os.path.exists(self.path("compiler/calls")):
            return []
        lines = self.read("compiler/calls").splitlines()
        return [line for line in lines if "-print-prog-name" not in line]

    def program(self):
        return self.read("work/app.exe")

    def wait_until(self, condition):
        for _ in range(1500):
            if condition():
                return
            time.sleep(0.02)
        self.fail("nothing happened within 30 seconds")

    def no_leftovers(self):
        left = [name for name in os.listdir(self.path("work")) if name.startswith(".orvane")]
        self.assertEqual(left, [])

    def cache(self):
        sums = subprocess.run(["cksum"], input=self.tools.encode(), stdout=subprocess.PIPE,
                              check=True).stdout.decode().split()
        return self.path("home", ".cache", "orvane", "-".join(sums))

    def use_of(self, folder):
        """What a build with the header of a folder has in front of its arguments."""
        return f"-include {folder}/includes.h -DORVANE_VALUE_COMPILED {folder}/runtime.o"

    def header_calls(self, calls):
        return [call for call in calls if "-x c++-header" in call]

    def change(self, path):
        """Another time of change, whatever the clock says."""
        moment = os.stat(path).st_mtime + 100
        os.utime(path, (moment, moment))


class Programs(WrapperTest):
    def test_first_build_makes_the_header_and_uses_it(self):
        calls = self.run_wrapper()
        self.assertEqual(len(calls), 3)
        self.assertEqual(
            calls[0],
            "-std=c++17 -Og -g0 -DORVANE_VALUE_COMPILED -finput-charset=UTF-8 -mwindows "
            f"-I{self.tools}/include -I{self.tools}/orlib -I{self.tools}/parameter "
            f"-H -x c++-header {self.fast}/includes.h -o {self.fast}/new.gch")
        self.assertEqual(
            calls[1],
            f"@{self.fast}/runtime.options -I{self.tools}/include "
            f"-c {self.fast}/runtime.cpp -o {self.fast}/new.o")
        self.assertTrue(calls[2].startswith(f"{self.use_of(self.fast)} -std=c++17 -Og "))
        self.assertTrue(calls[2].endswith(" -mwindows -static -s"))
        self.assertEqual(self.program(), "complete ")
        self.assertEqual(sorted(os.listdir(self.fast)),
                         sorted([*TEXTS, "includes.h.gch", "lock", "made", "names", "runtime.o"]))
        self.no_leftovers()

    def test_second_build_takes_the_header_that_is_there(self):
        self.run_wrapper()
        calls = self.run_wrapper()
        self.assertEqual(len(calls), 1)
        self.assertIn("-include", calls[0])

    def test_debug_build_keeps_symbols_and_has_a_header_of_its_own(self):
        self.run_wrapper()
        calls = self.run_wrapper(self.command("-g"))
        self.assertEqual(len(calls), 2)
        self.assertTrue(calls[0].startswith("-std=c++17 -Og -g -finput-charset=UTF-8 "))
        self.assertTrue(calls[0].endswith(
            f" {self.fast}/symbols/includes.h -o {self.fast}/symbols/new.gch"))
        calls = self.run_wrapper(self.command("-g"))
        self.assertEqual(len(calls), 1)
        self.assertTrue(calls[0].startswith(f"-include {self.fast}/symbols/includes.h -std=c++17 "))
        self.assertTrue(calls[0].endswith(" -mwindows -static"))
        calls = self.run_wrapper()
        self.assertEqual(len(calls), 1)
        self.assertTrue(calls[0].startswith(self.use_of(self.fast)))

    def test_arguments_stay_in_order_and_whole(self):
        self.run_wrapper()
        call = self.run_wrapper()[0]
        expected = " ".join(self.command()[1:])
        name = call.split(" -o ")[1].split(" -I")[0]
        self.assertEqual(os.path.dirname(name), self.path("work"))
        self.assertEqual(call.replace(name, self.executable),
                         f"{self.use_of(self.fast)} {expected} -static -s")

    def test_warnings_are_shown(self):
        self.write("compiler/program_warns")
        self.run_wrapper(errors="main.cpp:1:1: warning: look here\n")

    def test_settings_of_another_toolchain_do_not_reach_the_compiler(self):
        self.environment["CPATH"] = "/elsewhere"
        self.run_wrapper()
        self.assertEqual(self.program(), "complete ")

    def test_other_commands_run_as_they_are(self):
        for arguments in (["--version"], ["-c", "main.cpp"], ["-O2", "x.cpp", "-o", "x.exe"],
                          self.command("-DLATE")[1:], self.command("-I/elsewhere")[1:],
                          [*self.command()[1:], "other.cpp"]):
            calls = self.run_wrapper([self.wrapper, *arguments])
            self.assertEqual(calls, [" ".join(arguments) + " -static -s"])

    def test_missing_compiler_is_told(self):
        tools = self.path("few")
        os.mkdir(tools)
        self.environment["PATH"] = tools
        self.run_wrapper(["/bin/sh", *self.command()], 1,
                         "g++.exe: the MinGW cross compiler x86_64-w64-mingw32-g++-posix is "
                         "missing; on Debian and Ubuntu it comes with the package "
                         "g++-mingw-w64-x86-64-posix.\n")


class Failures(WrapperTest):
    ERROR = "main.cpp:1:1: error: this is wrong\n"

    def test_mistake_in_the_program_is_shown_once(self):
        self.write("compiler/program_fails")
        calls = self.run_wrapper(status=3, errors=self.ERROR)
        self.assertNotIn("-include", calls[-1])
        self.assertFalse(os.path.exists(self.executable))
        self.no_leftovers()

    def test_mistake_in_the_program_costs_neither_header_nor_executable(self):
        self.run_wrapper()
        self.write("compiler/program_fails")
        self.run_wrapper(status=3, errors=self.ERROR)
        self.assertEqual(self.program(), "complete ")
        os.remove(self.path("compiler/program_fails"))
        self.assertEqual(self.header_calls(self.run_wrapper()), [])

    def test_damaged_header_is_noticed_and_replaced(self):
        self.run_wrapper()
        self.write("compiler/header_damaged")
        calls = self.run_wrapper()
        self.assertEqual(["-include" in call for call in calls], [True, False])
        self.assertEqual(self.program(), "complete ")
        os.remove(self.path("compiler/header_damaged"))
        self.assertEqual(len(self.header_calls(self.run_wrapper())), 1)

    def test_cut_header_is_replaced(self):
        self.run_wrapper()
        with open(os.path.join(self.fast, "includes.h.gch"), "w", encoding="ascii"):
            pass
        self.assertEqual(len(self.header_calls(self.run_wrapper())), 1)

    def test_header_that_cannot_be_made_is_done_without(self):
        self.write("compiler/header_fails")
        calls = self.run_wrapper()
        self.assertEqual(len(self.header_calls(calls)), 1)
        self.assertNotIn("-include", calls[-1])
        self.assertFalse(os.path.exists(os.path.join(self.fast, "new.gch")))
        self.assertEqual(self.header_calls(self.run_wrapper()), [])

    def test_runtime_that_cannot_be_compiled_is_done_without(self):
        self.write("compiler/runtime_fails")
        calls = self.run_wrapper()
        self.assertEqual([len(calls), len(self.header_calls(calls))], [3, 1])
        self.assertNotIn("-include", calls[2])
        self.assertEqual(sorted(os.listdir(self.fast)),
                         sorted([*TEXTS, "failed", "lock", "new.log"]))
        os.remove(self.path("compiler/runtime_fails"))
        self.run_wrapper([self.wrapper, "--orvane-make-pch"])
        self.assertIn("runtime.o", self.run_wrapper()[0])

    def test_lost_runtime_is_made_again(self):
        self.run_wrapper()
        os.remove(os.path.join(self.fast, "runtime.o"))
        self.assertEqual(len(self.header_calls(self.run_wrapper())), 1)

    def test_header_is_tried_again_after_an_hour_or_on_demand(self):
        self.write("compiler/header_fails")
        self.run_wrapper()
        message = (f"g++.exe: the precompiled header could not be made in '{self.fast}' nor in "
                   f"'{self.cache()}'; builds work without it, only slower.\n")
        self.run_wrapper([self.wrapper, "--orvane-make-pch"], 1, message)
        os.remove(self.path("compiler/header_fails"))
        self.run_wrapper([self.wrapper, "--orvane-make-pch"])
        self.assertEqual(self.header_calls(self.run_wrapper()), [])

    def test_lost_list_of_headers(self):
        self.run_wrapper()
        os.remove(os.path.join(self.fast, "names"))
        self.assertEqual(len(self.header_calls(self.run_wrapper())), 1)

    def test_old_failure_is_forgotten(self):
        self.write("compiler/header_fails")
        self.run_wrapper()
        os.remove(self.path("compiler/header_fails"))
        moment = time.time() - 2 * 3600
        os.utime(os.path.join(self.fast, "failed"), (moment, moment))
        self.assertEqual(len(self.header_calls(self.run_wrapper())), 1)

    def test_directory_in_the_place_of_the_executable(self):
        os.mkdir(self.executable)
        command = self.command()
        process = self.start(command)
        _, errors = process.communicate(timeout=60)
        self.assertNotEqual(process.returncode, 0)
        self.assertIn("app.exe", errors)
        self.assertEqual(os.listdir(self.executable), [])

    def test_read_only_folder_of_the_program(self):
        os.chmod(self.path("work"), 0o555)
        process = self.start(self.command())
        _, errors = process.communicate(timeout=60)
        self.assertNotEqual(process.returncode, 0)
        self.assertNotEqual(errors, "")
        self.assertFalse(os.path.exists(self.executable))


class Changes(WrapperTest):
    def assert_made_anew(self):
        self.assertEqual(len(self.header_calls(self.run_wrapper())), 1)
        self.assertEqual(self.header_calls(self.run_wrapper()), [])

    def setUp(self):
        super().setUp()
        self.run_wrapper()

    def test_header_of_the_compiler(self):
        self.write("compiler/two.h", "a longer text than before")
        self.assert_made_anew()

    def test_compiler(self):
        self.change(self.path("compiler/cc1plus"))
        self.assert_made_anew()

    def test_removed_header(self):
        os.remove(self.path("compiler/one.h"))
        calls = self.run_wrapper()
        self.assertEqual(len(self.header_calls(calls)), 1)

    def test_new_header_in_the_installation(self):
        self.write(f"{self.top}/tools/include/string", "")
        self.change(os.path.join(self.tools, "include"))
        self.assert_made_anew()

    def test_changed_runtime(self):
        for name in (*TEXTS, "runtime.o"):
            self.change(os.path.join(self.fast, name))
            self.assert_made_anew()

    def test_updated_installation(self):
        self.change(self.wrapper)
        self.assert_made_anew()

    def test_moved_installation(self):
        os.rename(self.path(self.top), self.path("elsewhere"))
        self.tools = self.path("elsewhere", "tools")
        self.fast = os.path.join(self.tools, "fast")
        self.wrapper = os.path.join(self.tools, "bin", "g++.exe")
        self.assert_made_anew()


class ReadOnly(WrapperTest):
    def setUp(self):
        super().setUp()
        for folder, _, _ in os.walk(self.path(self.top)):
            os.chmod(folder, 0o555)

    def assert_header_below(self, folder):
        calls = self.run_wrapper()
        self.assertEqual(len(self.header_calls(calls)), 1)
        self.assertIn(f"-include {folder}/", calls[-1])
        beside = os.listdir(calls[-1].split("-include ")[1].split("/includes.h")[0])
        self.assertLessEqual({"includes.h", "entries.h", "lists.h"}, set(beside))
        self.assertEqual(sorted(os.listdir(self.fast)),
                         TEXTS)
        self.assertEqual(self.header_calls(self.run_wrapper()), [])

    def test_header_goes_into_the_home_directory(self):
        self.assert_header_below(self.path("home", ".cache", "orvane"))

    def test_header_goes_into_the_cache_directory(self):
        self.environment["XDG_CACHE_HOME"] = self.path("home", "my cache")
        self.assert_header_below(self.path("home", "my cache", "orvane"))

    def test_header_with_symbols_lies_apart_there_too(self):
        self.run_wrapper()
        calls = self.run_wrapper(self.command("-g"))
        self.assertEqual(len(self.header_calls(calls)), 1)
        self.assertIn(f"-include {self.cache()}/symbols/includes.h ", calls[-1])
        self.assertIn(self.use_of(self.cache()), self.run_wrapper()[0])

    def test_nowhere_to_write(self):
        del self.environment["HOME"]
        calls = self.run_wrapper()
        self.assertEqual(len(calls), 1)
        self.assertNotIn("-include", calls[0])
        self.assertEqual(self.program(), "complete ")


class AtOnce(WrapperTest):
    def test_second_build_does_not_wait_for_the_header_of_the_first(self):
        self.write("compiler/wait")
        first = self.start(self.command())
        self.wait_until(lambda: os.path.exists(self.path("compiler/waiting")))
        second = self.start(self.command(output=self.path("work", "second.exe")))
        self.assertEqual(second.communicate(timeout=60), ("", ""))
        self.assertEqual(second.returncode, 0)
        self.assertEqual(self.read("work/second.exe"), "complete ")
        self.assertIsNone(first.poll())
        os.remove(self.path("compiler/wait"))
        self.assertEqual(first.communicate(timeout=60), ("", ""))
        self.assertEqual(first.returncode, 0)
        calls = self.read("compiler/calls").splitlines()
        self.assertEqual(len(self.header_calls(calls)), 1)
        self.assertFalse(os.path.exists(self.path("home", ".cache")))

    def test_killed_while_making_the_header(self):
        self.write("compiler/wait")
        process = subprocess.Popen(self.command(), env=self.environment, start_new_session=True,
                                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL, **NOBODY)
        self.wait_until(lambda: os.path.exists(self.path("compiler/waiting")))
        os.killpg(process.pid, signal.SIGKILL)
        process.wait(timeout=60)
        os.remove(self.path("compiler/wait"))
        self.assertEqual(len(self.header_calls(self.run_wrapper())), 1)
        self.assertEqual(self.read(f"{self.top}/tools/fast/includes.h.gch"), "header\n")

    def test_killed_while_linking(self):
        self.run_wrapper()
        os.chmod(self.fast, 0o555)
        os.remove(os.path.join(self.fast, "made"))
        del self.environment["HOME"]
        self.write("compiler/wait")
        self.write("compiler/wait_in_program")
        process = subprocess.Popen(self.command(), env=self.environment, start_new_session=True,
                                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL, **NOBODY)
        self.wait_until(lambda: os.path.exists(self.path("compiler/waiting")))
        self.assertEqual(self.program(), "complete ")
        os.killpg(process.pid, signal.SIGTERM)
        self.assertNotEqual(process.wait(timeout=60), 0)
        self.assertEqual(self.program(), "complete ")
        self.no_leftovers()

    def test_many_builds_of_one_program(self):
        processes = [self.start(self.command()) for _ in range(8)]
        for process in processes:
            self.assertEqual(process.communicate(timeout=60), ("", ""))
            self.assertEqual(process.returncode, 0)
        self.assertEqual(self.program(), "complete ")
        self.no_leftovers()
        self.assertEqual(len(self.header_calls(self.read("compiler/calls").splitlines())), 1)


class OddNames(Programs):
    top = "it's a $HOME \"Übung\" 中文 *"


if __name__ == "__main__":
    PACKAGING = os.path.abspath(sys.argv.pop(1))
    unittest.main()
