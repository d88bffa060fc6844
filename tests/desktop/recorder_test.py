"""The control that records a shortcut, with real keys on an X display."""

import os
import pathlib
import signal
import subprocess
import unittest

from accessible_windows import BUTTON, AccessibleWindows
from bells import Bells
from gi.repository import Atspi
from held_key import HeldKey
from hot_keys_test import HotKeysTestCase
from keyboard import (ALT, COMMAND_FLAG, CONTROL_FLAG, OPTION_FLAG, SECOND_LAYOUT, SHIFT_FLAG,
                      SUPER_SHIFT_K, SUPER_SHIFT_L, Combination, Keyboard, keyboard_is_free)
from other_program import OtherProgram
from quillmar_desktop import DesktopTestCase, Screen, run, wait_until
from Xlib import X

FUNCTION_KEYS = {67 + number: code for number, code in enumerate(
    (122, 120, 99, 118, 96, 97, 98, 100, 101, 109))} | {95: 103, 96: 111} | {
        191 + number: code for number, code in enumerate((105, 107, 113, 106, 64, 79, 80, 90))}

# The X key code, the virtual key code, and what the key types without modifiers in three layouts.
KEYS = [
    (38, 0, "a", "q", "ф"),
    (11, 19, "2", "é", "2"),
    (59, 43, ",", ";", "б"),
    (20, 27, "-", ")", "-"),
    (34, 33, "[", "^", "х"),   # a dead key in the second layout
    (48, 39, "'", "ù", "э"),
    (24, 12, "q", "a", "й"),
    (94, 10, "<", "<", "/"),
    (71, 96, *["\uf708"] * 3),
    (191, 105, *["\uf710"] * 3),
    (114, 124, *["\uf703"] * 3),
    (84, 87, *["5"] * 3),
    (86, 69, *["+"] * 3),
    (65, 49, *[" "] * 3),
    (119, 117, *["\uf728"] * 3),
    (22, 51, *["\x7f"] * 3),
    (23, 48, *["\t"] * 3),
    (36, 36, *["\r"] * 3),
    (9, 53, *["\x1b"] * 3),
    (110, 115, *["\uf729"] * 3),
    (118, 114, *["\uf727"] * 3),
]


