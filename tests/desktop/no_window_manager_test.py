"""Windows on a display that has no window manager, where nobody but the program gives them the
keyboard."""

import os
import unittest

from accessible_windows import BUTTON, FIELD
from quillmar_desktop import entry, run, tools, wait_until
from windows_test_case import WindowsTestCase
from x_display import Display


class NoWindowManagerTest(WindowsTestCase):

    def setUp(self):
        super().setUp()
        self.display = Display()
        self.addCleanup(self.display.end)
        self.variables = {"DISPLAY": self.display.name}
        # Keys that nobody has the focus for go to the window at the pointer.
        self.hand("mousemove", "0", "0")

    def hand(self, *words):
        run("xdotool", *words, env={**os.environ, **self.variables})

    def test_what_is_typed_reaches_the_questions_one_after_another(self):
        window = self.open(self.ask(confirmBeforeRunning=True), "Ask", environment=self.variables)
        self.wait_for_focus(window, BUTTON, "Run")
        self.hand("key", "Return")
        self.wait_for_focus(self.question(), FIELD)
        self.hand("type", "typed")
        self.hand("key", "Return")
        self.wait_for_file("value", "typed")

    def test_a_second_panel_takes_the_keyboard_from_the_first(self):
        self.open(tools(entry("One", confirmBeforeRunning=True),
                        entry("Two", f"touch '{self.scratch}/two'", confirmBeforeRunning=True)),
                  "One", environment=self.variables)
        self.icon.choose("Two")
        wait_until(lambda: [window.focused() for _, window in self.windows.all()].count(
            (BUTTON, "Run")) == 1 and len(self.windows.all()) == 2, "one of two has the focus")
        self.hand("key", "Return")
        self.wait_for_file("two")


if __name__ == "__main__":
    unittest.main()
