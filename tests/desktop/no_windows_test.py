"""The program without the module that shows windows. Runs on a desktop without a panel."""

import os
import pathlib
import shutil
import unittest
import unittest.mock

from quillmar_desktop import (DesktopTestCase, Panel, Screen, document, entry, sub_command,
                              tools, wait_until)

ALREADY_RUNNING = "Quillmar is already running."


class NoWindowsTest(DesktopTestCase):

    def setUp(self):
        super().setUp()
        # An installation that lacks the module.
        built = pathlib.Path(os.environ["QUILLMAR_PROGRAM"]).parent.parent
        prefix = self.scratch / "prefix"
        for folder in ("bin", "lib"):
            (prefix / folder).mkdir(parents=True)
        program = shutil.copy(built / "bin/quillmar", prefix / "bin")
        for library in (built / "lib").glob("libquillmar_core.so*"):
            (prefix / "lib" / library.name).symlink_to(library)
        (prefix / "share").symlink_to(built / "share")
        patch = unittest.mock.patch.dict(os.environ, QUILLMAR_PROGRAM=str(program))
        patch.start()
        self.addCleanup(patch.stop)
        self.missing = (f"Quillmar can show no windows, because the file “{prefix}/lib/quillmar/"
                        "quillmar_qt.so” could not be loaded (cannot open shared object file: No "
                        "such file or directory).\n")

    def assert_failure(self, outcome, sentence):
        self.assertEqual((outcome.returncode, outcome.stdout, outcome.stderr), (1, "", sentence))

    def test_that_no_menu_can_be_shown_is_told_to_who_asks_and_once_in_the_output(self):
        program = self.start_on_bus(document())
        self.assert_failure(sub_command("menu"), self.missing)
        self.assert_failure(sub_command("menu"), self.missing)
        self.assertEqual(program.output().count(self.missing), 1)
        self.assertTrue(program.is_running())

    def test_a_second_start_without_any_tray_asks_for_the_menu(self):
        program = self.start_on_bus(document())
        second = self.start(document())
        self.assertEqual(second.exit_status(), 0)
        self.assertEqual(second.output().strip(), ALREADY_RUNNING)
        wait_until(lambda: self.missing in program.output(), "the menu was asked for")

    def test_a_second_start_asks_for_no_menu_when_there_is_an_icon(self):
        panel = Panel()
        self.addCleanup(panel.kill)
        program, icon = self.start_with_icon(tools(
            entry("Write", f"printf done > {self.scratch}/result")))
        Screen().tray()
        second = self.start(document())
        self.assertEqual(second.exit_status(), 0)
        self.assertEqual(second.output().strip(), ALREADY_RUNNING)
        # Chosen after the second start was heard of.
        icon.choose("Write")
        self.wait_for_file("result", "done")
        self.assertNotIn("windows", program.output())

    def test_when_quillmar_is_not_running_there_is_no_menu(self):
        self.assert_failure(sub_command("menu"),
                            "Quillmar is not running, so there is no menu to show.\n")


if __name__ == "__main__":
    unittest.main()
