"""A panel that does not open menus itself but calls the icon's methods with the position of the
click, as LXQt and MATE do."""

import unittest

from gi.repository import GLib

from pop_up_test_case import PopUpTestCase
from quillmar_desktop import ITEM_INTERFACE, StatusIcon, run


class ActivateTest(PopUpTestCase):

    def setUp(self):
        super().setUp()
        self.start_with_two_items()
        self.icon = StatusIcon(self.bus, self.program)

    def click(self, method, x, y):
        # Beside the position: panels report a point of the icon, not the pointer.
        run("xdotool", "mousemove", str(x + 5), str(y + 5))
        self.bus.call(self.icon.name, self.icon.path, f"{ITEM_INTERFACE}.{method}",
                      GLib.Variant("(ii)", (x, y)))

    def test_each_method_opens_the_menu_at_the_position_and_the_keyboard_runs_an_item(self):
        for method in ("Activate", "SecondaryActivate", "ContextMenu"):
            self.click(method, 300, 200)
            menu = self.open_menu()
            self.assertEqual((menu.x, menu.y), (300, 200))
            self.choose_second(menu)
            self.wait_for_file("second")
            self.wait_until_closed()
            (self.scratch / "second").unlink()

    def test_at_the_bottom_of_the_screen_the_menu_opens_upwards(self):
        self.click("Activate", 1270, 790)
        menu = self.open_menu()
        self.assertLessEqual(menu.x + menu.width, 1280)
        self.assertLessEqual(menu.y + menu.height, 790)

    def test_a_second_click_closes_the_menu(self):
        self.click("Activate", 300, 200)
        self.open_menu()
        self.click("Activate", 300, 200)
        self.wait_until_closed()
        self.click("Activate", 300, 200)
        self.choose_first(self.open_menu())
        self.wait_for_file("first")


if __name__ == "__main__":
    unittest.main()
