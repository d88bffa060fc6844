"""Double clicks of people whom one click would have served: the second must not answer a question
that comes up, or lies, under the first."""

import unittest

from accessible_windows import FIELD, LABEL
from pop_up_test_case import ROW_HEIGHT, PopUpTestCase
from quillmar_desktop import entry, run, sub_command, tools, wait_until
from windows_test_case import WindowsTestCase
from x_windows import XWindows

# With so many lines the buttons of a confirmation lie where those of a question do.
LINES = "true\ntrue\n"


class DoubleClickTest(WindowsTestCase, PopUpTestCase):

    def confirmed(self, title):
        """An item that asks whether to make the file of its title."""
        return entry(title, f"{LINES}touch '{self.scratch}/{title}'", confirmBeforeRunning=True,
                     runInBackground=False)

    def assert_run_at(self, window, at):
        """The button lies there, so that the second click fell on it."""
        place = window.place("Run")
        self.assertTrue(place.x <= at[0] < place.x + place.width, (place.x, at))
        self.assertTrue(place.y <= at[1] < place.y + place.height, (place.y, at))

    def double_click(self, place):
        # By way of the test's own process the clicks could be too far apart.
        run("xdotool", "mousemove", *map(str, place), "click", "--repeat", "2", "--delay", "100", "1")

    def move_active_window(self):
        """Moves a panel as the user can; where it opens it would not cover another one exactly."""
        run("xdotool", "getactivewindow", "windowmove", "300", "200")

    def made(self, title):
        return (self.scratch / title).exists()

    def mark(self):
        return entry("Mark", f"touch '{self.scratch}/Mark'", runInBackground=False)

    def run_mark(self):
        """Runs the item. What had been answered before would have run by then."""
        self.icon.choose("Mark")
        self.wait_for_file("Mark")

    def test_a_double_click_on_a_confirmation_leaves_the_question_behind_it_unanswered(self):
        ask = entry("Ask", f"{LINES}printf '<%s>' {{{{input}}}} >'{self.scratch}/Ask'",
                    inputPrompt="Which value?", confirmBeforeRunning=True,
                    runInBackground=False)
        window = self.open(tools(ask, self.mark()), "Ask")
        self.read(window)
        place = self.middle_of_run(window)
        self.double_click(place)
        question = self.question()
        self.wait_for_focus(question, FIELD)
        self.assert_run_at(question, place)
        self.run_mark()
        self.assertFalse(self.made("Ask"))
        # One may type at once, and the button still works.
        run("xdotool", "type", "value")
        wait_until(lambda: question.text() == "value", "the field holds what was typed")
        self.read(question)
        self.screen.click(*place)
        self.wait_for_file("Ask", "<value>")

    def test_a_double_click_in_a_menu_leaves_the_confirmation_below_it_unanswered(self):
        window = self.open(tools(self.confirmed("Erase"), self.mark()), "Erase")
        x, y = self.middle_of_run(window)
        window.press("Cancel")
        self.windows.wait_until_gone("Quillmar")
        run("xdotool", "mousemove", str(x - 40), str(y - ROW_HEIGHT // 2))
        self.assertEqual(sub_command("menu").returncode, 0)
        self.x_windows = XWindows(self.program.process.pid)
        self.open_menu()
        self.double_click((x, y))
        window = self.windows.wait_for("Quillmar")
        self.assert_run_at(window, (x, y))
        self.run_mark()
        self.assertFalse(self.made("Erase"))
        window.press("Run")
        self.wait_for_file("Erase")

    def test_a_double_click_answers_one_of_two_confirmations_that_overlap(self):
        lower = self.open(tools(self.confirmed("One"), self.confirmed("Two"), self.mark()), "One")
        self.read(lower)
        self.move_active_window()
        self.icon.choose("Two")
        wait_until(lambda: len(self.windows.all()) == 2, "there are two panels")
        upper = next(shown for _, shown in self.windows.all() if "Run “Two”?" in shown.names(LABEL))
        self.read(upper)
        self.move_active_window()
        wait_until(lambda: self.middle_of_run(upper) == self.middle_of_run(lower),
                   "the panels lie on each other")
        place = self.middle_of_run(upper)
        self.double_click(place)
        self.wait_for_file("Two")
        self.run_mark()
        self.assertFalse(self.made("One"))
        self.assertEqual(len(self.windows.all()), 1)


if __name__ == "__main__":
    unittest.main()
