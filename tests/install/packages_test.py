#!/usr/bin/env python3
"""The archives of `make packages`; the one for Windows under Wine, as its user would work with it.

    packages_test.py PATH/TO/sources PATH/TO/ui_driver.exe
"""

import contextlib
import glob
import hashlib
import os
import re
import shutil
import subprocess
import sys
import tarfile
import tempfile
import unittest
import zipfile

from portable_executable import imported_libraries, SYSTEM_LIBRARIES
from small_disk import small_disk

SOURCES = UI_DRIVER = None
HERE = os.path.dirname(os.path.abspath(__file__))
WINE_RUN = os.path.join(HERE, "..", "driver", "wine_run.sh")
TREE = ["CHANGELOG.md", "README.md", "docs/language.md", "docs/installing.md",
        "examples/tea_timer.vorla", "licences/README.md", "orlib/normal.orlib",
        "tools/bin/g++.exe", "tools/bin/resource.o", "tools/fast/includes.h",
        "tools/fast/runtime.cpp", "tools/fast/runtime.options", "tools/fast/memory.h",
        "tools/fast/texts.h", "tools/fast/entries.h", "tools/fast/lists.h",
        "tools/fast/value.h",
        "tools/include/commctrl.h", "tools/include/dlgs.h", "tools/include/windows.h",
        "tools/orlib/README.txt", "tools/parameter/README.txt"]
TOOLCHAIN = ["tools/mingw64/bin/g++.exe", "tools/mingw64/x86_64-w64-mingw32/bin/ld.exe",
             "tools/mingw64/share/licenses/COPYING3", "tools/mingw64/share/licenses/SOURCES.md",
             "tools/mingw64/share/licenses/COPYING.RUNTIME"]


def archive(system):
    kind = {"windows": "zip", "linux": "tar.gz"}[system]
    return os.path.join(SOURCES, "build", "packages", f"orvane-6.0.0-{system}-x64.{kind}")


def read(path):
    with open(path, "rb") as file:
        return file.read()


class Files(unittest.TestCase):
    def test_checksums(self):
        for system in ("windows", "linux"):
            path = archive(system)
            self.assertEqual(read(path + ".sha256").decode(),
                             f"{hashlib.sha256(read(path)).hexdigest()}  {os.path.basename(path)}\n")

    def test_windows_archive_is_below_40_megabytes(self):
        size = os.path.getsize(archive("windows"))
        print(f"Windows archive: {size} bytes")
        self.assertLess(size, 40_000_000)

    def test_trees_are_complete(self):
        with zipfile.ZipFile(archive("windows")) as packed:
            windows = {name.split("/", 1)[1] for name in packed.namelist()}
            tops = {name.split("/", 1)[0] for name in packed.namelist()}
        with tarfile.open(archive("linux")) as packed:
            linux = {name.split("/", 1)[1] for name in packed.getnames()}
            tops |= {name.split("/", 1)[0] for name in packed.getnames()}
        self.assertEqual(tops, {"orvane-6.0.0-windows-x64", "orvane-6.0.0-linux-x64"})
        self.assertEqual({*TREE, *TOOLCHAIN, "orvane.exe", "orvanec.exe"} - windows, set())
        self.assertEqual({*TREE, "orvane", "orvanec"} - linux, set())

    def test_packing_again_gives_the_same_bytes(self):
        for system in ("windows", "linux"):
            before = read(archive(system))
            build = os.path.join(SOURCES, "build", f"package-{system}")
            subprocess.run(["cpack"], cwd=build, stdin=subprocess.DEVNULL,
                           stdout=subprocess.DEVNULL, check=True)
            again = os.path.join(build, "packages", os.path.basename(archive(system)))
            self.assertTrue(read(again) == before, f"{system}: other bytes")

    def test_no_folder_of_this_machine_is_in_it(self):
        with zipfile.ZipFile(archive("windows")) as packed:
            for name in packed.namelist():
                self.assertNotIn(SOURCES.encode(), packed.read(name), name)
        with tarfile.open(archive("linux")) as packed:
            for entry in packed:
                if entry.isfile():
                    self.assertNotIn(SOURCES.encode(), packed.extractfile(entry).read(), entry.name)


