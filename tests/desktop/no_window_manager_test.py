"""Windows on a display that has no window manager, where nobody but the program gives them the
keyboard."""

import os
import subprocess
import unittest

from accessible_windows import BUTTON, FIELD
from quillmar_desktop import DEADLINE_SECONDS, entry, run, tools, wait_until
from windows_test_case import WindowsTestCase
from x_display import Display
from x_windows import XWindows
from Xlib import X


class NoWindowManagerTest(WindowsTestCase):

    def setUp(self):
        super().setUp()
        self.display = Display()
        self.addCleanup(self.display.end)
        self.display_name = self.display.name
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

    def test_a_window_keeps_the_keyboard_when_the_window_manager_starts_later(self):
        self.start_with_windows(None, environment=self.variables)
        window = self.windows.wait_for("Welcome to Quillmar")
        self.wait_for_focus(window, BUTTON, "Get Started")
        manager = subprocess.Popen(["xfwm4", "--compositor=off"],
                                   env={**os.environ, **self.variables},
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(manager.wait, DEADLINE_SECONDS)
        self.addCleanup(manager.terminate)
        on_screen = XWindows(self.program.process.pid, self.display.name)
        wait_until(on_screen.embedded, "the window is in a frame")
        wait_until(lambda: self.manager_has_activated(on_screen), "the window has the keyboard")
        self.hand("key", "Return")
        self.windows.wait_until_gone("Welcome to Quillmar")

    def manager_has_activated(self, on_screen):
        """The window manager says that one of our windows is the active one."""
        active = on_screen.root.get_full_property(
            on_screen.display.intern_atom("_NET_ACTIVE_WINDOW"), X.AnyPropertyType)
        if active is None or not active.value[0]:
            return False
        return on_screen.is_ours(on_screen.display.create_resource_object(
            "window", active.value[0]))


if __name__ == "__main__":
    unittest.main()