class Recorders:
    """The window with two recorders, "first" with Super+Shift+K and "second" without a shortcut."""

    def __init__(self, folder):
        program = pathlib.Path(os.environ["QUILLMAR_PROGRAM"]).parent / "recorder_program"
        self.output = folder / "recorded"
        with open(self.output, "wb") as output:
            self.process = subprocess.Popen([program], stdin=subprocess.DEVNULL, stdout=output)
        self.window = AccessibleWindows(self.process.pid).wait_for("Recorders")

    def end(self):
        self.process.kill()
        self.process.wait()

    def lines(self):
        return self.output.read_text(encoding="utf-8").splitlines()

    def wait_for_line(self, number):
        """The line of this number, counted from 1, once it is there."""
        wait_until(lambda: len(self.lines()) >= number, f"line {number} is written")
        return self.lines()[number - 1]

    def element(self, name):
        return self.window.element(BUTTON, name)

    def value(self, name):
        """What a screen reader says after the name."""
        return self.element(name).get_description()

    def is_recording(self, name="second"):
        return self.element(name).get_state_set().contains(Atspi.StateType.PRESSED)

    def click(self, name="second"):
        place = self.window.place(name)
        Screen().click(place.x + place.width // 2, place.y + place.height // 2)

    def start_recording(self, name="second"):
        self.click(name)
        wait_until(lambda: self.is_recording(name) and not keyboard_is_free(),
                   f"{name} records and has the keyboard")

    def wait_for_end(self, name="second"):
        wait_until(lambda: not self.is_recording(name), f"{name} does not record")


def line(name, virtual_key, character, flags, is_global=True):
    """What the program writes when a shortcut was recorded."""
    return f"{name} {virtual_key} {character.encode().hex() or '-'} {flags} {int(is_global)}"


class RecorderTestCase(DesktopTestCase):

    def setUp(self):
        super().setUp()
        self.keyboard = Keyboard()
        self.recorders = Recorders(self.scratch)
        self.addCleanup(self.recorders.end)
        wait_until(self.recorders.window.is_active, "the window has the keyboard")

    def wait_until_free(self):
        wait_until(keyboard_is_free, "the keyboard is free")

    def record(self, combination):
        """Types the combination and answers the line that the program writes."""
        count = len(self.recorders.lines())
        self.recorders.start_recording()
        self.keyboard.type(combination)
        return self.recorders.wait_for_line(count + 1)


class RecordedKeysTest(RecorderTestCase):

    def check_keys(self, layout, characters):
        for (key, virtual_key, *_), character in zip(KEYS, characters):
            for flags in (COMMAND_FLAG, CONTROL_FLAG | OPTION_FLAG | SHIFT_FLAG):
                with self.subTest(layout=layout, key=key, flags=flags):
                    self.assertEqual(self.record(Combination(key, virtual_key, flags)),
                                     line("second", virtual_key, character, flags))

    def test_keys_are_stored_by_their_position_and_their_character_in_the_layout(self):
        us, french, russian = ([key[column] for key in KEYS] for column in (2, 3, 4))
        self.check_keys("us", us)
        self.keyboard.set_layout("fr")
        self.check_keys("fr", french)
        self.keyboard.set_layout("us,ru", "-option", "grp:menu_toggle")
        self.keyboard.use_second_layout()
        self.assertTrue(self.keyboard.state() & SECOND_LAYOUT)
        self.check_keys("ru", russian)

    def test_function_keys_need_no_modifier(self):
        for number, (key, virtual_key) in enumerate(FUNCTION_KEYS.items()):
            with self.subTest(key=key):
                self.assertEqual(self.record(Combination(key, virtual_key)),
                                 line("second", virtual_key, chr(0xf704 + number), 0))
                self.assertEqual(self.recorders.value("second"), f"F{number + 1}")

    def test_locks_make_no_difference(self):
        for caps_lock, num_lock in ((True, True), (True, False), (False, True)):
            self.keyboard.set_locks(caps_lock, num_lock)
            for key, virtual_key, character, *_ in KEYS:
                with self.subTest(key=key, caps_lock=caps_lock, num_lock=num_lock):
                    self.assertEqual(self.record(Combination(key, virtual_key, COMMAND_FLAG)),
                                     line("second", virtual_key, character, COMMAND_FLAG))

    def test_the_first_recording_is_global_and_the_next_keeps_what_was_set(self):
        self.recorders.start_recording("first")
        self.keyboard.type(SUPER_SHIFT_L)
        self.assertEqual(self.recorders.wait_for_line(1),
                         line("first", 37, "l", COMMAND_FLAG | SHIFT_FLAG))
        self.assertEqual(self.recorders.value("first"), "⇧⌘L")

    def test_a_letter_alone_and_with_shift_beeps_and_keeps_recording(self):
        bells = Bells()
        self.recorders.start_recording()
        for count, flags in enumerate((0, SHIFT_FLAG), 1):
            self.keyboard.type(Combination(38, 0, flags))
            wait_until(lambda count=count: bells.count() == count, "the bell rings")
            self.assertTrue(self.recorders.is_recording())
        self.assertEqual(self.recorders.lines(), [])

    def test_delete_removes_the_shortcut(self):
        self.recorders.start_recording("first")
        self.keyboard.type(Combination(22, 51))
        self.assertEqual(self.recorders.wait_for_line(1), "first none")
        self.assertEqual(self.recorders.value("first"), "Click to record")


class RecorderAndDesktopTest(RecorderTestCase):

    def test_combinations_of_the_window_manager_are_recorded_and_do_nothing_else(self):
        for key, virtual_key, character, flags in (
                (70, 118, "\uf707", OPTION_FLAG),                  # closes windows
                (23, 48, "\t", OPTION_FLAG),                       # switches windows
                (23, 48, "\t", COMMAND_FLAG),
                (65, 49, " ", OPTION_FLAG),                        # opens the window's menu
                (40, 2, "d", CONTROL_FLAG | OPTION_FLAG)):         # shows the desktop
            with self.subTest(key=key, flags=flags):
                self.assertEqual(self.record(Combination(key, virtual_key, flags)),
                                 line("second", virtual_key, character, flags))
                self.assertTrue(self.recorders.window.is_active())
        self.assertIsNone(self.recorders.process.poll())

    def test_a_combination_that_is_held_for_longer_is_recorded_and_does_nothing_else(self):
        self.recorders.start_recording()
        self.keyboard.press(ALT)
        with HeldKey("F4") as key:
            key.wait_for_presses(20)
            self.assertFalse(keyboard_is_free())
        self.keyboard.release(ALT)
        self.wait_until_free()
        self.assertEqual(self.recorders.lines(), [line("second", 118, "\uf707", OPTION_FLAG)])
        self.assertTrue(self.recorders.window.is_active())

    def test_escape_that_is_held_for_longer_presses_no_button(self):
        self.recorders.start_recording()
        with HeldKey("Escape") as key:
            key.wait_for_presses(20)
        self.wait_until_free()
        self.assertEqual(self.recorders.lines(), [])
        self.keyboard.type(Combination(9, 53))
        self.assertEqual(self.recorders.wait_for_line(1), "pressed Cancel")

    def test_the_keyboard_is_free_after_every_way_out(self):
        other = OtherProgram()
        self.addCleanup(other.display.close)
        other.take_focus()
        # Away from the recorders, wherever the window manager has placed it.
        other.window.configure(x=40, y=80)
        root = other.display.screen().root
        wait_until(lambda: root.translate_coords(other.window, 0, 0).x < 60, "it has moved")

        def focus_other():
            other.window.set_input_focus(X.RevertToParent, X.CurrentTime)
            other.display.sync()

        def click_beside():
            place = self.recorders.window.content_place()
            Screen().click(place.x + 4, place.y + 4)

        ways_out = {
            "a shortcut": lambda: self.keyboard.type(SUPER_SHIFT_K),
            "Escape": lambda: self.keyboard.type(Combination(9, 53)),
            "Delete": lambda: self.keyboard.type(Combination(119, 117)),
            "a click on it": self.recorders.click,
            "a click on the other one": lambda: [self.recorders.click("first")] * 2,
            "a click beside it": click_beside,
            "a click into another window": lambda: Screen().click(100, 140),
            "another window with the focus": focus_other,
        }
        for name, leave in ways_out.items():
            with self.subTest(name):
                self.recorders.start_recording()
                leave()
                self.recorders.wait_for_end()
                if name == "a click on the other one":
                    wait_until(lambda: self.recorders.is_recording("first"), "the other records")
                    self.recorders.click("first")
                    self.recorders.wait_for_end("first")
                self.wait_until_free()

    def test_the_keyboard_is_free_when_the_window_closes(self):
        self.recorders.start_recording()
        run("xdotool", "search", "--name", "^Recorders$", "windowclose")
        self.wait_until_free()

    def test_the_keyboard_is_free_when_the_program_is_killed(self):
        self.recorders.start_recording()
        self.recorders.process.send_signal(signal.SIGKILL)
        self.wait_until_free()

    def test_without_recording_keys_do_what_they_usually_do(self):
        self.recorders.start_recording()
        self.keyboard.type(SUPER_SHIFT_K)
        self.recorders.wait_for_line(1)
        # The end of the recording takes the X server a moment; until then keys reach nobody.
        self.wait_until_free()

        def pressed():
            self.keyboard.type(Combination(36, 36))
            return len(self.recorders.lines()) > 1
        wait_until(pressed, "Return presses the button")
        self.assertEqual(self.recorders.wait_for_line(2), "pressed Save")

    def test_space_starts_the_recording_of_the_control_with_the_focus(self):
        self.keyboard.type(Combination(23, 48))
        for _ in range(8):
            if self.recorders.window.focused() == (BUTTON, "second"):
                break
            self.keyboard.type(Combination(23, 48))
        wait_until(lambda: self.recorders.window.focused() == (BUTTON, "second"),
                   "the second recorder has the focus")
        self.keyboard.type(Combination(65, 49))
        wait_until(self.recorders.is_recording, "it records")

    def test_a_screen_reader_reads_the_shortcut_and_the_recording_and_presses_the_control(self):
        first = self.recorders.element("first")
        self.assertEqual(first.get_role(), BUTTON)
        self.assertEqual(self.recorders.value("first"), "⇧⌘K")
        self.assertEqual(self.recorders.value("second"), "Click to record")
        self.assertFalse(self.recorders.is_recording("first"))
        self.recorders.window.press("first")
        wait_until(lambda: self.recorders.is_recording("first"), "it records")
        self.assertEqual(self.recorders.value("first"), "Type shortcut…")
        wait_until(lambda: not keyboard_is_free(), "it has the keyboard")


class RecorderAndHotKeysTest(HotKeysTestCase):

    def test_a_hot_key_of_the_program_is_recorded_and_runs_nothing(self):
        self.start_with_hot_keys(self.counting("letter", SUPER_SHIFT_K))
        recorders = Recorders(self.scratch)
        self.addCleanup(recorders.end)
        recorders.start_recording()
        self.keyboard.type(SUPER_SHIFT_K)
        self.assertEqual(recorders.wait_for_line(1),
                         line("second", 40, "k", COMMAND_FLAG | SHIFT_FLAG))
        wait_until(keyboard_is_free, "the keyboard is free")
        self.keyboard.type(SUPER_SHIFT_L)
        self.wait_for_runs({"last": 1})


if __name__ == "__main__":
    unittest.main()
