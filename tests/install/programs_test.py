#!/usr/bin/env python3
"""Programs built by an installation on Linux, with the real cross compiler.

    programs_test.py PATH/TO/stage PATH/TO/packaging
"""

import contextlib
import os
import re
import resource
import shutil
import subprocess
import sys
import tempfile
import unittest

from portable_executable import imported_libraries, SYSTEM_LIBRARIES
from small_disk import small_disk

STAGE = None
CROSS_COMPILERS = ("x86_64-w64-mingw32-g++-posix", "x86_64-w64-mingw32-g++")
LIBRARIES = ("-luser32 -lgdi32 -lkernel32 -lcomctl32 -lcomdlg32 -lshell32 -ladvapi32 "
             "-mwindows").split()
NOBODY = {"user": 65534, "group": 65534, "extra_groups": []} if os.geteuid() == 0 else {}

HELLO = """\
vorla Hello {
    title = "Hello"
    width = 300
    height = 200
    button greet { text = "Greet"; x = 10; y = 10; on click { string x = "Hello"; } }
}
"""


class ProgramsTest(unittest.TestCase):
    def setUp(self):
        self.root = os.path.realpath(tempfile.mkdtemp(prefix="orvane-"))
        self.addCleanup(shutil.rmtree, self.root)
        os.chmod(self.root, 0o755)
        os.mkdir(self.path("work"))

    def path(self, *names):
        return os.path.join(self.root, *names)

    def write(self, path, content=HELLO):
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as file:
            file.write(content)
        return path

    def install(self, folder):
        """A copy of the installation, without the precompiled header."""
        shutil.copytree(STAGE, folder,
                        ignore=shutil.ignore_patterns("*.gch", "made", "names", "lock", "failed",
                                                      "symbols"))
        return os.path.join(folder, "orvanec")

    def size_of_installation(self):
        """In bytes, without the precompiled header."""
        return sum(os.path.getsize(os.path.join(folder, name))
                   for folder, _, names in os.walk(STAGE) for name in names
                   if not name.endswith(".gch"))

    def build(self, source, *options, compiler=None, status=0, **more):
        result = subprocess.run([compiler or os.path.join(STAGE, "orvanec"), source, *options],
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, timeout=120, check=False, **more)
        output = result.stdout.decode(errors="replace")
        if status is not None:
            self.assertEqual(result.returncode, status, output)
        self.status = result.returncode
        return output

    def assert_complete(self, executable):
        """Its sections lie within the file, and it asks for nothing but the system."""
        self.assertLessEqual(imported_libraries(executable), SYSTEM_LIBRARIES)


class HelloProgram(ProgramsTest):
    def test_is_small_and_needs_only_the_system(self):
        self.build(self.write(self.path("work", "hello.vorla")))
        self.assertLess(os.path.getsize(self.path("work", "hello.exe")), 300_000)
        self.assert_complete(self.path("work", "hello.exe"))
        self.assertEqual(os.listdir(self.path("work", "code_generation")), [])

    def test_costs_at_most_half_of_the_plain_command(self):
        source = self.write(self.path("work", "hello.vorla"))
        self.build(source, "--keep-cpp")
        plain = next(filter(None, map(shutil.which, CROSS_COMPILERS)))
        command = [plain, "-std=c++17", "-Og", "-finput-charset=UTF-8",
                   self.path("work", "code_generation", "main.cpp"),
                   os.path.join(STAGE, "tools", "bin", "resource.o"), "-o", self.path("plain.exe"),
                   *LIBRARIES]
        ours = min(self.cpu_time([os.path.join(STAGE, "orvanec"), source, "--keep-cpp"])
                   for _ in range(3))
        theirs = min(self.cpu_time(command) for _ in range(3))
        print(f"CPU time: whole build {ours:.2f} s, plain command {theirs:.2f} s, "
              f"ratio {ours / theirs:.2f}")
        self.assertLessEqual(ours, theirs / 2)

    def cpu_time(self, command):
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, check=True)
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime

    def test_precompiled_headers_serve_programs_with_and_without_symbols(self):
        source = self.write(self.path("work", "hello.vorla"))
        compiler = next(filter(None, map(shutil.which, CROSS_COMPILERS)))
        for option, words, folder in (
                ("--keep-cpp", ["-DORVANE_VALUE_COMPILED"], "tools/fast"),
                ("--debug", ["-g"], "tools/fast/symbols")):
            self.build(source, "--keep-cpp", option)
            header = os.path.join(STAGE, folder, "includes.h")
            result = subprocess.run(
                [compiler, "-include", header, "-std=c++17",
                 "-Og", *words, "-finput-charset=UTF-8", "-H", "-Winvalid-pch",
                 self.path("work", "code_generation", "main.cpp"), "-c", "-o", "/dev/null",
                 f"-I{STAGE}/tools/include", "-mwindows"],
                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=True)
            self.assertIn(f"! {header}.gch", result.stderr)
            # A build that had to do without would have discarded it.
            self.assertTrue(os.path.exists(os.path.join(STAGE, folder, "made")))

    def test_lists_and_maps_of_the_installation_bring_no_other_header(self):
        """A program must not compile because of them that does not otherwise."""
        compiler = next(filter(None, map(shutil.which, CROSS_COMPILERS)))
        fast = os.path.join(STAGE, "tools/fast")
        found = []
        for words in ([], ["-DORVANE_VALUE_COMPILED"]):
            result = subprocess.run(
                [compiler, "-std=c++17", *words, f"-I{STAGE}/tools/include", "-fsyntax-only", "-H",
                 "-x", "c++", f"{fast}/includes.h"],
                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=True)
            found.append(set(re.findall(r"^\.+ (.*)$", result.stderr, re.M)))
        self.assertGreater(len(found[0]), 100)
        self.assertEqual(found[1] - found[0], {f"{fast}/entries.h", f"{fast}/lists.h"})

    def test_debug_program_keeps_its_symbols(self):
        self.build(self.write(self.path("work", "hello.vorla")), "--debug")
        with open(self.path("work", "hello.exe"), "rb") as file:
            self.assertIn(b".debug_info", file.read())
        self.assert_complete(self.path("work", "hello.exe"))


