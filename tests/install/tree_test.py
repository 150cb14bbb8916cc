#!/usr/bin/env python3
"""The installation tree on Linux, what its headers and its resource hold, and the archives.

    tree_test.py PATH/TO/stage PATH/TO/packaging
"""

import os
import re
import shutil
import struct
import subprocess
import sys
import tarfile
import tempfile
import unittest
import zipfile

STAGE = PACKAGING = None
CROSS = "x86_64-w64-mingw32-"


def run(*command, **options):
    result = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                            stderr=subprocess.STDOUT, text=True, timeout=120, check=False,
                            **options)
    if result.returncode != 0:
        raise AssertionError(f"{command[0]} ended with {result.returncode}: {result.stdout}")
    return result.stdout


class TestWithFolder(unittest.TestCase):
    def setUp(self):
        self.root = tempfile.mkdtemp(prefix="orvane-")
        self.addCleanup(shutil.rmtree, self.root)

    def path(self, *names):
        return os.path.join(self.root, *names)

    def write(self, name, content, mode=0o644):
        os.makedirs(os.path.dirname(self.path(name)), exist_ok=True)
        with open(self.path(name), "w", encoding="utf-8") as file:
            file.write(content)
        os.chmod(self.path(name), mode)


class Tree(unittest.TestCase):
    def test_everything_is_in_its_place(self):
        for name in ("orvane", "orvanec", "orlib/normal.orlib", "examples/calculator.vorla",
                     "docs/language.md", "docs/installing.md", "licences/README.md",
                     "tools/bin/g++.exe", "tools/bin/resource.o", "tools/include/commctrl.h",
                     "tools/include/dlgs.h", "tools/include/windows.h", "tools/fast/includes.h",
                     "tools/fast/runtime.cpp", "tools/fast/runtime.options",
                     "tools/fast/memory.h", "tools/fast/texts.h", "tools/fast/entries.h",
                     "tools/fast/lists.h", "tools/fast/value.h",
                     "tools/orlib/README.txt", "tools/parameter/README.txt"):
            self.assertTrue(os.path.isfile(os.path.join(STAGE, name)), name)

    def test_only_programs_are_executable(self):
        found = {os.path.relpath(os.path.join(folder, name), STAGE)
                 for folder, _, names in os.walk(STAGE) for name in names
                 if os.access(os.path.join(folder, name), os.X_OK)
                 and os.stat(os.path.join(folder, name)).st_mode & 0o111}
        self.assertEqual(found, {"orvane", "orvanec", "tools/bin/g++.exe"})

    def test_precompiled_includes_are_those_of_every_program(self):
        with tempfile.TemporaryDirectory() as folder:
            source = os.path.join(folder, "app.vorla")
            with open(source, "w", encoding="utf-8") as file:
                file.write("vorla Main { }\n")
            run(os.path.join(STAGE, "orvanec"), source, "--keep-cpp")
            with open(os.path.join(folder, "code_generation", "import.hpp"),
                      encoding="utf-8-sig") as file:
                written = re.findall(r"^#include .*$", file.read(), re.M)
        with open(os.path.join(STAGE, "tools/fast/includes.h"), encoding="utf-8") as file:
            always, with_runtime = file.read().split("#ifdef ORVANE_VALUE_COMPILED\n")
        self.assertEqual(re.findall(r"^#include .*$", always, re.M), written)
        self.assertEqual(with_runtime, '#include "entries.h"\n#include "lists.h"\n#endif\n')


class Resource(TestWithFolder):
    def setUp(self):
        super().setUp()
        self.text = run(CROSS + "windres", "-J", "coff", "-O", "rc",
                        os.path.join(STAGE, "tools/bin/resource.o"))
        with open(os.path.join(PACKAGING, "orvane.manifest"), encoding="utf-8") as file:
            self.manifest = file.read()

    def test_holds_icon_version_and_manifest(self):
        self.assertEqual(self.icon_sizes(), {16, 24, 32, 48, 256})
        self.assertRegex(self.text, r"VERSIONINFO")
        self.assertRegex(self.text, r'"ProductName", "Program made with Orvane"')
        with open(os.path.join(STAGE, "tools/bin/resource.o"), "rb") as file:
            self.assertIn(self.manifest.encode(), file.read())

    def icon_sizes(self):
        with open(os.path.join(PACKAGING, "orvane.ico"), "rb") as file:
            content = file.read()
        count = struct.unpack_from("<HHH", content)[2]
        return {content[6 + 16 * number] or 256 for number in range(count)}

    def test_manifest_asks_for_what_programs_need(self):
        for part in ("Microsoft.Windows.Common-Controls", 'version="6.0.0.0"',
                     ">UTF-8</activeCodePage>", ">true</gdiScaling>", ">true</longPathAware>",
                     'level="asInvoker"', "{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}"):
            self.assertIn(part, self.manifest)
        self.assertNotIn("dpiAware>", self.manifest)

    def test_icon_is_what_its_script_draws(self):
        run(sys.executable, os.path.join(PACKAGING, "draw_icon.py"), self.path("drawn.ico"))
        with open(self.path("drawn.ico"), "rb") as drawn:
            with open(os.path.join(PACKAGING, "orvane.ico"), "rb") as kept:
                self.assertEqual(drawn.read(), kept.read())


