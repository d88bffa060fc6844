"""A desktop that has no place for an icon: the menu is popped up where the pointer is. Runs on a
desktop without a panel."""

import unittest

from other_program import OtherProgram
from pop_up_test_case import PopUpTestCase
from quillmar_desktop import document, entry, run, sub_command, wait_until

POINTER = (400, 300)


class NoTrayTest(PopUpTestCase):

    def setUp(self):
        super().setUp()
        run("xdotool", "mousemove", *map(str, POINTER))

    def ask_for_menu(self):
        """Has the menu popped up by "quillmar menu", which has nothing to say."""
        asked = sub_command("menu")
        self.assertEqual((asked.returncode, asked.stdout, asked.stderr), (0, "", ""))
        return self.open_menu()

    def test_quillmar_menu_shows_the_menu_at_the_pointer_and_the_keyboard_runs_an_item(self):
        self.start_with_two_items()
        menu = self.ask_for_menu()
        self.assertEqual((menu.x, menu.y), POINTER)
        self.choose_second(menu)
        self.wait_for_file("second")
        self.wait_until_closed()
        self.assertFalse(self.made("first"))

    def test_a_second_start_shows_the_menu_at_the_pointer_and_the_mouse_runs_an_item(self):
        self.start_with_two_items()
        second = self.start(document())
        self.assertEqual(second.exit_status(), 0)
        self.assertEqual(second.output(), "Quillmar is already running.\n")
        menu = self.open_menu()
        self.assertEqual((menu.x, menu.y), POINTER)
        self.choose_first(menu)
        self.wait_for_file("first")
        self.wait_until_closed()
        self.assertFalse(self.made("second"))

    def test_the_menu_stays_on_the_screen_when_the_pointer_is_in_its_last_corner(self):
        run("xdotool", "mousemove", "1279", "799")
        self.start_with_two_items()
        menu = self.ask_for_menu()
        self.assertLessEqual(menu.x + menu.width, 1280)
        self.assertLessEqual(menu.y + menu.height, 800)

    def test_a_menu_longer_than_the_screen_scrolls_to_its_last_entry(self):
        self.start_with(entry("First"), *[entry(f"Item {number}") for number in range(150)],
                        entry("Last", f"touch '{self.scratch}/last'"))
        menu = self.ask_for_menu()
        self.assertGreaterEqual(menu.y, 0)
        self.assertLessEqual(menu.y + menu.height, 800)
        # Past "Quit Quillmar", "Settings…" and "About Quillmar".
        self.highlight_last(menu)
        self.screen.press("Up", "Up", "Up", "Return")
        self.wait_for_file("last")

    def test_a_long_title_leaves_the_menu_on_the_screen(self):
        self.start_with(entry("A long title & more " * 100))
        menu = self.ask_for_menu()
        self.assertEqual((menu.x, menu.y), POINTER)
        self.assertLessEqual(menu.x + menu.width, 1280)

    def test_the_keys_go_to_the_menu_while_another_program_has_the_focus(self):
        other = OtherProgram()
        other.take_focus()
        self.start_with_two_items()
        self.choose_second(self.ask_for_menu())
        self.wait_for_file("second")
        self.wait_until_closed()
        wait_until(other.has_focus, "the other program has the focus again")
        self.assertEqual(other.typed_keys(), 0)

    def test_escape_closes_the_menu_and_runs_nothing(self):
        self.closes_and_runs_nothing(lambda: self.screen.press("Escape"))

    def test_a_click_elsewhere_closes_the_menu_and_runs_nothing(self):
        self.closes_and_runs_nothing(lambda: self.screen.click(1000, 700))

    def closes_and_runs_nothing(self, dismiss):
        self.start_with_two_items()
        self.highlight_last(self.ask_for_menu())
        self.screen.press("Down")
        dismiss()
        self.wait_until_closed()
        # Chosen later, so what had been chosen before would have run.
        run("xdotool", "mousemove", *map(str, POINTER))
        self.choose_second(self.ask_for_menu())
        self.wait_for_file("second")
        self.assertFalse(self.made("first"))

    def test_asked_for_twice_the_menu_is_there_once(self):
        self.start_with_two_items()
        self.ask_for_menu()
        self.ask_for_menu()
        wait_until(lambda: len(self.x_windows.menus()) == 1, "there is one menu")
        self.choose_second(self.open_menu())
        self.wait_for_file("second")


if __name__ == "__main__":
    unittest.main()
