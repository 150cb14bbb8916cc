#!/usr/bin/env python3
"""Every system call of a build made to fail once, with every error that fits it.

    operations_test.py PATH/TO/orvanec

A build is recorded with strace; then, for each of its calls behind the banner, a build in which this
one call fails. Whatever fails, the build ends by itself with status 0 or 1; with 0 it has said so
and g++ has got two whole files; with 1 the last line is an error; the user's files are what they
were, and nothing lies about.
"""

import re
import subprocess

from project import Project, run_tests

ERRORS = {
    "openat": ("EACCES", "ENOENT", "EMFILE", "ENOSPC", "EIO", "EINTR"),
    "read": ("EIO", "EISDIR", "EINTR"),
    "write": ("ENOSPC", "EIO", "EDQUOT"),
    "writev": ("ENOSPC", "EIO", "EDQUOT"),
    "close": ("EIO", "ENOSPC"),
    "lseek": ("ESPIPE",),
    "newfstatat": ("ENOENT", "EACCES", "EIO"),
    "statx": ("ENOENT", "EACCES", "EIO"),
    "fstat": ("EIO",),
    "mkdir": ("EACCES", "ENOSPC", "EROFS"),
    "unlink": ("EACCES", "EBUSY", "ENOENT"),
    "readlink": ("EACCES",),
    "getcwd": ("ENOENT", "EACCES"),
    "clone3": ("EAGAIN", "ENOMEM"),
    "vfork": ("EAGAIN", "ENOMEM"),
    "clone": ("EAGAIN", "ENOMEM"),
    "wait4": ("EINTR",),
}
CALL = re.compile(r"^(\w+)\((.*)")
LIBRARY_WARNINGS = "Warning: ", "FAIL: ", "Error: File not found "


class Operations(Project):
    def trace(self, *options):
        command = ["strace", "-qq", "-o", self.installed.path("trace"), *options,
                   self.installed.path("install/orvanec"), "app.vorla", "--keep-cpp"]
        return subprocess.run(command, cwd=self.path(), stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=60,
                              check=False)

    def recorded_calls(self):
        """(name, number of the call among those of its name, arguments), behind the banner."""
        self.trace("-e", "trace=" + ",".join(ERRORS))
        counts, calls, started = {}, [], False
        with open(self.installed.path("trace"), encoding="utf-8", errors="replace") as lines:
            for line in lines:
                match = CALL.match(line)
                if not match:
                    continue
                name, arguments = match.groups()
                counts[name] = counts.get(name, 0) + 1
                if started:
                    calls.append((name, counts[name], arguments))
                started = started or "=== Orvane Compiler" in arguments
        return calls

    def check_end(self, result, is_console):
        output = result.stdout.decode()
        self.assertIn(result.returncode, (0, 1), output + result.stderr.decode())
        if result.returncode == 0:
            self.assertIn(self.seen(), self.whole(output), output)
            self.assertTrue(is_console or output.endswith("\n=== Build complete! ===\n"), output)
        elif not is_console:
            self.assertTrue(output.splitlines()[-1].startswith("Error: "), output)
        if self.seen() is not None:
            self.assertIn(self.seen(), self.whole(output), output)
        self.check_user_files()
        self.check_no_debris()

    def whole(self, output):
        """What g++ may have got: a library that could not be read is missing only with a word."""
        if any(words in output for words in LIBRARY_WARNINGS):
            return (self.complete, self.without_library)
        return (self.complete,)

    def record_whole_files(self):
        self.assertEqual(self.trace().returncode, 0)
        self.complete = self.seen()
        self.fresh()
        self.installed.write("work/orlib/tools.orlib", "")
        self.assertEqual(self.trace().returncode, 0)
        self.without_library = self.seen()
        self.assertNotEqual(self.complete, self.without_library)
        self.fresh()

    def test_each_may_fail_once(self):
        self.record_whole_files()
        calls = self.recorded_calls()
        self.assertGreater(len(calls), 20)
        for name, number, arguments in calls:
            for error in ERRORS[name]:
                with self.subTest(call=f"{name}({arguments[:60]}", error=error):
                    self.fresh()
                    result = self.trace("-e", f"inject={name}:error={error}:when={number}")
                    is_console = name.startswith("write") and arguments.startswith("1,")
                    self.check_end(result, is_console)
        print(f"{len(calls)} calls", flush=True)


if __name__ == "__main__":
    run_tests()