class Headers(TestWithFolder):
    def compile(self, text):
        self.write("x.cpp", text)
        return run(os.path.join(STAGE, "tools/bin/g++.exe"), "-std=c++17", "-Og", "-Wall",
                   f"-I{STAGE}/tools/include", self.path("x.cpp"), "-o", self.path("x.exe"),
                   "-luser32", "-lgdi32", "-lkernel32", "-lcomctl32", "-lcomdlg32", "-lshell32",
                   "-ladvapi32", "-mwindows")

    def test_lean_windows_header_declares_all_that_programs_can_link(self):
        self.compile("""
            #include <windows.h>
            #include <commctrl.h>
            #include <algorithm>
            int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
                const void* functions[] = {
                    (void*)MessageBoxA, (void*)DdeInitializeA, (void*)TextOutA, (void*)Sleep,
                    (void*)InitCommonControlsEx, (void*)GetOpenFileNameA, (void*)ChooseColorA,
                    (void*)CommDlgExtendedError, (void*)ShellExecuteA, (void*)DragQueryFileA,
                    (void*)RegOpenKeyExA, (void*)CryptAcquireContextA, (void*)EncryptFileA,
                    (void*)GetUserNameA, (void*)OpenServiceA};
                return std::min(1, std::max(0, functions[0] ? CDERR_DIALOGFAILURE : 0));
            }
        """)

    def test_control_names_are_no_macros(self):
        self.compile("""
            #include <windows.h>
            #include <commctrl.h>
            int rad1, lst2, edt1, cmb1, psh1, grp1, ico1, chx1, stc1, scr1, frm1, rct1, pshHelp;
            int min, max;
            int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) { return rad1; }
        """)

    def test_tab_item_keeps_a_copy_of_its_text(self):
        self.compile("""
            #include <windows.h>
            #include <commctrl.h>
            #include <string>
            std::string made(const char* text) { return text; }
            int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
                TCITEMA item = {0};
                item.mask = TCIF_TEXT;
                item.pszText = made("General").c_str();
                char* text = item.pszText;
                return text[0];
            }
        """)


class Archives(TestWithFolder):
    def setUp(self):
        super().setUp()
        self.write("tree/b/program", "x", 0o755)
        self.write("tree/b/text \u4e2d", "y" * 1000)
        self.write("tree/a", "z", 0o600)
        os.mkdir(self.path("tree/empty"))

    def pack(self, output, tree="tree", **environment):
        run(sys.executable, os.path.join(PACKAGING, "archive.py"), self.path(tree),
            self.path(output), env={**os.environ, **environment})
        with open(self.path(output), "rb") as file:
            return file.read()

    def test_same_files_give_same_bytes(self):
        for kind in ("zip", "tar.gz"):
            os.makedirs(self.path("one"), exist_ok=True)
            first = self.pack(f"one/tree-1.{kind}")
            copy = self.path("copy " + kind)
            os.mkdir(copy)
            for name in ("empty", "b"):  # made in another order, at another time, with other rights
                os.mkdir(os.path.join(copy, name))
            for name in ("b/text \u4e2d", "a", "b/program"):
                shutil.copyfile(self.path("tree", name), os.path.join(copy, name))
                os.utime(os.path.join(copy, name), (5e8, 5e8))
            os.chmod(os.path.join(copy, "b/program"), 0o700)
            os.makedirs(self.path("two"), exist_ok=True)
            second = self.pack(f"two/tree-1.{kind}", tree=copy, TZ="Asia/Tokyo", LC_ALL="C")
            self.assertEqual(first, second, kind)

    def test_time_is_taken_from_the_environment(self):
        self.pack("t.tar.gz", SOURCE_DATE_EPOCH="1000000000")
        with tarfile.open(self.path("t.tar.gz")) as archive:
            self.assertEqual({entry.mtime for entry in archive}, {1000000000})
        self.pack("t.zip", SOURCE_DATE_EPOCH="1000000000")
        with zipfile.ZipFile(self.path("t.zip")) as archive:
            self.assertEqual({entry.date_time for entry in archive.infolist()},
                             {(2001, 9, 9, 1, 46, 40)})

    def test_tar_has_fixed_owners_modes_and_order(self):
        self.pack("tree-1.tar.gz")
        with tarfile.open(self.path("tree-1.tar.gz")) as archive:
            self.assertEqual(
                [(entry.name, entry.mode, entry.uid, entry.gid, entry.isdir())
                 for entry in archive],
                [("tree-1/a", 0o644, 0, 0, False), ("tree-1/b", 0o755, 0, 0, True),
                 ("tree-1/b/program", 0o755, 0, 0, False),
                 ("tree-1/b/text \u4e2d", 0o644, 0, 0, False),
                 ("tree-1/empty", 0o755, 0, 0, True)])

    def test_zip_keeps_names_contents_and_empty_folders(self):
        self.pack("tree-1.zip")
        with zipfile.ZipFile(self.path("tree-1.zip")) as archive:
            self.assertIsNone(archive.testzip())
            self.assertEqual(archive.namelist(),
                             ["tree-1/a", "tree-1/b/", "tree-1/b/program", "tree-1/b/text \u4e2d",
                              "tree-1/empty/"])
            self.assertEqual(archive.read("tree-1/b/text \u4e2d"), b"y" * 1000)

    def test_checksum_is_that_of_the_archive(self):
        self.pack("tree-1.zip")
        self.assertEqual(run("sha256sum", "-c", "tree-1.zip.sha256", cwd=self.root),
                         "tree-1.zip: OK\n")

    def test_links_and_unknown_kinds_are_refused(self):
        with self.assertRaisesRegex(AssertionError, "ends in none of .zip, .tar.gz"):
            self.pack("t.rar")
        os.symlink("a", self.path("tree/link"))
        with self.assertRaisesRegex(AssertionError, "is a symbolic link"):
            self.pack("t.zip")
        self.assertFalse(os.path.exists(self.path("t.zip")))


if __name__ == "__main__":
    STAGE, PACKAGING = (os.path.abspath(path) for path in sys.argv[1:3])
    del sys.argv[1:3]
    unittest.main()
