"""An installation with the command orvane, and a folder to work in.

    class CheckTest(CommandTest):
        def test_nothing_to_say(self):
            self.write("app.vorla", "vorla Main { }")
            self.assertEqual(self.orvane("check", "app.vorla").out, "")
"""

import collections
import os
import pty
import select
import shutil
import subprocess
import tempfile
import time
import unittest

Result = collections.namedtuple("Result", "out err status")

GOOD = "vorla Main { }\n"
BAD = "vorla Main {\n    title = \"x\"\n"  # no "}"

# In the place of g++.exe: writes a program for the shell where the executable is asked for. What the
# program does stands in the file `program` beside the sources.
MAKES_PROGRAM = """
while [ $# -gt 0 ]; do
    if [ "$1" = -o ]; then output=$2; fi
    shift
done
if [ -f program ]; then cp program "$output"; else echo 'exit 0' > "$output"; fi
"""


class CommandTest(unittest.TestCase):
    ORVANE = None   # paths of the programs, set by main()
    ORVANEC = None

    def setUp(self):
        self.root = os.path.realpath(tempfile.mkdtemp(prefix="orvane-"))
        self.addCleanup(shutil.rmtree, self.root, ignore_errors=True)
        self.work = os.path.join(self.root, "work")
        self.install = os.path.join(self.root, "install")
        os.makedirs(self.work)
        os.makedirs(os.path.join(self.install, "orlib"))
        for program in (self.ORVANE, self.ORVANEC):
            shutil.copy(program, self.install)
        self.environment = {"PATH": os.environ["PATH"], "HOME": self.root, "TERM": "xterm",
                            "LC_ALL": "C.UTF-8", "ORVANE_WINE": "/bin/sh"}

    def path(self, *names):
        return os.path.join(self.work, *names)

    def write(self, name, content, mode=0o644):
        path = self.path(name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "wb") as file:
            file.write(content if isinstance(content, bytes) else content.encode())
        os.chmod(path, mode)

    def read(self, name):
        with open(self.path(name), encoding="utf-8-sig") as file:
            return file.read()

    def write_gxx(self, script=MAKES_PROGRAM):
        self.write(os.path.join(self.install, "g++.exe"), "#!/bin/sh\n" + script, 0o755)

    def command(self, *arguments):
        return [os.path.join(self.install, "orvane"), *arguments]

    def orvane(self, *arguments, stdin=b"", status=0):
        """Runs the command with pipes and checks its exit status."""
        done = subprocess.run(self.command(*arguments), cwd=self.work, env=self.environment,
                              input=stdin, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              timeout=120, check=False)
        result = Result(done.stdout.decode(), done.stderr.decode(), done.returncode)
        self.assertEqual(result.status, status, result.out + result.err)
        return result

    def on_terminal(self, *arguments, **variables):
        """Runs the command on a terminal of 80 columns; gives all that appeared there."""
        child, terminal = pty.fork()
        if child == 0:
            os.chdir(self.work)
            command = self.command(*arguments)
            os.execve(command[0], command, {**self.environment, "COLUMNS": "80", **variables})
        shown = b""
        while True:
            try:
                piece = os.read(terminal, 4096)
            except OSError: # what Linux says at the end
                break
            if not piece:
                break
            shown += piece
        os.close(terminal)
        os.waitpid(child, 0)
        return shown.decode().replace("\r\n", "\n")


class Session:
    """A command that goes on; its standard error is read line by line."""

    def __init__(self, test, *arguments, own_group=False):
        self.process = subprocess.Popen(test.command(*arguments), cwd=test.work,
                                        env=test.environment, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                                        start_new_session=own_group)
        self.pending = b""
        self.lines = []
        test.addCleanup(self.end)

    def end(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()
        self.process.stderr.close()

    def wait_for(self, text, seconds=60):
        """Reads until a line holds the text; lines before it are passed by."""
        limit = time.monotonic() + seconds
        while True:
            while b"\n" in self.pending:
                line, self.pending = self.pending.split(b"\n", 1)
                self.lines.append(line.decode())
                if text in self.lines[-1]:
                    return self.lines[-1]
            left = limit - time.monotonic()
            ready = left > 0 and select.select([self.process.stderr], [], [], left)[0]
            piece = os.read(self.process.stderr.fileno(), 4096) if ready else b""
            if not piece:
                raise AssertionError(f"'{text}' did not come; there was {self.lines}")
            self.pending += piece


def main(names, arguments):
    CommandTest.ORVANE, CommandTest.ORVANEC = arguments[1:3]
    unittest.main(module=names, argv=[arguments[0], *arguments[3:]])
