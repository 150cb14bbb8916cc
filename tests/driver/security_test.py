#!/usr/bin/env python3
"""What the compiler runs, reads and writes, seen from outside: the sentences of docs/security.md.

    security_test.py PATH/TO/orvanec
"""

import os
import re
import subprocess
import sys
import unittest

from installation import NOBODY, Installation, no_core_files

COMPILER = None
DUMP_ARGUMENTS = 'printf "%s\\n" "$@" > arguments\n'
STRACE = ["strace", "-f", "-qq", "-s", "4096", "-e",
          "trace=execve,execveat,open,openat,creat,mkdir,unlink,rename,link,symlink,chmod,socket"]
WRITING = re.compile(r"O_WRONLY|O_RDWR|O_CREAT|O_TRUNC|O_APPEND")


class SecurityTest(unittest.TestCase):
    def setUp(self):
        self.installed = Installation(COMPILER)
        self.installed.__enter__()
        self.addCleanup(self.installed.__exit__)
        self.installed.write_gxx("exit 0\n")
        self.installed.write("work/app.vorla", "vorla Main { }\n")

    def path(self, *names):
        return self.installed.path(*names)

    def build(self, *arguments, status=0):
        result = self.installed.run(*arguments)
        output = result.stdout.decode()
        self.assertEqual(result.returncode, status, output)
        return output

    def traced_calls(self, *arguments):
        """The system calls of a build, of the compiler alone."""
        os.chmod(self.installed.root, 0o777)
        trace = self.path("trace")
        subprocess.run([*(o for o in STRACE if o != "-f"), "-o", trace,
                        self.path("install/orvanec"), *arguments],
                       cwd=self.path("work"), stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       timeout=60, preexec_fn=no_core_files, check=False, **NOBODY)
        with open(trace, encoding="utf-8") as lines:
            return [line for line in lines if "ENOENT" not in line]

    def own_paths(self, calls):
        return {path for line in calls for path in re.findall(r'"([^"]*)"', line)
                if self.installed.root in os.path.join(self.path("work"), path)}


class Runs(SecurityTest):
    def test_one_program_and_no_shell(self):
        os.chmod(self.installed.root, 0o777)
        subprocess.run([*STRACE, "-o", self.path("trace"), self.path("install/orvanec"),
                        "app.vorla"], cwd=self.path("work"), stdin=subprocess.DEVNULL,
                       stdout=subprocess.DEVNULL, timeout=60, check=True)
        with open(self.path("trace"), encoding="utf-8") as lines:
            started = [re.search(r'exec\w+\("([^"]*)"', line).group(1) for line in lines
                       if "execve" in line and "exited" not in line and "resumed" not in line]
        self.assertEqual(started, [self.path("install/orvanec"), self.path("install/g++.exe")])

    def test_nothing_of_a_name_reaches_a_shell(self):
        self.installed.write_gxx(DUMP_ARGUMENTS)
        for name in ("$(touch pwned)", "`touch pwned`", "; touch pwned ;", "a & touch pwned",
                     "a | touch pwned", "a\ntouch pwned\n", "$HOME", "*", "-o pwned", "%PATH%",
                     "a > pwned", "'; touch pwned; '", "!!", "~root", "\\\\"):
            with self.subTest(name):
                self.installed.write(f"work/{name}.vorla", "vorla Main { }\n")
                self.build(f"./{name}.vorla")
                self.assertFalse(self.installed.has("work/pwned"))
                self.assertIn("-o\n" + self.path("work", name + ".exe") + "\n",
                              self.installed.read("work/arguments").decode())

    def test_texts_of_a_source_are_no_arguments(self):
        self.installed.write_gxx(DUMP_ARGUMENTS)
        self.build("app.vorla")
        plain = self.installed.read("work/arguments")
        self.installed.write("work/app.vorla", 'using include "-o pwned"; using flags "-shared";'
                                               'import "-lpwned"; vorla Main { title = "-x"; }')
        self.build("app.vorla")
        self.assertEqual(self.installed.read("work/arguments"), plain)

    def test_a_quote_in_a_file_name_splits_the_arguments(self):
        """Written down in docs/security.md: quotes of a name are not escaped."""
        self.installed.write_gxx(DUMP_ARGUMENTS)
        self.installed.write('work/a" -DX "b.vorla', "vorla Main { }\n")
        self.build('a" -DX "b.vorla')
        self.assertIn("-DX", self.installed.read("work/arguments").decode().split("\n"))


