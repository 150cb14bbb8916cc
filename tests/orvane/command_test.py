#!/usr/bin/env python3
"""The commands that start nothing: check, new, explain, doctor, and the command line itself.

    command_test.py PATH/TO/orvane PATH/TO/orvanec
"""

import json
import os
import re
import sys

from workplace import BAD, GOOD, CommandTest, main

COMMANDS = ("check", "build", "run", "watch", "new", "doctor", "explain")


class CommandLine(CommandTest):
    def test_every_command_has_a_help_text(self):
        for command in COMMANDS:
            self.assertIn(f"Usage: orvane {command}", self.orvane(command, "--help").out)
            self.assertEqual(self.orvane("help", command).out, self.orvane(command, "-h").out)

    def test_help_lists_all_commands(self):
        text = self.orvane("--help").out
        for command in COMMANDS:
            self.assertIn(f"\n  {command} ", text)

    def test_version_is_the_compilers(self):
        self.assertEqual(self.orvane("--version").out, "Orvane Compiler v6.0.0\n")

    def test_wrong_use_ends_with_2_and_says_so_on_standard_error(self):
        for arguments in ([], ["nonsense"], ["check"], ["check", "--nonsense", "a"], ["new"],
                          ["build", "--format=xml", "a"], ["run", "a", "b"], ["doctor", "x"],
                          ["explain", "nonsense"], ["new", "a", "--template=b"], [""], ["-"]):
            with self.subTest(arguments=arguments):
                result = self.orvane(*arguments, status=2)
                self.assertEqual(result.out, "")
                self.assertNotEqual(result.err, "")

    def test_unknown_command_names_the_nearest(self):
        self.assertEqual(self.orvane("buidl", "a.vorla", status=2).err,
                         "orvane: there is no command 'buidl'\nDid you mean 'build'?\n"
                         "How it is used: orvane --help\n")

    def test_unknown_option_names_the_help_of_its_command(self):
        self.assertEqual(self.orvane("check", "--nromal", status=2).err,
                         "orvane: unknown option '--nromal'\nDid you mean '--normal'?\n"
                         "How it is used: orvane check --help\n")


class Check(CommandTest):
    def test_says_nothing_when_all_is_well(self):
        self.write("app.vorla", GOOD)
        self.assertEqual(self.orvane("check", "app.vorla")[:2], ("", ""))

    def test_error_goes_to_standard_output_and_the_count_to_standard_error(self):
        self.write("app.vorla", BAD)
        result = self.orvane("check", "app.vorla", status=1)
        self.assertRegex(result.out, r"\Aapp\.vorla:\d+:\d+: error: .+ \[[a-z-]+\]\n +\d+ \|")
        self.assertEqual(result.err, "1 error\n")

    def test_takes_any_number_of_files(self):
        names = [f"{number}.vorla" for number in range(40)]
        for name in names:
            self.write(name, BAD if name in ("3.vorla", "7.vorla") else GOOD)
        result = self.orvane("check", *names, status=1)
        self.assertEqual(result.err, "2 errors in 40 files\n")
        self.assertTrue(result.out.startswith("3.vorla:"))
        self.assertIn("\n7.vorla:", result.out)

    def test_reads_standard_input(self):
        self.assertEqual(self.orvane("check", "-", stdin=GOOD.encode()).out, "")
        self.assertIn("<stdin>:", self.orvane("check", "-", stdin=BAD.encode(), status=1).out)

    def test_file_that_cannot_be_read_is_an_error(self):
        for name in ("absent.vorla", ".", "x" * 300):
            with self.subTest(name=name):
                result = self.orvane("check", name, status=1)
                self.assertEqual(result.out,
                                 f"{name}:1:1: error: the file cannot be read [unreadable-file]\n"
                                 "      = Look at its name, its folder and who may read it.\n")

    def test_writes_no_file(self):
        self.write("app.vorla", GOOD)
        self.orvane("check", "app.vorla")
        self.assertEqual(os.listdir(self.work), ["app.vorla"])

    def test_options_of_libraries_are_taken(self):
        self.write("app.vorla", GOOD)
        self.orvane("check", "app.vorla", "--normal", "--math")

    def test_any_bytes_are_answered(self):
        for content in (b"\xff\xfe\x00", b"vorla {" * 10_000, b"\"" * 998, b"vorla \x1b[2J {"):
            self.write("app.vorla", content + b" vorla {")
            for kind in ("text", "json", "sarif"):
                with self.subTest(content=content[:9], kind=kind):
                    result = self.orvane("check", f"--format={kind}", "app.vorla", status=1)
                    self.assertNotIn("\x1b", result.out)