class Paths(ProgramsTest):
    def test_installation_and_project_with_odd_names(self):
        compiler = self.install(self.path("My \u00dcbung \u4e2d\u6587 'x' $y", "orvane"))
        source = self.write(self.path("work", "Stra\u00dfe & \u6587\u4ef6 'a' $b", "m\u00fcll 1.vorla"))
        for _ in range(2):
            self.build(source, compiler=compiler)
            self.assert_complete(source.replace(".vorla", ".exe"))
        self.assertTrue(os.path.exists(
            os.path.join(os.path.dirname(compiler), "tools/fast/includes.h.gch")))

    def test_project_path_of_more_than_260_characters(self):
        folder = self.path("work", *(["a folder with a rather long name indeed, number 1"] * 6))
        source = self.write(os.path.join(folder, "app.vorla"))
        self.assertGreater(len(source), 300)
        self.build(source)
        self.assert_complete(os.path.join(folder, "app.exe"))


class BadPlaces(ProgramsTest):
    def test_read_only_installation(self):
        compiler = self.install(self.path("installed"))
        for folder, _, _ in os.walk(self.path("installed")):
            os.chmod(folder, 0o555)
        source = self.write(self.path("work", "app.vorla"))
        os.mkdir(self.path("home"))
        for folder in ("work", "home"):
            os.chmod(self.path(folder), 0o777)
        environment = {**os.environ, "HOME": self.path("home")}
        environment.pop("XDG_CACHE_HOME", None)
        try:
            for _ in range(2):
                self.build(source, compiler=compiler, env=environment, **NOBODY)
                self.assert_complete(self.path("work", "app.exe"))
        finally:
            for folder, _, _ in os.walk(self.path("installed")):
                os.chmod(folder, 0o755)
        self.assertFalse(os.path.exists(self.path("installed/tools/fast/includes.h.gch")))
        cached = os.listdir(self.path("home/.cache/orvane"))
        self.assertEqual(len(cached), 1)
        self.assertIn("includes.h.gch", os.listdir(self.path("home/.cache/orvane", cached[0])))

    def test_read_only_project(self):
        source = self.write(self.path("work", "app.vorla"))
        os.chmod(self.path("work"), 0o555)
        output = self.build(source, status=1, **NOBODY)
        self.assertIn("Error: Cannot write '", output)
        self.assertEqual(os.listdir(self.path("work")), ["app.vorla"])
        os.chmod(self.path("work"), 0o755)

    def test_full_disk_under_the_project(self):
        source = self.write(self.path("work", "app.vorla"))
        self.build(source)
        with open(self.path("work", "app.exe"), "rb") as file:
            before = file.read()
        # Room for both C++ files (about 30 kB), not for an executable of more than 200 kB.
        disk = self.path("disk")
        os.mkdir(disk)
        unmount, limit = small_disk(disk, 100_000)
        with contextlib.ExitStack() as stack:
            stack.callback(unmount)
            full = self.write(os.path.join(disk, "app.vorla"))
            output = self.build(full, status=1, preexec_fn=limit)
            self.assertIn("Error: Compilation failed (exit code ", output)
            self.assertNotIn("Build complete", output)
            self.assertFalse(os.path.exists(os.path.join(disk, "app.exe")))
            self.assertEqual([name for name in os.listdir(disk) if name.startswith(".orvane")], [])
        with open(self.path("work", "app.exe"), "rb") as file:
            self.assertEqual(file.read(), before)

    def test_full_disk_under_the_installation(self):
        disk = self.path("disk")
        os.mkdir(disk)
        # Room for the tree, whose programs may be unstripped, not for the header of 100 MB.
        unmount, limit = small_disk(disk, self.size_of_installation() + 20_000_000)
        with contextlib.ExitStack() as stack:
            stack.callback(unmount)
            compiler = self.install(os.path.join(disk, "orvane"))
            source = self.write(self.path("work", "app.vorla"))
            self.build(source, compiler=compiler, preexec_fn=limit)
            self.assert_complete(self.path("work", "app.exe"))
            left = os.listdir(os.path.join(disk, "orvane/tools/fast"))
            self.assertEqual([name for name in left if name.endswith(".gch")], [])

    def test_broken_toolchain(self):
        compiler = self.install(self.path("installed"))
        gxx = self.path("installed/tools/bin/g++.exe")
        source = self.write(self.path("work", "app.vorla"))
        with open(gxx, "wb") as file:
            file.write(b"\x7fELF nothing else")
        self.assertIn("Error: Failed to start compiler.", self.build(source, compiler=compiler,
                                                                    status=1))
        self.write(gxx, "#!/bin/sh\nexit 7\n")
        self.assertIn("Error: Compilation failed (exit code 7).",
                      self.build(source, compiler=compiler, status=1))
        self.assertFalse(os.path.exists(self.path("work", "app.exe")))