class Unpacked(unittest.TestCase):
    system = None

    def setUp(self):
        self.folder = os.path.realpath(tempfile.mkdtemp(prefix="Orvane \u00dcbung \u4e2d\u6587 "))
        self.addCleanup(shutil.rmtree, self.folder)
        shutil.unpack_archive(archive(self.system), self.folder)
        unpacked, = os.listdir(self.folder)
        self.installed = os.path.join(self.folder, unpacked)
        self.project = os.path.join(self.folder, "Mein Projekt \u00e4\u00f6\u00fc")
        os.mkdir(self.project)

    def copy_example(self, name, to="app"):
        source = os.path.join(self.project, to + ".vorla")
        shutil.copy(os.path.join(self.installed, "examples", name + ".vorla"), source)
        return source

    def run_in_project(self, *command, status=0, timeout=600, **more):
        result = subprocess.run(command, cwd=self.project, stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False,
                                timeout=timeout,
                                env={**os.environ, "ORVANE_TEST_TIMEOUT": str(timeout)}, **more)
        output = result.stdout.decode(errors="replace").replace("\r\n", "\n")
        self.assertEqual(result.returncode, status, output)
        return output


class LinuxArchive(Unpacked):
    system = "linux"

    def test_builds_a_program(self):
        source = self.copy_example("tea_timer", "Tee \u8336")
        for _ in range(2):
            output = self.run_in_project(os.path.join(self.installed, "orvanec"), source, "--normal")
            self.assertIn("=== Build complete! ===", output)
            self.assertLessEqual(imported_libraries(source.replace(".vorla", ".exe")),
                                 SYSTEM_LIBRARIES)

    def test_compiler_needs_only_the_c_library(self):
        output = subprocess.run(["objdump", "-p", os.path.join(self.installed, "orvanec")],
                                stdout=subprocess.PIPE, text=True, check=True).stdout
        needed = set(re.findall(r"NEEDED\s+(\S+)", output))
        self.assertLessEqual(needed, {"libc.so.6", "libm.so.6", "ld-linux-x86-64.so.2"})
        self.assertIn("libc.so.6", needed)


