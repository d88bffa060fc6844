"""The program's windows on a real display: read and pressed by way of the accessibility bus, typed
into with the keyboard."""

import json
import os
import re
import subprocess
import unittest

from accessible_windows import BUTTON, FIELD, LABEL, LINK, AccessibleWindows
from held_key import HeldKey
from other_program import OtherProgram
from quillmar_desktop import (DEADLINE_SECONDS, Screen, StatusIcon, document, entry, run, tools,
                              wait_until)
from windows_test_case import WindowsTestCase
from x_windows import XWindows

SCREEN_WIDTH = 1280
SCREEN_HEIGHT = 800


class PromptPanelOnTheDesktopTest(WindowsTestCase):

    def test_what_is_typed_reaches_the_command(self):
        window = self.open(self.ask(), "Ask")
        self.wait_for_focus(window, FIELD, "Which value?")
        run("xdotool", "type", "two words")
        wait_until(lambda: window.text() == "two words", "the field holds what was typed")
        Screen().press("Return")
        self.wait_for_file("value", "two words")
        self.windows.wait_until_gone("Quillmar")

    def test_a_screen_reader_reads_fills_and_presses_it(self):
        window = self.open(self.ask(), "Ask")
        self.assertEqual([name for name in window.names(LABEL) if name], ["Ask", "Which value?"])
        self.assertEqual(window.names(BUTTON), ["Cancel", "Run"])
        self.assertEqual(window.names(FIELD), ["Which value?"])
        window.type("read aloud")
        window.press("Run")
        self.wait_for_file("value", "read aloud")

    def test_one_can_type_at_once_while_another_program_had_the_focus(self):
        other = OtherProgram()
        other.take_focus()
        self.open(self.ask(), "Ask")
        wait_until(lambda: not other.has_focus(), "the panel has the focus")
        run("xdotool", "type", "mine")
        Screen().press("Return")
        self.wait_for_file("value", "mine")
        self.assertEqual(other.typed_keys(), 0)

    def test_after_a_confirmation_with_the_mouse_one_can_type_the_answer_at_once(self):
        other = OtherProgram()
        other.take_focus()
        window = self.open(self.ask(confirmBeforeRunning=True), "Ask")
        self.assertEqual(window.names(FIELD), [])
        self.read(window)
        Screen().click(*self.middle_of_run(window))
        self.wait_for_focus(self.question(), FIELD, "Which value?")
        run("xdotool", "type", "mine")
        Screen().press("Return")
        self.wait_for_file("value", "mine")
        self.windows.wait_until_gone("Quillmar")
        self.assertEqual(other.typed_keys(), 0)

    def test_a_key_that_is_held_down_answers_one_question_only(self):
        window = self.open(self.ask(confirmBeforeRunning=True), "Ask")
        self.wait_for_focus(window, BUTTON, "Run")
        with HeldKey("Return") as key:
            self.wait_for_focus(self.question(), FIELD, "Which value?")
            key.wait_for_presses(20)
        run("xdotool", "type", "mine")
        Screen().press("Return")
        self.wait_for_file("value", "mine")
        self.windows.wait_until_gone("Quillmar")

    def test_a_key_that_is_held_down_already_answers_no_question(self):
        with HeldKey("Return") as key:
            key.wait_for_presses(2)
            window = self.open(self.ask(), "Ask")
            self.wait_for_focus(window, FIELD, "Which value?")
            key.wait_for_presses(20)
        run("xdotool", "type", "mine")
        Screen().press("Return")
        self.wait_for_file("value", "mine")

    def test_escape_and_the_window_managers_close_run_nothing(self):
        window = self.open(self.ask(), "Ask")
        self.wait_for_focus(window, FIELD)
        Screen().press("Escape")
        self.windows.wait_until_gone("Quillmar")
        self.icon.choose("Ask")
        self.wait_for_focus(self.windows.wait_for("Quillmar"), FIELD)
        Screen().press("alt+F4")
        self.windows.wait_until_gone("Quillmar")
        # The next answer is the first to arrive.
        self.icon.choose("Ask")
        window = self.windows.wait_for("Quillmar")
        window.type("third")
        window.press("Run")
        self.wait_for_file("value", "third")

    def test_a_confirmation_shows_the_command_and_return_runs_it(self):
        command = f"echo '<b>&amp; done' >'{self.scratch}/done'"
        window = self.open(tools(entry("Erase", command, confirmBeforeRunning=True)), "Erase")
        self.assertTrue(any(command in name for name in window.names(LABEL)), window.names(LABEL))
        self.assertEqual(window.names(FIELD), [])
        self.wait_for_focus(window, BUTTON, "Run")
        Screen().press("Return")
        self.wait_for_file("done", "<b>&amp; done\n")

    def test_return_on_the_focused_cancel_button_cancels(self):
        settings = tools(entry("Erase", f"touch '{self.scratch}/done'", confirmBeforeRunning=True),
                         entry("Mark", f"touch '{self.scratch}/mark'"))
        window = self.open(settings, "Erase")
        self.wait_for_focus(window, BUTTON, "Run")
        Screen().press("shift+Tab")
        self.wait_for_focus(window, BUTTON, "Cancel")
        Screen().press("Return")
        self.windows.wait_until_gone("Quillmar")
        self.icon.choose("Mark")
        self.wait_for_file("mark")
        self.assertFalse((self.scratch / "done").exists())

    def test_neither_a_long_title_nor_a_long_command_pushes_the_buttons_off_the_screen(self):
        command = "\n".join(f"echo line {number}" for number in range(500))
        # The menu cuts the title, the panel does not.
        label = "T" * 499 + "…"
        window = self.open(tools(entry("T" * 2000, command, confirmBeforeRunning=True)), label)
        for name in ("Cancel", "Run"):
            place = window.place(name)
            self.assertGreaterEqual(place.x, 0)
            self.assertGreaterEqual(place.y, 0)
            self.assertLessEqual(place.x + place.width, SCREEN_WIDTH)
            self.assertLessEqual(place.y + place.height, SCREEN_HEIGHT)

    def test_several_panels_wait_side_by_side(self):
        self.open(tools(
            entry("First", f"touch '{self.scratch}/first'", confirmBeforeRunning=True),
            entry("Second", f"touch '{self.scratch}/second'", confirmBeforeRunning=True)), "First")
        self.icon.choose("Second")
        wait_until(lambda: len(self.windows.all()) == 2, "there are two panels")
        first, second = (shown for shown in XWindows(self.program.process.pid).all()
                         if shown.title == "Quillmar")
        # By a title bar at least.
        self.assertGreaterEqual(abs(first.y - second.y), 15)
        for _, window in self.windows.all():
            window.press("Run")
        self.wait_for_file("first")
        self.wait_for_file("second")

    def test_quitting_ends_the_program_while_a_panel_is_open(self):
        self.open(self.ask(), "Ask")
        self.icon.choose("Quit Quillmar")
        self.assertEqual(self.program.exit_status(), 0)