class DamagedHeader(ProgramsTest):
    def setUp(self):
        super().setUp()
        self.compiler = self.install(self.path("installed"))
        self.source = self.write(self.path("work", "app.vorla"))
        self.build(self.source, compiler=self.compiler)
        self.header = self.path("installed/tools/fast/includes.h.gch")
        os.remove(self.path("work", "app.exe"))

    def damage(self, place, bytes_):
        state = os.stat(self.header)
        with open(self.header, "r+b") as file:
            file.seek(place)
            file.write(bytes_)
        os.utime(self.header, ns=(state.st_atime_ns, state.st_mtime_ns))

    def test_no_damage_fails_a_build(self):
        size = os.path.getsize(self.header)
        for place, bytes_ in ((0, b"nothing"), (100, b"\xff" * 4096), (size // 2, bytes(2_000_000)),
                              (size - 100_000, b"\x55" * 100_000)):
            self.damage(place, bytes_)
            output = self.build(self.source, compiler=self.compiler)
            self.assertNotIn("error:", output)
            self.assert_complete(self.path("work", "app.exe"))


class AtOnce(ProgramsTest):
    def test_many_programs_with_a_new_installation(self):
        compiler = self.install(self.path("installed"))
        sources = [self.write(self.path("work", str(number), "app.vorla")) for number in range(3)]
        running = [subprocess.Popen([compiler, source], stdin=subprocess.DEVNULL,
                                    stdout=subprocess.DEVNULL) for source in sources]
        self.assertEqual([process.wait(timeout=180) for process in running], [0, 0, 0])
        for source in sources:
            self.assert_complete(source.replace(".vorla", ".exe"))

    def test_same_program_several_times(self):
        source = self.write(self.path("work", "app.vorla"))
        command = [os.path.join(STAGE, "orvanec"), source, "--keep-cpp"]
        running = [subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                    stderr=subprocess.STDOUT) for _ in range(4)]
        outputs = [process.communicate(timeout=180)[0].decode() for process in running]
        for process, output in zip(running, outputs):
            self.assertEqual("=== Build complete! ===" in output, process.returncode == 0)
        self.assertIn(0, [process.returncode for process in running])
        self.assert_complete(self.path("work", "app.exe"))
        left = [name for name in os.listdir(self.path("work")) if name.startswith(".orvane")]
        self.assertEqual(left, [])


if __name__ == "__main__":
    STAGE = os.path.realpath(sys.argv[1])
    del sys.argv[1:3]
    unittest.main()
