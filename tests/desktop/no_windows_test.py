"""The program without the module that shows windows. Runs on a desktop without a panel."""

import html
import unittest

from installation import Installation
from quillmar_desktop import (DesktopTestCase, Notifications, Panel, Screen, document, entry,
                              sub_command, tools, wait_until)

ALREADY_RUNNING = "Quillmar is already running."


class NoWindowsTest(DesktopTestCase):

    def setUp(self):
        super().setUp()
        installation = Installation(self.scratch / "prefix").use(self)
        installation.module.unlink()
        self.missing = (f"Quillmar cannot show windows, because the file “{installation.module}” "
                        "could not be loaded (cannot open shared object file: No such file or "
                        "directory).")

    def assert_failure(self, outcome, sentence):
        self.assertEqual((outcome.returncode, outcome.stdout, outcome.stderr),
                         (1, "", sentence + "\n"))

    def test_a_menu_that_cannot_open_is_reported_to_the_caller_and_logged_once(self):
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
        self.start_with_panel(tools(entry("Write", f"printf done > {self.scratch}/result")))
        Screen().tray()
        second = self.start(document())
        self.assertEqual(second.exit_status(), 0)
        self.assertEqual(second.output().strip(), ALREADY_RUNNING)
        # Chosen after the second start was heard of.
        self.icon.choose("Write")
        self.wait_for_file("result", "done")
        self.assertNotIn("windows", self.program.output())

    def start_with_panel(self, settings):
        panel = Panel()
        self.addCleanup(panel.kill)
        self.program, self.icon = self.start_with_icon(settings)

    def test_an_item_that_asks_tells_in_a_notification_why_it_cannot_and_the_menu_goes_on(self):
        notifications = Notifications()
        self.start_with_panel(tools(
            entry("Ask", f"touch '{self.scratch}/asked'; echo {{{{input}}}}", id="asking"),
            entry("Confirm", f"touch '{self.scratch}/confirmed'", confirmBeforeRunning=True),
            entry("Plain", f"printf done > '{self.scratch}/plain'")))
        for title in ("Ask", "Confirm"):
            self.icon.choose(title)
            body = html.unescape(notifications.wait_for(title).body)
            self.assertEqual(body, self.missing)
        self.icon.choose("Plain")
        self.wait_for_file("plain", "done")
        self.assertFalse((self.scratch / "asked").exists())
        self.assertFalse((self.scratch / "confirmed").exists())
        self.assertIn(f"Could not show the prompt of item asking: {self.missing}",
                      self.program.output().splitlines())

    def test_that_the_about_window_cannot_be_shown_is_told_in_a_notification(self):
        notifications = Notifications()
        self.start_with_panel(document())
        self.icon.choose("About Quillmar")
        body = html.unescape(notifications.wait_for("About Quillmar").body)
        self.assertEqual(body, self.missing)

    def test_without_a_module_the_first_launch_goes_on_without_the_welcome_window(self):
        self.start_with_panel(None)
        self.assertIn(f"Could not show the welcome window: {self.missing}",
                      self.program.output().splitlines())
        self.icon.choose("Quit Quillmar")
        self.assertEqual(self.program.exit_status(), 0)

    def test_when_quillmar_is_not_running_there_is_no_menu(self):
        self.assert_failure(sub_command("menu"),
                            "Quillmar is not running, so there is no menu to show.")


if __name__ == "__main__":
    unittest.main()
