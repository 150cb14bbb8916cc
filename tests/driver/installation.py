"""An installation of the compiler and a project beside it, in a directory of its own.

    with Installation("bin/orvanec") as installed:
        installed.write("work/app.vorla", "vorla Main { }")
        result = installed.run("app.vorla")
"""

import os
import resource
import shutil
import subprocess
import tempfile

# Permissions mean nothing to root, so the compiler runs as the user with no rights then.
NOBODY = {"user": 65534, "group": 65534, "extra_groups": []} if os.geteuid() == 0 else {}


def no_core_files():
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


class Installation:
    """install/ holds the compiler, work/ is the working directory."""

    def __init__(self, compiler, install="install"):
        self.compiler = compiler
        self.install = install

    def __enter__(self):
        self.root = os.path.realpath(tempfile.mkdtemp(prefix="orvane-"))
        os.chmod(self.root, 0o755)
        for directory in (self.install, "work"):
            os.makedirs(self.path(directory))
        os.chmod(self.path("work"), 0o777)
        shutil.copy(self.compiler, self.path(self.install))
        return self

    def __exit__(self, *_):
        for directory, _, _ in os.walk(self.root):
            os.chmod(directory, 0o755)
        shutil.rmtree(self.root)

    def path(self, *names):
        return os.path.join(self.root, *names)

    def write(self, name, content, mode=0o644):
        os.makedirs(os.path.dirname(self.path(name)), exist_ok=True)
        with open(self.path(name), "wb") as file:
            file.write(content if isinstance(content, bytes) else content.encode())
        os.chmod(self.path(name), mode)
        os.chmod(os.path.dirname(self.path(name)), 0o777)

    def read(self, name):
        with open(self.path(name), "rb") as file:
            return file.read()

    def has(self, name):
        return os.path.exists(self.path(name))

    def files(self):
        """The paths of all files and folders below the root."""
        return sorted(os.path.join(folder, name) for folder, folders, files in os.walk(self.root)
                      for name in folders + files)

    def write_gxx(self, script, name=None):
        """A shell script in the place of g++.exe."""
        name = name or os.path.join(self.install, "g++.exe")
        self.write(name, "#!/bin/sh\n" + script, 0o755)

    def run(self, *arguments, stdout=subprocess.PIPE, work="work"):
        """The finished process; its standard output goes to a pipe."""
        return subprocess.run(
            [self.path(self.install, os.path.basename(self.compiler)), *arguments],
            cwd=self.path(work), stdin=subprocess.DEVNULL, stdout=stdout, stderr=subprocess.PIPE,
            timeout=120, preexec_fn=no_core_files, check=False, **NOBODY)
