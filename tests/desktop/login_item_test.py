"""The tab “General” of the settings window on a real desktop: the switch that starts the program at
login, as the readers of autostart files see it, and the button that shows the settings file."""

import os
import unittest

from accessible_windows import CHECKBOX, LABEL, has
from gi.repository import Atspi, Gio, GLib
from quillmar_desktop import document, run, wait_until
from settings_window import ByKeyboard, SettingsWindow
from windows_test_case import WindowsTestCase

GENERATOR = "/usr/lib/systemd/user-generators/systemd-xdg-autostart-generator"
UNIT = "app-com.tovenworks.quillmar@autostart.service"

FILE_MANAGER = """
<node>
  <interface name="org.freedesktop.FileManager1">
    <method name="ShowItems">
      <arg type="as" direction="in"/>
      <arg type="s" direction="in"/>
    </method>
  </interface>
</node>
"""


class GeneralTabTestCase(WindowsTestCase):

    def open_general_tab(self, **keywords):
        self.start_with_windows(document(), **keywords)
        self.icon.choose("Settings...")
        self.settings = SettingsWindow(self, ByKeyboard(self))
        self.settings.show_general_tab()


class LoginItemTest(GeneralTabTestCase):

    def setUp(self):
        super().setUp()
        self.variables = {"XDG_CONFIG_HOME": str(self.scratch / "config")}
        self.folder = self.scratch / "config/autostart"
        self.entry = self.folder / "com.tovenworks.quillmar.desktop"

    def open_general_tab(self, **keywords):
        super().open_general_tab(environment=self.variables, **keywords)
        self.switch = self.settings.window.element(CHECKBOX, "Launch Quillmar at login")

    def is_on(self):
        return has(self.switch, Atspi.StateType.CHECKED)

    def press_switch(self):
        self.settings.hand.press(self.settings.window, self.switch)

    def read_alert(self):
        """Why the switch cannot be pressed, as the alert says, which is closed."""
        title = "Could not change the login item"
        alert = self.settings.alert(title)
        message, reason = alert.names(LABEL)
        self.assertEqual(message, title)
        alert.press("OK")
        self.settings.wait_until_sheet_is_gone(title)
        return reason

    def started_by_systemd(self):
        """What a login starts: the words of the program's unit, or None."""
        folders = [self.scratch / name for name in ("normal", "early", "late")]
        for folder in folders:
            folder.mkdir()
        run(GENERATOR, *folders, env={**os.environ, **self.variables})
        units = [unit.read_text() for folder in folders for unit in folder.glob(UNIT)]
        wanted = list(folders[2].glob(f"xdg-desktop-autostart.target.wants/{UNIT}"))
        run("rm", "-r", *folders)
        self.assertEqual(len(units), len(wanted))
        return next((line.removeprefix("ExecStart=") for unit in units
                     for line in unit.splitlines() if line.startswith("ExecStart=")), None)

    def test_switched_on_a_login_starts_the_program_and_switched_off_it_does_not(self):
        self.open_general_tab()
        self.assertFalse(self.is_on())
        self.assertIsNone(self.started_by_systemd())
        self.press_switch()
        wait_until(self.is_on, "the switch is on")
        program = os.environ["QUILLMAR_PROGRAM"]
        self.assertEqual(self.started_by_systemd(), f":{program}")
        read = Gio.DesktopAppInfo.new_from_filename(str(self.entry))
        self.assertEqual((read.get_name(), GLib.shell_parse_argv(read.get_commandline())[1],
                          read.get_is_hidden()), ("Quillmar", [program], False))
        run("desktop-file-validate", self.entry)
        self.press_switch()
        wait_until(lambda: not self.is_on(), "the switch is off")
        self.assertIsNone(self.started_by_systemd())
        self.assertEqual(list(self.folder.iterdir()), [])

    def test_a_file_that_was_hidden_by_hand_is_kept_and_the_alert_says_why(self):
        self.folder.mkdir(parents=True)
        self.entry.write_text("[Desktop Entry]\nType=Application\nName=Quillmar\n"
                              f"Exec={os.environ['QUILLMAR_PROGRAM']}\nHidden=true\n")
        before = self.entry.read_bytes()
        self.open_general_tab()
        self.assertFalse(self.is_on())
        self.press_switch()
        self.assertEqual(
            self.read_alert(),
            f"Quillmar is switched off in the file “{self.entry}”: its key Hidden is true. Switch "
            "it on in the settings of your desktop, or delete the file.\n\nYou can also manage "
            "this in System Settings > General > Login Items.")
        self.assertFalse(self.is_on())
        self.assertIsNone(self.started_by_systemd())
        self.assertEqual(self.entry.read_bytes(), before)

    def test_in_a_folder_without_permission_the_switch_stays_as_it_is_and_the_alert_says_why(self):
        self.use_ordinary_rights()
        self.open_general_tab()
        self.press_switch()
        wait_until(self.is_on, "the switch is on")
        self.folder.chmod(0o500)
        self.press_switch()
        self.assertEqual(self.read_alert().splitlines()[0],
                         f"The file “{self.entry}” could not be deleted: Permission denied.")
        self.assertTrue(self.is_on())
        self.folder.chmod(0o700)
        self.entry.unlink()
        self.folder.chmod(0o500)
        self.press_switch()
        wait_until(lambda: not self.is_on(), "the switch is off, as no file is there")
        self.press_switch()
        self.assertEqual(self.read_alert().splitlines()[0],
                         f"The file “{self.entry}” could not be written: Permission denied.")
        self.assertFalse(self.is_on())


class FileManager:
    """The file manager of a desktop, which notes what it is asked to show."""

    def __init__(self, bus):
        self.shown = []
        self.connection = bus.connection
        interface = Gio.DBusNodeInfo.new_for_xml(FILE_MANAGER).interfaces[0]
        self.connection.register_object("/org/freedesktop/FileManager1", interface, self.call)
        bus.call("org.freedesktop.DBus", "/org/freedesktop/DBus",
                 "org.freedesktop.DBus.RequestName",
                 GLib.Variant("(su)", ("org.freedesktop.FileManager1", 0)))

    def call(self, _connection, _sender, _path, _interface, _method, arguments, invocation):
        self.shown += arguments.unpack()[0]
        invocation.return_value(None)


class SettingsFileTest(GeneralTabTestCase):

    def test_the_file_manager_shows_the_settings_file(self):
        manager = FileManager(self.bus)
        self.open_general_tab()
        path = self.program.folder / "settings.json"
        self.assertIn(f"Settings file: {path}", self.settings.window.names(LABEL))
        self.settings.press("Show in Finder")
        wait_until(lambda: manager.shown, "the file manager is asked")
        self.assertEqual(manager.shown, [path.as_uri()])


if __name__ == "__main__":
    unittest.main()
