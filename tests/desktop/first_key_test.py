"""The first key that is pressed for a window, however soon."""

import contextlib
import signal
import unittest

from accessible_windows import BUTTON
from held_key import HeldKey
from other_program import OtherProgram
from quillmar_desktop import entry, run, tools, wait_until
from windows_test_case import WindowsTestCase
from Xlib import X


class FirstKeyTest(WindowsTestCase):

    def setUp(self):
        super().setUp()
        self.other = OtherProgram()
        self.other.take_focus()
        self.window = self.open(tools(entry("Mark", f"touch '{self.scratch}/mark'",
                                            confirmBeforeRunning=True)), "Mark")
        self.wait_for_focus(self.window, BUTTON, "Run")
        self.panel = self.other.display.get_input_focus().focus

    def focus(self, window):
        window.set_input_focus(X.RevertToParent, X.CurrentTime)
        self.other.display.sync()

    @contextlib.contextmanager
    def busy_program(self):
        """What happens in the meantime the program learns later, at once."""
        self.program.send(signal.SIGSTOP)
        try:
            yield
        finally:
            self.program.send(signal.SIGCONT)

    def test_a_key_that_goes_down_before_the_focus_event_arrives_is_not_lost(self):
        self.focus(self.other.window)
        wait_until(lambda: self.window.focused() is None, "the panel has lost the focus")
        with contextlib.ExitStack() as held:
            with self.busy_program():
                self.focus(self.panel)
                held.enter_context(HeldKey("Return"))
            self.wait_for_file("mark")

    def test_a_key_that_is_down_when_the_pointer_comes_is_heard(self):
        run("xdotool", "mousemove", "10", "700")
        place = self.window.content_place()
        with contextlib.ExitStack() as held:
            with self.busy_program():
                held.enter_context(HeldKey("Return"))
                run("xdotool", "mousemove", str(place.x + 5), str(place.y + 5))
            self.wait_for_file("mark")


if __name__ == "__main__":
    unittest.main()
