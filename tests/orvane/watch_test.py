#!/usr/bin/env python3
"""The command watch, with shell scripts in the places of g++ and Wine.

    watch_test.py PATH/TO/orvane PATH/TO/orvanec
"""

import os
import signal
import sys
import time

from workplace import BAD, CommandTest, Session, main

# Each start adds a line with its process; the program goes on until it is stopped.
STAYS = "echo $$ >> starts; while :; do sleep 0.05; done\n"


class Watch(CommandTest):
    def setUp(self):
        super().setUp()
        self.write_gxx()
        self.write("program", STAYS)
        self.saved = 0
        self.save()

    def source(self):
        self.saved += 1
        return f"vorla Main {{ title = \"{self.saved}\" }}\n"

    def save(self):
        self.write("app.vorla", self.source())

    def begin(self, *arguments):
        self.session = Session(self, "watch", "app.vorla", *arguments)
        self.session.wait_for("waiting for a change")
        return self.session

    def starts(self, count):
        """The processes that were started, as soon as there are so many."""
        for _ in range(600):
            if os.path.exists(self.path("starts")):
                found = self.read("starts").split()
                if len(found) >= count:
                    return [int(number) for number in found]
            time.sleep(0.05)
        raise AssertionError(f"the program was not started {count} times")

    def is_running(self, process):
        try:
            with open(f"/proc/{process}/stat", encoding="ascii") as file:
                return file.read().rsplit(")", 1)[1].split()[0] != "Z"
        except OSError:
            return False

    def wait_for_end(self, process):
        for _ in range(200):
            if not self.is_running(process):
                return
            time.sleep(0.05)
        raise AssertionError("the program goes on")

    def test_saving_builds_and_starts_anew_and_stops_the_old_program(self):
        session = self.begin()
        [first] = self.starts(1)
        self.save()
        session.wait_for("built app.exe")
        session.wait_for("waiting for a change")
        second = self.starts(2)[1]
        self.wait_for_end(first)
        self.assertTrue(self.is_running(second))

    def test_errors_leave_the_old_program_running(self):
        session = self.begin()
        [first] = self.starts(1)
        self.write("app.vorla", BAD)
        session.wait_for("error: ")
        session.wait_for("waiting for a change")
        self.assertTrue(self.is_running(first))
        self.save()
        session.wait_for("built app.exe")
        self.assertEqual(len(self.starts(2)), 2)

    def test_file_that_vanishes_is_waited_for(self):
        session = self.begin()
        os.remove(self.path("app.vorla"))
        session.wait_for("app.vorla: gone; waiting until it is back")
        self.save()
        session.wait_for("built app.exe")

    def test_file_that_is_replaced_by_rename_is_noticed(self):
        session = self.begin()
        self.write("new", self.source())
        os.replace(self.path("new"), self.path("app.vorla"))
        session.wait_for("built app.exe")
        self.starts(2)

    def test_half_written_file_is_built_when_it_is_whole(self):
        session = self.begin()
        with open(self.path("app.vorla"), "w", encoding="utf-8") as file:
            file.write("vorla Main {")
            file.flush()
            time.sleep(0.5)
            file.write(" title = \"whole\" }\n")
        session.wait_for("built app.exe")
        self.assertEqual(self.session.process.poll(), None)

    def test_writing_in_many_steps_is_one_change(self):
        session = self.begin()
        for count in range(10):
            self.write("app.vorla", "vorla Main { title = \"" + "x" * count + "\" }\n")
            time.sleep(0.03)
        session.wait_for("built app.exe")
        session.wait_for("waiting for a change")
        time.sleep(0.6)
        self.assertEqual(len(self.starts(2)), 2)

    def test_library_of_the_project_is_watched_too(self):
        self.write("orlib/shapes.orlib", "int one() { return 1; }\n")
        self.write("app.vorla", "import shapes\nvorla Main { }\n")
        session = self.begin()
        self.write("orlib/shapes.orlib", "int one() { return 12; }\n")
        session.wait_for("built app.exe")

    def test_program_that_ends_is_told_and_watching_goes_on(self):
        self.write("program", "exit 3\n")
        session = self.begin()
        session.wait_for("the program has ended with status 3")
        self.save()
        session.wait_for("built app.exe")

    def test_arguments_reach_the_program(self):
        self.write("program", "echo \"$1\" > argument\n" + STAYS)
        self.begin("--", "a b")
        self.starts(1)
        self.assertEqual(self.read("argument"), "a b\n")

    def test_interrupt_ends_it_and_the_program(self):
        session = self.begin()
        [program] = self.starts(1)
        session.process.send_signal(signal.SIGINT)
        self.assertEqual(session.process.wait(30), 0)
        self.assertFalse(self.is_running(program))

    def test_program_that_ignores_the_request_is_ended_all_the_same(self):
        self.write("program", "trap '' TERM; " + STAYS)
        session = self.begin()
        [program] = self.starts(1)
        session.process.send_signal(signal.SIGINT)
        self.assertEqual(session.process.wait(30), 0)
        self.assertFalse(self.is_running(program))

    def test_file_that_was_never_there_is_an_error(self):
        result = self.orvane("watch", "absent.vorla", status=1)
        self.assertEqual(result.err, "orvane: there is no file 'absent.vorla'.\n")


if __name__ == "__main__":
    main("__main__", sys.argv)