class WindowsArchive(Unpacked):
    system = "windows"

    def compiler(self):
        return os.path.join(self.installed, "orvanec.exe")

    def test_programs_of_the_archive_need_only_the_system(self):
        programs = glob.glob(os.path.join(self.installed, "**", "*.exe"), recursive=True)
        self.assertGreaterEqual(len(programs), 7)
        for program in programs:
            self.assertLessEqual(imported_libraries(program), SYSTEM_LIBRARIES, program)

    def test_unzip_and_run(self):
        self.copy_example("tea_timer", "Tee \u8336")
        executable = os.path.join(self.project, "Tee \u8336.exe")
        for _ in range(2):  # the first makes the precompiled header, the second uses it
            output = self.run_in_project(WINE_RUN, self.compiler(), "Tee \u8336.vorla", "--normal")
            self.assertIn("=== Build complete! ===", output)
            self.assertLessEqual(imported_libraries(executable), SYSTEM_LIBRARIES)
            self.assertTrue(os.path.isfile(os.path.join(self.installed,
                                                        "tools/fast/includes.h.gch")))
        result = subprocess.run([WINE_RUN, UI_DRIVER, "Z:" + executable.replace("/", "\\")],
                                input=b"window Tea Timer\nclose\nexit\n", stdout=subprocess.PIPE,
                                timeout=120, check=True)
        self.assertNotIn(b"FAILED", result.stdout)

        source = os.path.join(self.project, "wrong.vorla")
        with open(source, "w", encoding="utf-8") as file:
            file.write('vorla Main { button b { on click { unknownFunction(1); } } }\n')
        output = self.run_in_project(WINE_RUN, self.compiler(), source, status=1)
        self.assertIn("Error: Compilation failed (exit code 1).", output)
        self.assertFalse(os.path.exists(os.path.join(self.project, "wrong.exe")))

    def test_hello_program_is_small(self):
        source = os.path.join(self.project, "hello.vorla")
        with open(source, "w", encoding="utf-8") as file:
            file.write('vorla Hello { title = "Hello" button b { on click { int x = 1; } } }\n')
        self.run_in_project(WINE_RUN, self.compiler(), "hello.vorla", "--debug")
        self.run_in_project(WINE_RUN, self.compiler(), "hello.vorla")
        self.assertLess(os.path.getsize(os.path.join(self.project, "hello.exe")), 300_000)

    def test_project_path_of_more_than_260_characters(self):
        self.project = os.path.join(self.project, *["a folder with a rather long name, number 1"] * 6)
        os.makedirs(self.project)
        source = self.copy_example("tea_timer")
        self.assertGreater(len(source), 300)
        output = self.run_in_project(WINE_RUN, self.compiler(), "Z:" + source.replace("/", "\\"),
                                     "--normal")
        self.assertIn("=== Build complete! ===", output)
        self.assertLessEqual(imported_libraries(source.replace(".vorla", ".exe")), SYSTEM_LIBRARIES)

    def test_full_disk_under_the_project(self):
        disk = os.path.join(self.folder, "disk")
        os.mkdir(disk)
        # Room for both C++ files, not for an executable.
        unmount, limit = small_disk(disk, 150_000)
        with contextlib.ExitStack() as stack:
            stack.callback(unmount)
            self.project = disk
            self.copy_example("tea_timer")
            output = self.run_in_project(WINE_RUN, self.compiler(), "app.vorla", status=1,
                                         preexec_fn=limit)
            self.assertNotIn("Build complete", output)
            self.assertFalse(os.path.exists(os.path.join(disk, "app.exe")))

    def test_two_builds_at_once_with_a_new_installation(self):
        # In folders of their own: the C++ files of a folder have fixed names.
        sources = []
        for name in ("tea_timer", "notepad"):
            os.mkdir(os.path.join(self.project, name))
            sources.append(self.copy_example(name, to=os.path.join(name, "app")))
        running = [subprocess.Popen([WINE_RUN, self.compiler(), "app.vorla", "--normal"],
                                    cwd=os.path.dirname(source), stdin=subprocess.DEVNULL,
                                    stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                    env={**os.environ, "ORVANE_TEST_TIMEOUT": "600"})
                   for source in sources]
        outputs = [process.communicate(timeout=600)[0].decode(errors="replace")[-500:]
                   for process in running]
        self.assertEqual([process.returncode for process in running], [0, 0], outputs)
        for source in sources:
            self.assertLessEqual(imported_libraries(source.replace(".vorla", ".exe")),
                                 SYSTEM_LIBRARIES)

    def test_without_its_toolchain(self):
        shutil.rmtree(os.path.join(self.installed, "tools", "mingw64"))
        self.copy_example("tea_timer")
        output = self.run_in_project(WINE_RUN, self.compiler(), "app.vorla", "--normal", status=1)
        self.assertIn("Error: Compilation failed (exit code 1).", output)
        output = self.run_in_project(
            WINE_RUN, os.path.join(self.installed, "tools", "bin", "g++.exe"), "-v", status=1)
        self.assertIn("g++.exe: the C++ compiler is missing: ", output)


if __name__ == "__main__":
    SOURCES, UI_DRIVER = (os.path.realpath(path) for path in sys.argv[1:3])
    del sys.argv[1:3]
    if not all(os.path.isfile(archive(system)) for system in ("windows", "linux")):
        sys.exit("There are no archives in build/packages: run `make packages` first.")
    unittest.main()
