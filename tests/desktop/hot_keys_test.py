"""Items that run by their hot keys while another program has the keyboard, on an X display."""

import collections
import itertools
import signal
import unittest

from accessible_windows import BUTTON, FIELD
from held_key import HeldKey
from keyboard import (COMMAND_FLAG, CONTROL_FLAG, OPTION_FLAG, SECOND_LAYOUT, SHIFT, SHIFT_FLAG,
                      SUPER, SUPER_SHIFT_K, SUPER_SHIFT_L, Combination, Keyboard, OtherGrabs,
                      is_free)
from other_program import OtherProgram
from quillmar_desktop import Screen, entry, run, tools, wait_until
from windows_test_case import WindowsTestCase

COMBINATIONS = {
    "letter": SUPER_SHIFT_K,
    "digit": Combination(12, 20, COMMAND_FLAG | CONTROL_FLAG),
    "punctuation": Combination(59, 43, COMMAND_FLAG | OPTION_FLAG),
    "F5": Combination(71, 96),
    "F13": Combination(191, 105),
    "arrow": Combination(113, 123, COMMAND_FLAG | SHIFT_FLAG),
    "keypad": Combination(84, 87, COMMAND_FLAG),
    "Space": Combination(65, 49, CONTROL_FLAG | OPTION_FLAG),
    "Delete": Combination(119, 117, COMMAND_FLAG),
    "Tab": Combination(23, 48, COMMAND_FLAG | CONTROL_FLAG | OPTION_FLAG),
}


class HotKeysTestCase(WindowsTestCase):

    def setUp(self):
        super().setUp()
        self.keyboard = Keyboard()
        self.other = OtherProgram()
        self.other.take_focus()

    def counting(self, name, combination, **keywords):
        """An item with a hot key, which adds a line with its name to a file."""
        shortcut = combination.shortcut(**keywords.pop("shortcut", {}))
        return entry(name, f"echo '{name}' >>'{self.scratch}/runs'", id=name, shortcut=shortcut,
                     **keywords)

    def runs(self):
        """How often each counting item has run."""
        path = self.scratch / "runs"
        return collections.Counter(path.read_text().splitlines() if path.exists() else ())

    def wait_for_runs(self, expected):
        wait_until(lambda: self.runs().total() >= collections.Counter(expected).total(),
                   f"{expected} have run")
        self.assertEqual(self.runs(), expected)

    def start_with_hot_keys(self, *items):
        """Starts the program with the items and one more, “last”. Its hot keys are registered on
        return: it answers the bus after its launch."""
        program, _ = self.start_with_icon(
            tools(*items, self.counting("last", SUPER_SHIFT_L)))
        return program