class Json(CommandTest):
    def report(self, *arguments, status=0):
        result = self.orvane("check", "--format=json", *arguments, status=status)
        self.assertEqual(result.err, "")
        return json.loads(result.out)

    def test_empty_report_has_all_its_fields(self):
        self.write("app.vorla", GOOD)
        self.assertEqual(self.report("app.vorla"), {
            "format": "orvane-diagnostics", "formatVersion": 1,
            "tool": {"name": "orvane", "version": "6.0.0"},
            "files": 1, "errors": 0, "warnings": 0, "diagnostics": []})

    def test_columns_count_characters_and_bytes(self):
        self.write("app.vorla", """vorla Main {
    button ok { x = 1; y = 1; width = 50; height = 20; text = "ok"
        on click { alert("äö" + missing); } }
}
""")
        report = self.report("app.vorla", "absent.vorla", status=1)
        self.assertEqual((report["files"], report["errors"], report["warnings"]), (2, 2, 0))
        [unknown, unreadable] = report["diagnostics"]
        self.assertEqual((unknown["file"], unknown["id"]), ("app.vorla", "unknown-variable"))
        self.assertEqual(unknown["range"], {
            "start": {"line": 3, "column": 33, "byteColumn": 35},
            "end": {"line": 3, "column": 40, "byteColumn": 42}})
        self.assertEqual(unreadable, {
            "file": "absent.vorla", "severity": "error", "id": "unreadable-file",
            "message": "the file cannot be read", "notes": [],
            "hint": "Look at its name, its folder and who may read it.",
            "range": {"start": {"line": 1, "column": 1, "byteColumn": 1},
                      "end": {"line": 1, "column": 1, "byteColumn": 1}}})


class Sarif(CommandTest):
    def test_log_has_what_the_format_requires(self):
        self.write("my app.vorla", BAD)
        log = json.loads(self.orvane("check", "--format=sarif", "my app.vorla", status=1).out)
        self.assertEqual(log["version"], "2.1.0")
        self.assertEqual(log["$schema"], "https://json.schemastore.org/sarif-2.1.0.json")
        [run] = log["runs"]
        driver = run["tool"]["driver"]
        self.assertEqual((driver["name"], driver["version"]), ("orvane", "6.0.0"))
        self.assertEqual(run["columnKind"], "unicodeCodePoints")
        self.assertTrue(run["results"])
        for result in run["results"]:
            self.check_result(result, driver["rules"])

    def check_result(self, result, rules):
        self.assertEqual(rules[result["ruleIndex"]]["id"], result["ruleId"])
        self.assertIn(result["level"], ("error", "warning"))
        self.assertTrue(result["message"]["text"])
        [location] = result["locations"]
        place = location["physicalLocation"]
        self.assertEqual(place["artifactLocation"]["uri"], "my%20app.vorla")
        region = place["region"]
        start = (region["startLine"], region["startColumn"])
        self.assertGreaterEqual(start, (1, 1))
        self.assertLessEqual(start, (region["endLine"], region["endColumn"]))

    def test_log_without_results_has_an_empty_list(self):
        self.write("app.vorla", GOOD)
        log = json.loads(self.orvane("check", "--format=sarif", "app.vorla").out)
        self.assertEqual(log["runs"][0]["results"], [])
        self.assertEqual(log["runs"][0]["tool"]["driver"]["rules"], [])


class Terminal(CommandTest):
    def setUp(self):
        super().setUp()
        self.write("app.vorla", BAD)

    def test_colours_appear_on_a_terminal(self):
        self.assertIn("\x1b[1;31merror:\x1b[0m", self.on_terminal("check", "app.vorla"))

    def test_no_color_switches_colours_off(self):
        self.assertNotIn("\x1b", self.on_terminal("check", "app.vorla", NO_COLOR="1"))

    def test_empty_no_color_counts_as_not_set(self):
        self.assertIn("\x1b", self.on_terminal("check", "app.vorla", NO_COLOR=""))

    def test_dumb_terminal_gets_plain_text(self):
        self.assertNotIn("\x1b", self.on_terminal("check", "app.vorla", TERM="dumb"))

    def test_json_has_no_colours_anywhere(self):
        json.loads(self.on_terminal("check", "app.vorla", "--format=json"))


