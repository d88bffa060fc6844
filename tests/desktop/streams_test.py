"""The standard streams that the program was started with."""

import os
import unittest

from quillmar_desktop import DesktopTestCase, entry, tools

NO_DISPLAY = {"DISPLAY": "", "WAYLAND_DISPLAY": ""}


def full_pipe():
    """Both ends of a pipe to which nothing more can be written."""
    reading, writing = os.pipe()
    os.set_blocking(writing, False)
    try:
        while True:
            os.write(writing, b"." * 4096)
    except BlockingIOError:
        pass
    os.set_blocking(writing, True)
    return reading, writing


class StreamsTest(DesktopTestCase):

    def test_a_blocked_standard_output_does_not_block_the_menu(self):
        reading, writing = full_pipe()
        self.addCleanup(os.close, reading)
        # The first item logs that there is no clipboard, before the second can be chosen.
        program, icon = self.start_with_icon(
            tools(entry("Copy", "echo text", copyToClipboard=True, runInBackground=False),
                  entry("Touch", f"touch '{self.scratch}/touched'")),
            environment=NO_DISPLAY, stdout=writing)
        os.close(writing)
        icon.choose("Copy")
        icon.choose("Touch")
        self.wait_for_file("touched")
        icon.choose("Quit Quillmar")
        self.assertEqual(program.exit_status(), 0)

    def test_log_lines_arrive_also_when_the_program_ends_at_once(self):
        program, icon = self.start_with_icon(
            tools(entry("Copy", "echo text", copyToClipboard=True, runInBackground=False)),
            environment=NO_DISPLAY)
        icon.choose("Copy")
        icon.choose("Quit Quillmar")
        self.assertEqual(program.exit_status(), 0)
        self.assertIn("The text was not copied to the clipboard: there is no display",
                      program.output())

    def test_commands_do_not_read_the_standard_input_of_the_program(self):
        reading, writing = os.pipe()
        os.write(writing, b"typed")
        os.close(writing)
        _, icon = self.start_with_icon(
            tools(entry("Read", f"cat >'{self.scratch}/read'; touch '{self.scratch}/done'")),
            stdin=reading)
        os.close(reading)
        icon.choose("Read")
        self.wait_for_file("done")
        self.wait_for_file("read", "")


if __name__ == "__main__":
    unittest.main()
