"""The settings window when the settings cannot be saved, and when something takes the window off the
screen."""

import os
import pathlib
import shlex
import sys
import unittest

from quillmar_desktop import entry, tools, wait_until
from settings_window import TITLE, ByKeyboard, SettingsWindow, Sheet
from windows_test_case import WindowsTestCase
from x_windows import XWindows


class SettingsFailuresTestCase(WindowsTestCase):

    def start_program(self, **keywords):
        self.start_with_windows(tools(entry("First", f"touch '{self.scratch}/first'")), **keywords)

    def open_settings(self):
        self.icon.choose("Settings...")
        return SettingsWindow(self, ByKeyboard(self))

    def menu_items(self):
        """The titles above the fixed entries."""
        titles = [shown.title for shown in self.icon.menu()]
        return titles[:titles.index("---")]

    def wait_for_line(self, line):
        wait_until(lambda: line in self.program.output().splitlines(), f"“{line}” is logged")

    def check_that_it_continues(self, *titles):
        """The menu has these items, and the first one runs."""
        self.assertEqual(self.menu_items(), list(titles))
        self.icon.choose("First")
        self.wait_for_file("first")


class UnsavedSettingsTest(SettingsFailuresTestCase):

    def test_without_permission_the_change_is_kept_and_saved_later(self):
        self.use_ordinary_rights()
        self.start_program()
        settings = self.open_settings()
        file = self.program.folder / "settings.json"
        before = file.read_bytes()
        file.chmod(0o400)
        self.program.folder.chmod(0o500)
        settings.add_item("Second", "true")
        self.wait_for_line(f"Failed to save settings: The file “{file}” could not be written: "
                           "Permission denied.")
        self.check_that_it_continues("First", "Second")
        self.assertEqual(file.read_bytes(), before)
        self.program.folder.chmod(0o700)
        file.chmod(0o600)
        settings.add_item("Third", "true")
        for title in (b"First", b"Second", b"Third"):
            self.assertIn(title, file.read_bytes())

    def test_on_a_full_disk_the_change_is_kept_and_saved_when_there_is_room(self):
        folder = self.scratch / "disk"
        folder.mkdir()
        script = self.scratch / "quillmar"
        command = [sys.executable, pathlib.Path(__file__).with_name("small_disk.py"), folder,
                   os.environ["QUILLMAR_PROGRAM"]]
        script.write_text("#!/bin/sh\nexec " + shlex.join(map(str, command)) + "\n")
        script.chmod(0o755)
        self.use_program(script)
        self.start_program(settings_directory=folder)
        disk = pathlib.Path(f"/proc/{self.program.process.pid}/root{folder}")
        file = disk / "settings.json"
        before = file.read_bytes()
        settings = self.open_settings()
        with self.assertRaises(OSError):
            (disk / "ballast").write_bytes(bytes(2**20))
        settings.add_item("Second", "true")
        self.wait_for_line("Failed to save settings: The file "
                           f"“{folder}/settings.previous.json” could not be written: No space "
                           "left on device.")
        self.check_that_it_continues("First", "Second")
        self.assertEqual(file.read_bytes(), before)
        (disk / "ballast").unlink()
        settings.add_item("Third", "true")
        for title in (b"First", b"Second", b"Third"):
            self.assertIn(title, file.read_bytes())


class LostWindowTest(SettingsFailuresTestCase):

    def start_program(self, **keywords):
        super().start_program(**keywords)
        self.on_screen = XWindows(self.program.process.pid)

    def open_editor(self):
        settings = self.open_settings()
        settings.press("Add Item")
        return settings, Sheet(settings, "Add Item")

    def check_that_it_opens_again(self):
        self.windows.wait_until_gone(TITLE)
        self.check_that_it_can_be_used(self.open_settings())

    def check_that_it_can_be_used(self, settings):
        settings.add_item("Second", "true")
        self.check_that_it_continues("First", "Second")

    def test_a_window_that_the_window_manager_closes_opens_again(self):
        self.start_program()
        self.open_settings()
        self.on_screen.ask_to_close(TITLE)
        self.check_that_it_opens_again()

    def test_only_the_editor_can_be_closed_and_is_cancelled(self):
        self.start_program()
        settings, sheet = self.open_editor()
        self.on_screen.ask_to_close(TITLE)
        sheet.fill("Title", "Never added")
        sheet.fill("Command", "true")
        self.on_screen.ask_to_close("Add Item")
        settings.wait_until_sheet_is_gone("Add Item")
        self.check_that_it_can_be_used(settings)

    def test_a_destroyed_window_opens_again(self):
        self.start_program()
        self.open_settings()
        self.on_screen.destroy(TITLE)
        self.check_that_it_opens_again()

    def test_a_window_that_is_destroyed_below_its_editor_opens_again(self):
        self.start_program()
        self.open_editor()
        self.on_screen.destroy(TITLE)
        self.windows.wait_until_gone("Add Item")
        self.check_that_it_opens_again()

    def test_a_destroyed_editor_is_cancelled(self):
        self.start_program()
        _, sheet = self.open_editor()
        sheet.fill("Title", "Never added")
        sheet.fill("Command", "true")
        self.on_screen.destroy("Add Item")
        self.windows.wait_until_gone("Add Item")
        # The window below it can be closed and opened again.
        self.on_screen.ask_to_close(TITLE)
        self.windows.wait_until_gone(TITLE)
        self.open_settings()
        self.assertNotIn(b"Never added", (self.program.folder / "settings.json").read_bytes())

    def test_without_its_connection_to_the_display_it_starts_again_and_nothing_is_lost(self):
        self.start_program()
        self.open_settings().add_item("Second", "true")
        before = (self.program.folder / "settings.json").read_bytes()
        self.on_screen.kill_client(TITLE)
        self.icon = self.icon.of_next_start()
        self.assertEqual((self.program.folder / "settings.json").read_bytes(), before)
        self.check_that_it_continues("First", "Second")
        self.open_settings().add_item("Third", "true")


if __name__ == "__main__":
    unittest.main()
