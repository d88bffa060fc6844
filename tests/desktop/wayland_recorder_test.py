"""The control that records a shortcut, in a Wayland session."""

import unittest

from accessible_windows import BUTTON
from quillmar_desktop import run, wait_until
from recorder_test import Recorders, line
from wayland_test import WaylandTestCase

COMMAND_FLAG = 0x100000


class WaylandRecorderTest(WaylandTestCase):

    def setUp(self):
        super().setUp()
        self.bound = self.compositor.folder / "bound"
        run("swaymsg", "bindsym", "Mod4+l", "exec", "touch", str(self.bound))
        self.recorders = Recorders(self.scratch)
        self.addCleanup(self.recorders.end)
        self.compositor.wait_for_focus()

    def press_super_l(self):
        run("wtype", "-M", "logo", "-k", "l", "-m", "logo")

    def start_recording(self):
        wait_until(lambda: self.recorders.window.focused() == (BUTTON, "Save"),
                   "the default button has the focus")
        self.compositor.press("Tab", "Tab", "space")
        wait_until(self.recorders.is_recording, "it records")

    def test_a_combination_of_the_compositor_is_recorded_and_does_nothing_else(self):
        self.start_recording()
        self.press_super_l()
        recorded = self.recorders.wait_for_line(1)
        # The tool that presses the key chooses its position.
        virtual_key = recorded.split()[1]
        self.assertEqual(recorded, line("second", virtual_key, "l", COMMAND_FLAG))
        self.assertFalse(self.bound.exists())
        # Afterwards the compositor has the combination again.
        self.press_super_l()
        wait_until(self.bound.exists, "the compositor uses the combination")
        self.assertEqual(len(self.recorders.lines()), 1)

    def test_the_compositor_has_its_combinations_after_the_program_was_killed(self):
        self.start_recording()
        self.recorders.end()
        self.compositor.wait_for_no_window()
        self.press_super_l()
        wait_until(self.bound.exists, "the compositor uses the combination")


if __name__ == "__main__":
    unittest.main()
