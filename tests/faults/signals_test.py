#!/usr/bin/env python3
"""A build that is ended by a signal: at once while it works alone, with g++ while that runs.

    signals_test.py PATH/TO/orvanec
"""

import os
import signal
import subprocess
import time

from project import Project, run_tests

PATIENCE = 20  # seconds
ENDING = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP)

# Tells when it runs, and as the real one clears its output away when it is ended.
SLOW_GXX = """
trap 'rm -f app.exe; trap - TERM; echo ended > ../ended; kill -TERM $$' INT TERM HUP
echo half > app.exe
echo $$ > ../running
while [ -e ../running ]; do sleep 0.05; done
echo program > app.exe
"""


class Signals(Project):
    def setUp(self):
        super().setUp()
        os.chmod(self.installed.root, 0o777)
        self.installed.write_gxx(SLOW_GXX)
        os.chmod(self.installed.root, 0o777)

    def start(self, source="app.vorla", ignored=()):
        def prepare():
            for number in (*ENDING, signal.SIGCHLD):
                signal.signal(number, signal.SIG_IGN if number in ignored else signal.SIG_DFL)
        return subprocess.Popen([self.installed.path("install/orvanec"), source],
                                cwd=self.path(), stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, preexec_fn=prepare)

    def wait_for(self, condition):
        end = time.monotonic() + PATIENCE
        while not condition():
            self.assertLess(time.monotonic(), end, "it did not happen")
            time.sleep(0.01)

    def wait_for_gxx(self):
        self.wait_for(lambda: self.installed.has("running")
                      and self.installed.read("running").endswith(b"\n"))
        return int(self.installed.read("running"))

    def finish(self, build):
        output = build.communicate(timeout=PATIENCE)[0].decode()
        return build.returncode, output

    def clear(self):
        for name in ("running", "ended"):
            if self.installed.has(name):
                os.remove(self.installed.path(name))
        self.fresh()

    def test_while_gxx_runs_both_end_and_no_executable_stays(self):
        for number in ENDING:
            with self.subTest(number.name):
                self.clear()
                build = self.start()
                gxx = self.wait_for_gxx()
                build.send_signal(number)
                status, output = self.finish(build)
                self.assertEqual(status, -number)
                self.assertTrue(self.installed.has("ended"))
                with self.assertRaises(ProcessLookupError):
                    os.kill(gxx, 0)
                self.assertFalse(self.installed.has("work/app.exe"))
                self.assertNotIn("Build complete", output)
                self.check_user_files()
                self.check_no_debris()

    def test_while_gxx_runs_the_written_files_stay(self):
        build = self.start()
        self.wait_for_gxx()
        build.terminate()
        self.finish(build)
        self.assertEqual(sorted(os.listdir(self.path("code_generation"))),
                         ["import.hpp", "main.cpp"])

    def test_that_are_ignored_do_not_end_the_build(self):
        for number in ENDING:
            with self.subTest(number.name):
                self.clear()
                self.installed.write_gxx(SLOW_GXX.split("\n", 2)[2])
                build = self.start(ignored=(number,))
                self.wait_for_gxx()
                build.send_signal(number)
                time.sleep(0.1)
                os.remove(self.installed.path("running"))
                status, output = self.finish(build)
                self.assertEqual(status, 0)
                self.assertTrue(output.endswith("\n=== Build complete! ===\n"))
                self.assertEqual(self.installed.read("work/app.exe"), b"program\n")

    def test_a_caller_that_ignores_ended_children_changes_nothing(self):
        self.installed.write_gxx("exit 5\n")
        status, output = self.finish(self.start(ignored=(signal.SIGCHLD,)))
        self.assertEqual(status, 1)
        self.assertTrue(output.endswith("Error: Compilation failed (exit code 5).\n"))

    def test_a_stopped_gxx_is_waited_for(self):
        build = self.start()
        gxx = self.wait_for_gxx()
        os.kill(gxx, signal.SIGSTOP)
        time.sleep(0.1)
        self.assertIsNone(build.poll())
        os.kill(gxx, signal.SIGCONT)
        os.remove(self.installed.path("running"))
        self.assertEqual(self.finish(build)[0], 0)

    def test_before_gxx_the_build_ends_at_once(self):
        """The source is a pipe that nobody fills, a library too: the two stages that can wait."""
        os.mkfifo(self.path("waiting.vorla"))
        self.addCleanup(os.remove, self.path("waiting.vorla"))
        for number in ENDING:
            with self.subTest(number.name):
                build = self.start("waiting.vorla")
                line = build.stdout.readline() + build.stdout.readline()
                self.assertTrue(line.endswith(b"waiting.vorla\n"))
                build.send_signal(number)
                self.assertEqual(self.finish(build)[0], -number)
                self.assertFalse(self.installed.has("work/code_generation"))
                self.assertFalse(self.installed.has("running"))


if __name__ == "__main__":
    run_tests()