class WelcomeWindowOnTheDesktopTest(WindowsTestCase):

    def launch(self):
        """The very first launch."""
        self.start_with_windows(None)
        return self.windows.wait_for("Welcome to Quillmar")

    def starter_commands(self):
        settings = json.loads((self.program.folder / "settings.json").read_text(encoding="utf-8"))
        return [item for category in settings["categories"] for item in category["items"]
                if not item.get("isSeparator")]

    def test_the_first_launch_greets_with_the_starter_pack(self):
        window = self.launch()
        count = len(self.starter_commands())
        self.assertGreaterEqual(count, 12)
        texts = window.names(LABEL)
        self.assertEqual(texts[0], "Welcome to Quillmar")
        self.assertIn(f"run any of the {count} starter commands we just installed", texts[1])
        self.assertEqual(window.names(BUTTON), ["Browse Packs…", "Open Settings", "Get Started"])
        self.wait_for_focus(window, BUTTON, "Get Started")
        Screen().press("Return")
        self.windows.wait_until_gone("Welcome to Quillmar")
        titles = [shown.title for shown in self.icon.menu()]
        self.assertIn("Copy", titles)
        self.assertIn("Quit Quillmar", titles)

    def test_the_second_launch_shows_no_welcome_window(self):
        self.launch().press("Get Started")
        self.windows.wait_until_gone("Welcome to Quillmar")
        self.icon.choose("Quit Quillmar")
        self.program.exit_status()
        folder = self.program.folder
        before = (folder / "settings.json").read_bytes()
        self.program = self.start(settings_directory=folder)
        self.windows = AccessibleWindows(self.program.process.pid)
        # The About window comes after all that the launch shows.
        StatusIcon(self.bus, self.program).choose("About Quillmar")
        self.windows.wait_for("About Quillmar")
        self.assertEqual([title for title, _ in self.windows.all()], ["About Quillmar"])
        self.assertEqual((folder / "settings.json").read_bytes(), before)


class AboutWindowOnTheDesktopTest(WindowsTestCase):

    def test_it_tells_the_version_and_offers_the_links(self):
        window = self.open(document(), "About Quillmar", title="About Quillmar")
        version = subprocess.run([os.environ["QUILLMAR_PROGRAM"], "--version"], text=True,
                                 capture_output=True, check=True, timeout=DEADLINE_SECONDS).stdout
        texts = window.names(LABEL)
        self.assertEqual(texts[:2], ["Quillmar", "Version " + version.split()[1]])
        self.assertTrue(re.search("©|Copyright", texts[2]), texts)
        self.assertFalse(window.is_enabled("Check for Updates…"))
        self.assertEqual(len(window.names(LINK)), 2)
        Screen().press("Escape")
        self.windows.wait_until_gone("About Quillmar")
        self.icon.choose("About Quillmar")
        self.windows.wait_for("About Quillmar")

    def test_it_has_the_focus_again_when_it_is_reopened_at_once(self):
        window = self.open(document(), "About Quillmar", title="About Quillmar")
        wait_until(window.is_active, "the window has the keyboard")
        Screen().press("Tab")
        self.wait_for_focus(window, LINK)
        site = window.focused()[1]
        on_screen = XWindows(self.program.process.pid)
        for _ in range(5):
            Screen().press("Escape")
            wait_until(lambda: not on_screen.all(), "the window has closed")
            self.icon.choose("About Quillmar")
            self.wait_for_focus(self.windows.wait_for("About Quillmar"), LINK, site)


if __name__ == "__main__":
    unittest.main()
