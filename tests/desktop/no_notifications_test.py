"""A desktop without a notification service."""

import unittest

from quillmar_desktop import DesktopTestCase, clipboard_text, entry, tools, wait_until


class NoNotificationsTest(DesktopTestCase):

    def test_the_error_is_written_to_the_output_and_the_program_goes_on(self):
        program, icon = self.start_with_icon(tools(
            entry("Say", "echo something", showNotification=True),
            entry("Copy", "echo copied", copyToClipboard=True)))
        icon.choose("Say")
        wait_until(lambda: "Notification error: " in program.output(), "the error is told")
        icon.choose("Copy")
        wait_until(lambda: clipboard_text() == "copied", "the output is on the clipboard")


if __name__ == "__main__":
    unittest.main()
