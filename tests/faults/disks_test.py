#!/usr/bin/env python3
"""A disk that fills up at any byte: files of limited size, with the signal for it ignored.

    disks_test.py PATH/TO/orvanec
"""

import os
import resource
import signal
import subprocess

from project import Project, run_tests


class Disks(Project):
    def build(self, limit):
        def prepare():
            signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
            resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))
        return subprocess.run([self.installed.path("install/orvanec"), "app.vorla", "--keep-cpp"],
                              cwd=self.path(), stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, timeout=60, check=False, preexec_fn=prepare)

    def size(self, name):
        return os.path.getsize(self.path("code_generation", name))

    def test_a_file_cut_anywhere_is_never_compiled(self):
        self.assertEqual(self.build(resource.RLIM_INFINITY).returncode, 0)
        sizes = {name: self.size(name) for name in ("main.cpp", "import.hpp")}
        for name, size in sizes.items():
            for limit in (0, 1, 2, 3, 4, size // 2, size - 1):
                with self.subTest(name=name, limit=limit):
                    self.fresh()
                    result = self.build(limit)
                    cut = "main.cpp" if sizes["main.cpp"] > limit else "import.hpp"
                    self.assertEqual(result.returncode, 1)
                    self.assertTrue(result.stdout.decode().endswith(
                        f"Error: Cannot write '{self.path('code_generation', cut)}'\n"))
                    self.assertIsNone(self.seen())
                    self.assertFalse(self.installed.has("work/app.exe"))
                    self.check_user_files()
                    self.check_no_debris()

    def test_a_text_too_long_to_be_held_is_cut_no_differently(self):
        """Lists and child controls stand for fifty times their length, in either file."""
        long_sources = {
            "import.hpp": "S.script { void run() { " + "[1,2,3];" * 25_000 + " } }\n",
            "main.cpp": "vorla Main { " + "tab a{}" * 50_000 + " }\n",
        }
        for name, source in long_sources.items():
            self.installed.write("work/app.vorla", source)
            self.assertEqual(self.build(resource.RLIM_INFINITY).returncode, 0)
            whole = self.seen()
            size = self.size(name)
            self.assertGreater(size, 8_000_000)
            for limit in (size - 1, size // 2):
                with self.subTest(name=name, limit=limit):
                    self.fresh()
                    self.installed.write("work/app.vorla", source)
                    result = self.build(limit)
                    self.assertEqual(result.returncode, 1)
                    self.assertTrue(result.stdout.decode().endswith(
                        f"Error: Cannot write '{self.path('code_generation', name)}'\n"))
                    self.assertIsNone(self.seen())
                    self.check_no_debris()
            with self.subTest(name=name, limit=size):
                self.assertEqual(self.build(size).returncode, 0)
                self.assertEqual(self.seen(), whole)

    def test_enough_room_to_the_byte_is_enough(self):
        self.assertEqual(self.build(resource.RLIM_INFINITY).returncode, 0)
        largest = max(self.size("main.cpp"), self.size("import.hpp"))
        self.fresh()
        self.assertEqual(self.build(largest).returncode, 0)

    def test_standard_output_that_is_full_does_not_stop_the_build(self):
        with open("/dev/full", "wb") as full:
            status = subprocess.run([self.installed.path("install/orvanec"), "app.vorla"],
                                    cwd=self.path(), stdin=subprocess.DEVNULL, stdout=full,
                                    timeout=60, check=False).returncode
        self.assertEqual(status, 0)
        self.assertIsNotNone(self.seen())

    def test_closed_standard_streams_do_not_reach_the_files(self):
        def close_all():
            for descriptor in (0, 1, 2):
                os.close(descriptor)
        status = subprocess.run([self.installed.path("install/orvanec"), "app.vorla", "--keep-cpp"],
                                cwd=self.path(), timeout=60, check=False,
                                preexec_fn=close_all).returncode
        self.assertEqual(status, 0)
        main, header = self.seen()
        for text in (main, header):
            self.assertTrue(text.startswith(b"\xef\xbb\xbf// "))
            self.assertNotIn(b"[1/7]", text)
            self.assertNotIn(b"Command:", text)


if __name__ == "__main__":
    run_tests()
