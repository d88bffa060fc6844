"""A display that goes away while the program runs. It is not the display of the panel, which stays.
"""

import html
import unittest

from quillmar_desktop import Notifications, entry, tools, wait_until
from windows_test_case import WindowsTestCase
from x_display import Display

RESTART = "Quillmar starts again because the connection to the display was lost."


class DisplayTest(WindowsTestCase):

    def setUp(self):
        super().setUp()
        self.display = Display()
        self.addCleanup(self.display.end)

    def start_on_display(self, settings):
        self.start_with_windows(settings, environment={"DISPLAY": self.display.name})

    def assert_that_it_continues_without_the_display(self):
        settings = self.program.folder / "settings.json"
        before = settings.read_bytes()
        menu = self.icon.menu()
        self.display.end()
        self.icon = self.icon.of_next_start()
        self.assertEqual(self.icon.menu(), menu)
        self.assertIn(RESTART, self.program.output().splitlines())
        self.assertEqual(settings.read_bytes(), before)
        self.icon.choose("Quit Quillmar")
        self.assertEqual(self.program.exit_status(), 0)

    def test_while_a_window_is_open_the_program_starts_again_without_windows(self):
        self.start_on_display(tools(entry("Kept")))
        self.icon.choose("About Quillmar")
        self.windows.wait_for("About Quillmar")
        self.assert_that_it_continues_without_the_display()

    def test_while_an_editor_is_open_the_program_starts_again_without_windows(self):
        self.start_on_display(tools(entry("Kept")))
        self.icon.choose("Settings...")
        self.windows.wait_for("Quillmar Settings").press("Add Item")
        self.windows.wait_for("Add Item")
        self.assert_that_it_continues_without_the_display()

    def test_while_the_welcome_window_is_open_the_starter_pack_is_saved_all_the_same(self):
        self.start_on_display(None)
        self.windows.wait_for("Welcome to Quillmar")
        self.assert_that_it_continues_without_the_display()
        self.assertIn(b'"Copy"', (self.program.folder / "settings.json").read_bytes())

    def test_after_the_last_window_has_closed_the_program_starts_again(self):
        self.start_on_display(self.ask())
        self.icon.choose("Ask")
        self.windows.wait_for("Quillmar").press("Cancel")
        self.windows.wait_until_gone("Quillmar")
        self.assert_that_it_continues_without_the_display()

    def test_while_commands_run_the_program_starts_again_and_they_go_on(self):
        self.start_on_display(tools(entry(
            "Wait", f"touch '{self.scratch}/waits'; while ! [ -e '{self.scratch}/go' ]; do "
            f"sleep 0.1; done; touch '{self.scratch}/went'")))
        self.icon.choose("About Quillmar")
        self.windows.wait_for("About Quillmar")
        self.icon.choose("Wait")
        self.wait_for_file("waits")
        self.assert_that_it_continues_without_the_display()
        (self.scratch / "go").touch()
        self.wait_for_file("went")

    def test_the_first_window_opens_on_a_server_that_has_no_other_client(self):
        # Servers reset, and refuse connections meanwhile, when their last client disconnects; this
        # one ends.
        self.display.end()
        self.display = Display(ends_with_last_client=True)
        self.addCleanup(self.display.end)
        self.start_on_display(tools(entry("Kept")))
        self.icon.choose("About Quillmar")
        self.windows.wait_for("About Quillmar")

    def test_before_any_window_was_shown_the_program_goes_on_without_windows(self):
        notifications = Notifications()
        self.start_on_display(tools(
            entry("Ask", f"touch '{self.scratch}/asked'; echo {{{{input}}}}"),
            entry("Plain", f"touch '{self.scratch}/plain'")))
        self.display.end()
        self.icon.choose("Ask")
        body = html.unescape(notifications.wait_for("Ask").body)
        self.assertEqual(body, "Quillmar cannot show windows, because the X server "
                         f"“{self.display.name}” cannot be reached.")
        self.icon.choose("Plain")
        self.wait_for_file("plain")
        self.assertFalse((self.scratch / "asked").exists())
        self.icon.choose("Quit Quillmar")
        self.assertEqual(self.program.exit_status(), 0)

    def test_when_only_the_clipboard_was_used_the_program_goes_on(self):
        self.start_on_display(tools(
            entry("Copy", "printf copied", copyToClipboard=True),
            entry("Plain", f"touch '{self.scratch}/plain'")))
        self.icon.choose("Copy")
        wait_until(lambda: self.display.clipboard_text() == "copied", "the output is copied")
        self.display.end()
        self.icon.choose("Copy")
        self.icon.choose("Plain")
        self.wait_for_file("plain")
        self.icon.choose("Quit Quillmar")
        self.assertEqual(self.program.exit_status(), 0)


if __name__ == "__main__":
    unittest.main()
