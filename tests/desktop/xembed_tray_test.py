"""A panel that has an XEmbed tray only. Runs on a desktop without a panel."""

import subprocess
import unittest

import bus_panel
from pop_up_test_case import PopUpTestCase
from quillmar_desktop import Panel, StatusIcon, wait_until
from Xlib import X, display

# The grey of the icon, which has a contrast of 3:1 to light and to dark trays.
ICON_COLOUR = b"\x80\x80\x80"


class XembedTray:
    """A panel along the top of the screen that the test starts and kills itself."""

    SETTINGS = """\
panel_items = S
panel_position = top center horizontal
panel_size = 100% 32
systray_icon_size = 22
"""

    def __init__(self, folder):
        settings = folder / "tint2rc"
        settings.write_text(self.SETTINGS)
        self.process = subprocess.Popen(
            ["tint2", "-c", str(settings)], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL)
        server = display.Display()
        selection = server.intern_atom("_NET_SYSTEM_TRAY_S0")
        wait_until(lambda: server.get_selection_owner(selection) != X.NONE, "there is a tray")
        server.close()

    def kill(self):
        self.process.kill()
        self.process.wait()


class BusPanel:
    """A StatusNotifier panel only: the usual panel also replaces XEmbed trays, and they do not come
    back after it ends."""

    def __init__(self):
        self.process = subprocess.Popen(
            ["/usr/bin/python3", "-m", "dbusmock", "--session", "--template", bus_panel.__file__],
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def kill(self):
        self.process.kill()
        self.process.wait()


class XembedTrayTest(PopUpTestCase):

    def start_tray(self):
        tray = XembedTray(self.scratch)
        self.addCleanup(tray.kill)
        return tray

    def start_panel(self, kind):
        panel = kind()
        self.addCleanup(panel.kill)
        return panel

    def wait_for_icon(self):
        """The icon's window in the tray, once the icon is drawn in it."""
        icon = wait_until(self.x_windows.embedded, "the tray has taken the icon")[0]
        self.assertLess(icon.y, 32)

        def is_drawn():
            return self.screen.colours(icon)[ICON_COLOUR] > icon.width * icon.height // 20
        wait_until(is_drawn, "the icon is drawn in the tray")
        return icon

    def click(self, icon):
        self.screen.click(icon.x + icon.width // 2, icon.y + icon.height // 2)

    def test_a_click_on_the_icon_opens_the_menu_and_the_keyboard_runs_an_item(self):
        self.start_tray()
        self.start_with_two_items()
        self.click(self.wait_for_icon())
        self.choose_second(self.open_menu())
        self.wait_for_file("second")
        self.wait_until_closed()
        self.assertFalse(self.made("first"))

    def test_the_mouse_runs_an_item_of_its_menu(self):
        self.start_tray()
        self.start_with_two_items()
        self.click(self.wait_for_icon())
        self.choose_first(self.open_menu())
        self.wait_for_file("first")
        self.wait_until_closed()
        self.assertFalse(self.made("second"))

    def test_the_icon_is_shown_in_a_tray_that_comes_late_or_again(self):
        self.start_with_two_items()
        tray = self.start_tray()
        self.wait_for_icon()
        tray.kill()
        wait_until(lambda: not self.x_windows.embedded(), "the icon has gone with the tray")
        self.start_tray()
        self.click(self.wait_for_icon())
        self.choose_second(self.open_menu())
        self.wait_for_file("second")

    def test_a_panel_of_the_newer_kind_takes_the_icon_over(self):
        self.start_tray()
        self.start_with_two_items()
        self.wait_for_icon()
        self.start_panel(BusPanel)
        icon = StatusIcon(self.bus, self.program)
        wait_until(lambda: not self.x_windows.embedded(), "the tray has lost the icon")
        icon.choose("Second")
        self.wait_for_file("second")

    def test_when_the_bus_panel_has_gone_the_icon_returns_to_the_xembed_tray(self):
        self.start_tray()
        panel = self.start_panel(BusPanel)
        self.start_with_two_items()
        StatusIcon(self.bus, self.program)
        self.assertEqual(self.x_windows.embedded(), [])
        panel.kill()
        self.click(self.wait_for_icon())
        self.choose_second(self.open_menu())
        self.wait_for_file("second")

    def test_a_panel_of_both_kinds_shows_the_newer_icon(self):
        self.start_tray()
        self.start_with_two_items()
        self.wait_for_icon()
        self.start_panel(Panel)
        icon = StatusIcon(self.bus, self.program)
        wait_until(lambda: not self.x_windows.embedded(), "the XEmbed icon has gone")
        self.screen.tray()
        icon.choose("Second")
        self.wait_for_file("second")
        self.assertEqual(self.x_windows.embedded(), [])


if __name__ == "__main__":
    unittest.main()