class HotKeysTest(HotKeysTestCase):

    def press_all(self, layout):
        """Types every combination with each combination of locks."""
        before = self.runs()
        for caps_lock, num_lock in itertools.product((False, True), repeat=2):
            with self.subTest(layout=layout, caps_lock=caps_lock, num_lock=num_lock):
                self.keyboard.set_locks(caps_lock, num_lock)
                for combination in COMBINATIONS.values():
                    self.keyboard.type(combination)
                before.update(COMBINATIONS.keys())
                self.wait_for_runs(before)
        self.keyboard.set_locks(False, False)

    def test_each_kind_of_key_runs_its_item_once_in_every_layout_and_with_every_lock(self):
        self.start_with_hot_keys(*(self.counting(name, combination)
                                   for name, combination in COMBINATIONS.items()))
        self.press_all("us")
        self.keyboard.set_layout("fr")
        self.press_all("fr")
        self.keyboard.set_layout("us,ru", "-option", "grp:menu_toggle")
        self.keyboard.use_second_layout()
        self.assertTrue(self.keyboard.state() & SECOND_LAYOUT)
        self.press_all("ru")
        self.assertTrue(self.other.has_focus())

    def test_the_other_program_does_not_get_the_key(self):
        self.start_with_hot_keys(self.counting("F5", COMBINATIONS["F5"]))
        self.keyboard.type(COMBINATIONS["F5"])
        self.wait_for_runs({"F5": 1})
        self.assertEqual(self.other.typed_keys(), 0)

    def test_a_key_that_is_held_down_runs_its_item_once(self):
        self.start_with_hot_keys(self.counting("letter", SUPER_SHIFT_K))
        self.keyboard.press(SUPER, SHIFT)
        with HeldKey("k") as key:
            key.wait_for_presses(20)
        self.keyboard.release(SUPER, SHIFT)
        self.keyboard.type(SUPER_SHIFT_L)
        self.wait_for_runs({"letter": 1, "last": 1})

    def test_a_key_of_another_program_is_logged_and_the_other_hot_keys_work(self):
        other = OtherGrabs()
        self.assertTrue(other.grab(SUPER_SHIFT_K))
        program = self.start_with_hot_keys(self.counting("F5", COMBINATIONS["F5"]),
                                           self.counting("letter", SUPER_SHIFT_K))
        line = "Could not register hotkey for item letter: 10"
        wait_until(lambda: line in program.output().splitlines(), f"“{line}” is logged")
        self.assertEqual(program.output().count("Could not register"), 1)
        self.keyboard.type(SUPER_SHIFT_K)
        self.keyboard.type(COMBINATIONS["F5"])
        self.keyboard.type(SUPER_SHIFT_L)
        self.wait_for_runs({"F5": 1, "last": 1})

    def test_disabled_items_separators_and_shortcuts_that_are_not_global_register_nothing(self):
        self.start_with_hot_keys(
            self.counting("disabled", COMBINATIONS["letter"], isEnabled=False),
            self.counting("separator", COMBINATIONS["digit"], isSeparator=True),
            self.counting("not global", COMBINATIONS["F13"], shortcut={"isGlobal": False}))
        for name in ("letter", "digit", "F13"):
            self.assertTrue(is_free(COMBINATIONS[name]), name)

    def test_the_keys_are_free_when_the_program_has_ended(self):
        for end in (signal.SIGKILL, signal.SIGTERM):
            program = self.start_with_hot_keys(self.counting("letter", SUPER_SHIFT_K))
            self.assertFalse(is_free(SUPER_SHIFT_K))
            program.send(end)
            program.exit_status()
            wait_until(lambda: is_free(SUPER_SHIFT_K), "the key is free")

    def test_a_stopped_program_does_not_block_the_keyboard(self):
        program = self.start_with_hot_keys(self.counting("letter", SUPER_SHIFT_K))
        program.send(signal.SIGSTOP)
        self.keyboard.type(SUPER_SHIFT_K)
        self.keyboard.type(Combination(24, 12))
        wait_until(lambda: self.other.typed_keys(), "the other program gets the next key")
        program.send(signal.SIGCONT)
        self.wait_for_runs({"letter": 1})


class HotKeyPromptTest(HotKeysTestCase):
    """What an item asks for when its hot key is pressed in another program."""

    def start_asking(self, **keywords):
        settings = tools(entry("Ask", f"printf %s '{{{{input}}}}' >'{self.scratch}/value'",
                               inputPrompt="Which value?", shortcut=SUPER_SHIFT_K.shortcut(),
                               **keywords))
        self.start_with_windows(settings)

    def answer(self, window):
        self.wait_for_focus(window, FIELD, "Which value?")
        self.assertFalse(self.other.has_focus())
        run("xdotool", "type", "typed at once")
        Screen().press("Return")
        self.wait_for_file("value", "typed at once")

    def test_its_prompt_gets_the_keyboard(self):
        self.start_asking()
        self.keyboard.type(SUPER_SHIFT_K)
        self.answer(self.windows.wait_for("Quillmar"))

    def test_its_confirmation_gets_the_keyboard(self):
        self.start_asking(confirmBeforeRunning=True)
        self.keyboard.type(SUPER_SHIFT_K)
        window = self.windows.wait_for("Quillmar")
        self.wait_for_focus(window, BUTTON, "Run")
        Screen().press("Return")
        self.answer(self.question())

    def test_its_prompt_gets_the_keyboard_when_the_hot_key_is_released_late(self):
        self.start_asking()
        self.keyboard.press(*SUPER_SHIFT_K.keys())
        window = self.windows.wait_for("Quillmar")
        self.keyboard.release(*SUPER_SHIFT_K.keys())
        self.answer(window)

    def test_the_second_prompt_gets_the_keyboard_too(self):
        self.start_asking()
        for _ in range(2):
            self.keyboard.type(SUPER_SHIFT_K)
            self.answer(self.windows.wait_for("Quillmar"))
            self.windows.wait_until_gone("Quillmar")
            (self.scratch / "value").unlink()
            wait_until(self.other.has_focus, "the other program has the focus again")


if __name__ == "__main__":
    unittest.main()
