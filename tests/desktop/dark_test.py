"""Windows on a desktop with a dark theme, whichever way it is told."""

import struct
import unittest

from gi.repository import Gio, GLib
from quillmar_desktop import Screen, wait_until
from windows_test_case import WindowsTestCase
from x_windows import XWindows
from Xlib import X, display

DARK, LIGHT = 100, 200
DARK_THEME = "gtk-theme-name=Adwaita-dark"


class SettingsService:
    """What tells the toolkits of an X display which theme the desktop has."""

    def __init__(self, theme):
        self.display = display.Display()
        window = self.display.screen().root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
        name = b"Net/ThemeName"
        string = 1
        setting = (struct.pack("=BxH", string, len(name)) + self.padded(name)
                   + struct.pack("=II", 1, len(theme)) + self.padded(theme))
        byte_order = struct.pack("=H", 1)[1]
        published = struct.pack("=BxxxII", byte_order, 1, 1) + setting
        settings = self.display.intern_atom("_XSETTINGS_SETTINGS")
        window.change_property(settings, settings, 8, published)
        window.set_selection_owner(self.display.intern_atom("_XSETTINGS_S0"), X.CurrentTime)
        self.display.sync()

    @staticmethod
    def padded(text):
        return text + bytes(-len(text) % 4)


class Portal:
    """The settings portal, which says whether the user wants dark windows."""

    NAME = "org.freedesktop.portal.Desktop"
    PATH = "/org/freedesktop/portal/desktop"
    INTERFACE = "org.freedesktop.portal.Settings"
    PREFERS_DARK, PREFERS_LIGHT = 1, 2
    DESCRIPTION = f"""<node><interface name="{INTERFACE}">
        <method name="Read"><arg type="s" direction="in"/><arg type="s" direction="in"/>
          <arg type="v" direction="out"/></method>
        <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
        </interface></node>"""

    def __init__(self, bus, preference):
        self.bus = bus
        self.preference = preference
        bus.connection.register_object(
            self.PATH, Gio.DBusNodeInfo.new_for_xml(self.DESCRIPTION).interfaces[0], self.read)
        bus.call("org.freedesktop.DBus", "/org/freedesktop/DBus",
                 "org.freedesktop.DBus.RequestName", GLib.Variant("(su)", (self.NAME, 0)))

    def read(self, *call):
        # A variant in a variant.
        value = GLib.Variant("v", GLib.Variant("u", self.preference))
        call[-1].return_value(GLib.Variant.new_tuple(GLib.Variant("v", value)))

    def change(self, preference):
        self.preference = preference
        self.bus.connection.emit_signal(
            None, self.PATH, self.INTERFACE, "SettingChanged",
            GLib.Variant("(ssv)", ("org.freedesktop.appearance", "color-scheme",
                                   GLib.Variant("u", preference))))


class DarkTest(WindowsTestCase):

    def have_settings_service(self, theme):
        service = SettingsService(theme)
        self.addCleanup(service.display.close)

    def background(self, environment=None, in_settings=None):
        """How light the background of a question is, from 0 to 255. The toolkit has nothing of its
        own for the desktop unless the environment names one that it knows."""
        environment = {"XDG_CONFIG_HOME": str(self.scratch), "XDG_CURRENT_DESKTOP": "",
                       "GTK_THEME": "", **(environment or {})}
        if in_settings:
            folder = self.scratch / "gtk-3.0"
            folder.mkdir()
            (folder / "settings.ini").write_text(f"[Settings]\n{in_settings}\n")
        self.open(self.ask(), "Ask", environment=environment)
        return self.background_now()

    def background_now(self):
        panel = XWindows(self.program.process.pid).titled("Quillmar")
        wait_until(lambda: len(Screen().colours(panel)) > 8, "the panel is drawn")
        corner = panel._replace(width=10, height=10)
        colours = Screen().colours(corner)
        self.assertEqual(len(colours), 1, "the corner is all background")
        return max(next(iter(colours)))

    def test_windows_are_light_where_nothing_says_otherwise(self):
        self.assertGreater(self.background(), LIGHT)

    def test_a_light_theme_in_the_environment_comes_before_a_dark_one_of_the_display(self):
        self.have_settings_service(b"Adwaita-dark")
        self.assertGreater(self.background({"GTK_THEME": "Adwaita"}), LIGHT)

    def test_windows_are_dark_with_a_dark_theme_in_the_environment(self):
        self.assertLess(self.background({"GTK_THEME": "Adwaita:dark"}), DARK)

    def test_windows_are_dark_where_the_toolkit_has_a_theme_for_the_desktop(self):
        environment = {"XDG_CURRENT_DESKTOP": "XFCE", "GTK_THEME": "Adwaita:dark"}
        self.assertLess(self.background(environment), DARK)

    def test_windows_are_dark_with_a_dark_theme_of_the_display(self):
        self.have_settings_service(b"Adwaita-dark")
        self.assertLess(self.background(), DARK)

    def test_the_displays_light_theme_comes_before_a_dark_one_in_the_users_settings(self):
        self.have_settings_service(b"Adwaita")
        self.assertGreater(self.background(in_settings=DARK_THEME), LIGHT)

    def test_windows_are_dark_with_a_dark_theme_in_the_users_settings(self):
        self.assertLess(self.background(in_settings=DARK_THEME), DARK)

    def test_windows_are_dark_where_the_users_settings_prefer_it(self):
        self.assertLess(self.background(in_settings="gtk-application-prefer-dark-theme=1"), DARK)

    def test_an_open_window_follows_the_portal(self):
        portal = Portal(self.bus, Portal.PREFERS_DARK)
        self.addCleanup(self.bus.connection.close_sync)
        self.background()
        wait_until(lambda: self.background_now() < DARK, "the window is dark")
        portal.change(Portal.PREFERS_LIGHT)
        wait_until(lambda: self.background_now() > LIGHT, "the window is light")
        portal.change(Portal.PREFERS_DARK)
        wait_until(lambda: self.background_now() < DARK, "the window is dark again")


if __name__ == "__main__":
    unittest.main()