class New(CommandTest):
    def test_writes_a_program_with_its_name_as_the_title(self):
        for template in ("form", "notepad", "list", "empty"):
            self.assertEqual(self.orvane("new", template, "--template", template).out,
                             f"Made {template}.vorla. To see it: orvane run {template}.vorla\n")
            self.assertIn(f'    title = "{template}"\n', self.read(template + ".vorla"))

    def test_form_is_the_template_when_none_is_named(self):
        self.orvane("new", "one.vorla")
        self.orvane("new", "two", "--template=form")
        self.assertEqual(self.read("one.vorla").replace("one", "two"), self.read("two.vorla"))

    def test_refuses_to_overwrite(self):
        self.write("app.vorla", "mine")
        self.write("folder.vorla/x", "")
        os.symlink("nowhere", self.path("link.vorla"))
        for name in ("app", "folder", "link"):
            result = self.orvane("new", name, status=1)
            self.assertEqual(result.out, "")
            self.assertIn(f"'{name}.vorla'", result.err)
        self.assertEqual(self.read("app.vorla"), "mine")
        self.assertFalse(os.path.lexists(self.path("nowhere")))

    def test_quotes_and_backslashes_in_a_name_stay_inside_the_text(self):
        self.orvane("new", 'a"b\\c')
        self.assertIn('title = "a\\"b\\\\c"\n', self.read('a"b\\c.vorla'))

    def test_names_that_are_none_are_refused(self):
        for name in ("", ".vorla", "absent/app", "x" * 300):
            with self.subTest(name=name):
                self.orvane("new", name, status=1)
        self.assertEqual(os.listdir(self.work), [])


class Explain(CommandTest):
    def test_prints_the_page_without_its_marks(self):
        text = self.orvane("explain", "unreadable-file").out
        self.assertTrue(text.startswith("unreadable-file\n\nA file that was named"))
        self.assertIn("\n    orvane check shoping.vorla\n", text)
        self.assertNotIn("```", text)

    def test_lists_all_messages(self):
        lines = self.orvane("explain").out.splitlines()
        self.assertIn("unknown-property", [line.split()[0] for line in lines])
        self.assertEqual(lines, sorted(lines, key=lambda line: line.split()[0]))

    def test_unknown_id_names_the_nearest(self):
        self.assertEqual(self.orvane("explain", "unknown-proprety", status=2).err,
                         "orvane: no message has the id 'unknown-proprety'\n"
                         "Did you mean 'unknown-property'?\nAll messages: orvane explain\n")

    def test_takes_several_ids(self):
        text = self.orvane("explain", "cpp-error", "library-error").out
        self.assertIn("\n\nlibrary-error\n\n", text)


class Doctor(CommandTest):
    LIBRARIES = ("normal", "math", "math2", "string", "text", "array", "container", "list", "tree",
                 "dict", "set", "queue", "stack", "io", "file", "win32", "color", "time", "json",
                 "regex", "crypto", "http", "system", "numeric", "log")

    def setUp(self):
        super().setUp()
        self.write_gxx()
        self.write(os.path.join(self.install, "resource.o"), "")
        for library in self.LIBRARIES:
            self.write(os.path.join(self.install, "orlib", library + ".orlib"), "// one\n")

    def findings(self, status):
        return self.orvane("doctor", status=status).out

    def test_complete_installation_is_well(self):
        text = self.findings(0)
        self.assertNotIn("wrong", text)
        self.assertTrue(text.endswith("All is well.\n"))
        self.assertIn(f"ok     libraries: all 25 in {self.install}/orlib\n", text)

    def test_leaves_nothing_behind(self):
        self.environment["TMPDIR"] = self.work
        self.findings(0)
        self.assertEqual(os.listdir(self.work), [])

    def test_missing_parts_are_named_with_the_way_out(self):
        for part, words in (("orvanec", "orvanec is missing"), ("resource.o", "resource.o is missing"),
                            ("g++.exe", "g++.exe is in none"),
                            ("orlib/time.orlib", "missing or unreadable in")):
            path = os.path.join(self.install, part)
            os.rename(path, path + ".away")
            with self.subTest(part=part):
                text = self.findings(1)
                self.assertRegex(text, f"(?m)^wrong  .*{re.escape(words)}.*\n       = ")
                self.assertEqual(text.count("wrong "), 1)
            os.rename(path + ".away", path)

    def test_compiler_that_fails_is_quoted(self):
        self.write_gxx("echo the disk is full >&2; exit 1\n")
        self.assertIn("does not compile a trivial program; it says:\n       = the disk is full\n",
                      self.findings(1))

    def test_compiler_that_makes_nothing_is_wrong(self):
        self.write_gxx("exit 0\n")
        self.assertIn("does not compile a trivial program", self.findings(1))

    def test_compiler_that_does_not_start_is_wrong(self):
        self.write(os.path.join(self.install, "g++.exe"), "x", 0o644)
        self.assertIn("g++.exe does not start\n", self.findings(1))

    def test_locale_without_utf8_is_wrong(self):
        self.environment["LC_ALL"] = "C"
        self.assertRegex(self.findings(1), r"\nwrong  encoding: .*\n       = Set the locale")

    def test_folder_that_cannot_be_written_is_wrong(self):
        os.rmdir(self.work)
        os.symlink("/proc/self", self.work)
        self.assertIn("cannot be written, and programs appear there\n", self.findings(1))


if __name__ == "__main__":
    main("__main__", sys.argv)