class Writes(SecurityTest):
    def test_the_folder_of_the_two_files_and_nothing_else(self):
        calls = self.traced_calls("app.vorla")
        written = self.own_paths(line for line in calls if WRITING.search(line)
                                 or not line.startswith(("open", "exec", "socket")))
        folder = self.path("work/code_generation")
        self.assertEqual(written, {folder, folder + "/main.cpp", folder + "/import.hpp"})

    def test_opens_no_connection(self):
        self.assertFalse([line for line in self.traced_calls("app.vorla")
                          if line.startswith("socket")])


class Reads(SecurityTest):
    def test_the_source_and_the_libraries_it_names(self):
        self.installed.write("work/orlib/one.orlib", "int f() { return 1; }")
        self.installed.write("work/orlib/two.orlib", "int g() { return 1; }")
        self.installed.write("work/app.vorla", 'import "one"; vorla Main { }\n')
        calls = self.traced_calls("app.vorla")
        read = self.own_paths(line for line in calls
                              if line.startswith("open") and not WRITING.search(line))
        self.assertEqual(read, {"app.vorla", self.path("work/orlib/one.orlib")})

    def test_an_import_of_a_source_is_cut_to_its_last_name(self):
        self.installed.write("secret.orlib", "int secret() { return 1; }")
        self.installed.write("outside/secret.orlib", "int secret() { return 1; }")
        for path in ("../secret", "../../secret.orlib", self.path("outside/secret"),
                     self.path("outside/secret.orlib"), "..\\secret", "orlib/../../secret"):
            with self.subTest(path):
                escaped = path.replace("\\", "\\\\")
                self.installed.write("work/app.vorla", f'import "{escaped}"; vorla Main {{ }}\n')
                output = self.build("app.vorla")
                self.assertIn("  -> orlib/secret.orlib ... Warning: secret.orlib not found\n",
                              output)
                self.assertNotIn("function: secret", output)

    def test_an_import_of_dots_reads_no_folder(self):
        for name in ("..", ".", "", "/"):
            with self.subTest(name):
                self.installed.write("work/app.vorla", f'import "{name}"; vorla Main {{ }}\n')
                self.assertNotIn("function: ", self.build("app.vorla"))

    def test_an_option_names_a_known_library_only(self):
        for name in ("../secret", "secret", "/etc/passwd", "math/../secret", "MATH", "math.orlib"):
            with self.subTest(name):
                self.installed.write("work/orlib/secret.orlib", "int secret() { return 1; }")
                self.assertIn(f"Error: Unknown argument '--{name}'\n",
                              self.build("app.vorla", "--" + name, status=1))

    def test_an_import_of_a_library_goes_where_its_path_says(self):
        """A library is code; it is trusted like a program."""
        self.installed.write("outside/more.orlib", "int more() { return 1; }")
        for path in ("../../outside/more.orlib", self.path("outside/more.orlib")):
            with self.subTest(path):
                self.installed.write("work/orlib/math.orlib", f'import "{path}"')
                self.assertIn("  function: more\n", self.build("app.vorla", "--math"))

    def test_a_library_that_is_a_device_or_a_pipe_is_not_read(self):
        os.mkdir(self.path("work/orlib"))
        os.mkfifo(self.path("work/orlib/math.orlib"))
        os.symlink("/dev/zero", self.path("work/orlib/io.orlib"))
        output = self.build("app.vorla", "--math", "--io")
        for name in ("math", "io"):
            self.assertIn("Warning: Cannot read " + self.path(f"work/orlib/{name}.orlib"), output)

    def test_no_environment_variable_changes_a_build(self):
        plain = self.build("app.vorla")
        for name in ("ORVANE_HOME", "ORVANE_PATH", "CXX", "CPATH", "TMPDIR", "HOME", "ORLIB"):
            os.environ[name], before = self.path("elsewhere"), os.environ.get(name)
            self.assertEqual(self.build("app.vorla"), plain)
            if before is None:
                del os.environ[name]
            else:
                os.environ[name] = before


if __name__ == "__main__":
    COMPILER = os.path.abspath(sys.argv.pop(1))
    unittest.main()
