"""The sizes of the windows and the places of what is in them, on ordinary displays and on displays
with twice as many pixels. The fonts decide on the height of texts, fields and buttons."""

import unittest

from accessible_windows import BUTTON, FIELD, IMAGE, LABEL
from quillmar_desktop import entry, tools
from windows_test_case import WindowsTestCase
from x_windows import XWindows

SCREEN = (1280, 800)


class GeometryTest(WindowsTestCase):

    def show(self, title, settings, *path, scale):
        """Shows a window with that many pixels to a point."""
        self.scale = scale
        self.start_with_windows(settings, environment={"QT_SCALE_FACTOR": str(scale)})
        if path:
            self.icon.choose(*path)
        self.window = self.windows.wait_for(title)
        self.on_screen = XWindows(self.program.process.pid).titled(title)

    def points(self):
        """The window's size in points, as the display has it."""
        return self.on_screen.width / self.scale, self.on_screen.height / self.scale

    def place(self, role, name=""):
        """Where an element is in the window, in points: left, top, right, bottom."""
        content = self.window.content_place()
        place = self.window.place(name, role)
        left, top = place.x - content.x, place.y - content.y
        return left, top, left + place.width, top + place.height

    def assert_centred(self, left, right):
        width, _ = self.points()
        self.assertLessEqual(abs(left - (width - right)), 1, f"from {left} to {right} of {width}")

    def assert_in_the_middle_of_the_screen(self):
        """As far as can be told before the window manager has made a frame."""
        window = self.on_screen
        aside = abs(window.x - (SCREEN[0] - window.x - window.width)) / 2
        lower = abs(window.y - (SCREEN[1] - window.y - window.height)) / 2
        self.assertLessEqual(aside, 4 * self.scale)
        self.assertLessEqual(lower, 20 * self.scale)

    def question(self, scale):
        self.show("Quillmar", self.ask(), "Ask", scale=scale)
        width, height = self.points()
        self.assertEqual(width, 420)
        self.assertGreaterEqual(height, 140)
        self.assert_in_the_middle_of_the_screen()
        self.assertEqual(self.place(IMAGE), (18, 18, 66, 66))
        title = self.place(LABEL, "Ask")
        message = self.place(LABEL, "Which value?")
        field = self.place(FIELD, "Which value?")
        cancel, confirm = self.place(BUTTON, "Cancel"), self.place(BUTTON, "Run")
        self.assertEqual(title[:2], (82, 18))
        self.assertEqual(message[:2], (82, title[3] + 10))
        self.assertEqual(field[:3], (82, message[3] + 10, 402))
        self.assertEqual(confirm[1:], (field[3] + 10, 402, height - 18))
        self.assertEqual(cancel[1], confirm[1])
        self.assertLess(cancel[2], confirm[0])

    def confirmation(self, scale):
        self.show("Quillmar", tools(entry("Go", "echo gone", confirmBeforeRunning=True)), "Go",
                  scale=scale)
        self.assertEqual(self.points(), (420, 140))
        self.assertEqual(self.place(IMAGE), (18, 18, 66, 66))
        self.assertEqual(self.place(LABEL, "Run “Go”?")[:2], (82, 18))
        self.assertEqual(self.place(BUTTON, "Run")[2], 402)

    def long_confirmation(self, scale):
        command = "\n".join(f"echo line {number}" for number in range(10))
        self.show("Quillmar", tools(entry("Go", command, confirmBeforeRunning=True)), "Go",
                  scale=scale)
        width, height = self.points()
        self.assertEqual(width, 420)
        self.assertGreater(height, 140)
        message = self.place(LABEL, command)
        confirm = self.place(BUTTON, "Run")
        self.assertEqual(confirm[1:], (message[3] + 10, 402, height - 18))

    def welcome(self, scale):
        self.show("Welcome to Quillmar", None, scale=scale)
        self.assertEqual(self.points(), (480, 320))
        self.assert_in_the_middle_of_the_screen()
        icon = self.place(IMAGE)
        title = self.place(LABEL, "Welcome to Quillmar")
        body = self.place(LABEL, self.window.names(LABEL)[1])
        buttons = [self.place(BUTTON, name)
                   for name in ("Browse Packs…", "Open Settings", "Get Started")]
        self.assertEqual(icon, (192, 24, 288, 120))
        self.assertEqual(title[1], 134)
        self.assert_centred(title[0], title[2])
        self.assertEqual(body[:3], (24, title[3] + 14, 456))
        self.assertEqual({button[1] for button in buttons}, {body[3] + 14})
        self.assertEqual(buttons[1][0], buttons[0][2] + 12)
        self.assertEqual(buttons[2][0], buttons[1][2] + 12)
        self.assert_centred(buttons[0][0], buttons[2][2])
        self.assertLessEqual(buttons[0][3], 320 - 24)

    def test_a_question_has_its_size_and_its_parts_their_places(self):
        self.question(scale=1)

    def test_a_question_has_twice_the_pixels_on_a_display_that_has_them(self):
        self.question(scale=2)

    def test_a_confirmation_has_its_size_and_its_parts_their_places(self):
        self.confirmation(scale=1)

    def test_a_confirmation_has_twice_the_pixels_on_a_display_that_has_them(self):
        self.confirmation(scale=2)

    def test_a_confirmation_of_many_lines_is_as_high_as_they_need(self):
        self.long_confirmation(scale=1)

    def test_a_confirmation_of_many_lines_has_twice_the_pixels_on_a_display_that_has_them(self):
        self.long_confirmation(scale=2)

    def test_the_welcome_window_has_its_size_and_its_parts_their_places(self):
        self.welcome(scale=1)

    def test_the_welcome_window_has_twice_the_pixels_on_a_display_that_has_them(self):
        self.welcome(scale=2)


if __name__ == "__main__":
    unittest.main()
