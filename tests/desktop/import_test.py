"""Packs that are dropped on the settings window, or chosen in a panel of the desktop, and the export
of the settings."""

import contextlib
import json
import time
import unittest

from accessible_windows import BUTTON, FIELD, LABEL, text_of
from file_manager import FileManager
from gi.repository import Atspi, GLib
from keyboard import A, CONTROL, ESCAPE, RETURN
from quillmar_desktop import document, entry, run, sub_command, wait_until
from settings_window import ByKeyboard, ByMouse, SettingsWindow
from windows_test_case import WindowsTestCase

SHEET = "Import"
DETAILS = "Details of the Pack"
OPEN_PANEL = "Choose a Quillmar pack or settings file"
SAVE_PANEL = "Choose where to save your Quillmar settings"
QUESTION = "Replace everything?"


def folder_with(name, *items):
    return {"name": name, "items": list(items)}


class ImportTestCase(WindowsTestCase):

    def setUp(self):
        super().setUp()
        self.packs = self.scratch / "packs"
        self.packs.mkdir()

    def write_pack(self, name, pack_name, *categories):
        pack = {**document(*categories), "name": pack_name}
        (self.packs / name).write_text(json.dumps(pack), encoding="utf-8")

    def open_settings(self, hand=ByKeyboard):
        self.start_with_windows(document(folder_with("Mine", entry("Old"))))
        self.icon.choose("Settings...")
        self.settings = SettingsWindow(self, hand(self))
        self.keyboard = self.settings.hand.keyboard

    def folders(self):
        """The titles of the folders and their items in the menu."""
        return [(shown.title, *(each.title for each in shown.entries))
                for shown in self.icon.menu() if shown.entries is not None]

    def wait_for_folders(self, *folders):
        wait_until(lambda: self.folders() == list(folders),
                   f"the menu has {folders}, not {self.folders()}")

    def review(self, pack_name, source):
        """The sheet, once it is there and has the keyboard."""
        sheet = self.windows.wait_for(SHEET)
        labels = sheet.names(LABEL)
        self.assertIn(f"Add “{pack_name}” to Quillmar?", labels)
        self.assertTrue(any(label.endswith(f"From {source}") for label in labels), labels)
        self.settings.wait_for_keyboard(sheet)
        return sheet

    def wait_until_reviewed(self):
        self.settings.wait_until_sheet_is_gone(SHEET)


class DropTest(ImportTestCase):

    def setUp(self):
        super().setUp()
        self.write_pack("tools.QuillmarPack", "Tools", folder_with("Tools", entry("Hammer")))
        self.write_pack("garden.json", "Garden", folder_with("Garden", entry("Spade")))
        (self.packs / "aaa.txt").write_text("{}", encoding="utf-8")
        self.open_settings(ByMouse)
        self.files = FileManager(self, self.packs)

    def target(self):
        """A point of the outline that the file manager does not cover."""
        place = Atspi.Component.get_extents(self.settings.outline, Atspi.CoordType.SCREEN)
        return place.x + place.width - 20, place.y + place.height - 20

    def test_a_pack_whose_extension_is_in_capitals_is_reviewed_and_merged(self):
        self.files.drop(["tools.QuillmarPack"], self.target())
        sheet = self.review("Tools", "tools.QuillmarPack")
        self.read(sheet)
        sheet.press("Merge")
        self.wait_until_reviewed()
        self.wait_for_folders(("Mine", "Old"), ("Tools", "Hammer"))

    def test_of_several_files_the_first_that_is_a_pack_is_taken(self):
        self.files.drop(["aaa.txt", "garden.json", "tools.QuillmarPack"], self.target())
        self.review("Garden", "garden.json")

    def test_other_files_are_refused(self):
        self.files.drop(["aaa.txt"], self.target(), is_accepted=False)
        # Had it been taken, its sheet would be in the way of this one.
        self.files.drop(["garden.json"], self.target())
        self.review("Garden", "garden.json")

    def test_nothing_can_be_dropped_while_a_sheet_is_open(self):
        self.files.drop(["garden.json"], self.target())
        self.review("Garden", "garden.json")
        place = self.settings.window.content_place()
        corner = place.x + place.width - 4, place.y + place.height - 4
        self.files.drop(["tools.QuillmarPack"], corner, is_accepted=False)
        self.windows.wait_for(SHEET).press("Cancel")
        self.windows.wait_until_gone(SHEET)
        self.assertEqual(self.folders(), [("Mine", "Old")])


class FilePanelTest(ImportTestCase):

    def setUp(self):
        super().setUp()
        self.write_pack("tools pack.quillmarpack", "Tools", folder_with("Tools", entry("Hammer")))

    def panel(self, button, title):
        self.settings.press(button)

        def find():
            return next((window for name, window in self.windows.all() if name == title
                         and window.accessible.get_role() == Atspi.Role.FILE_CHOOSER), None)
        panel = wait_until(find, f"there is a panel “{title}”")
        self.settings.wait_for_keyboard(panel)
        return panel

    def choose(self, panel, path, button):
        """Types the path, as into any panel, and presses the button until the panel, which first
        reads the folder, takes notice."""
        run("xdotool", "type", "--delay", "1", str(path))
        wait_until(lambda: self.typed(panel) == str(path), f"the panel holds {path}")
        element = panel.element(BUTTON, button)
        title = panel.accessible.get_name()
        patience_ends = 0

        def has_closed():
            nonlocal patience_ends
            if all(name != title for name, _ in self.windows.all()):
                return True
            if time.monotonic() > patience_ends:
                with contextlib.suppress(GLib.Error):  # it went away in between
                    Atspi.Action.do_action(element, 0)
                patience_ends = time.monotonic() + 1
            return False
        wait_until(has_closed, "the panel has closed")

    def typed(self, panel):
        return next((text_of(each) for each in panel.elements() if each.get_role() == FIELD), None)

    def test_a_pack_that_is_chosen_in_the_panel_is_reviewed_and_merged(self):
        self.open_settings()
        panel = self.panel("Import…", OPEN_PANEL)
        self.choose(panel, self.packs / "tools pack.quillmarpack", "Open")
        self.review("Tools", "tools pack.quillmarpack")
        self.keyboard.tap(RETURN)
        self.wait_until_reviewed()
        self.wait_for_folders(("Mine", "Old"), ("Tools", "Hammer"))

    def test_the_review_has_the_keyboard_again_after_its_details(self):
        self.open_settings()
        panel = self.panel("Import…", OPEN_PANEL)
        self.choose(panel, self.packs / "tools pack.quillmarpack", "Open")
        sheet = self.review("Tools", "tools pack.quillmarpack")
        sheet.press("Show Details…")
        self.settings.wait_for_keyboard(self.windows.wait_for(DETAILS))
        self.keyboard.tap(ESCAPE)
        self.windows.wait_until_gone(DETAILS)
        self.settings.wait_for_keyboard(sheet)
        self.keyboard.tap(ESCAPE)
        self.wait_until_reviewed()

    def test_a_pack_replaces_everything_after_a_question(self):
        self.open_settings()
        for answer, folders in ((ESCAPE, ("Mine", "Old")), (RETURN, ("Tools", "Hammer"))):
            panel = self.panel("Import…", OPEN_PANEL)
            self.choose(panel, self.packs / "tools pack.quillmarpack", "Open")
            self.review("Tools", "tools pack.quillmarpack").press("Replace Everything…")
            self.settings.alert(QUESTION)
            self.keyboard.tap(answer)
            self.settings.wait_until_sheet_is_gone(QUESTION)
            self.wait_for_folders(folders)

    def test_a_cancelled_panel_changes_nothing_and_frees_the_window(self):
        self.open_settings()
        self.panel("Import…", OPEN_PANEL)
        self.keyboard.tap(ESCAPE)
        self.settings.wait_until_sheet_is_gone(OPEN_PANEL)
        self.settings.close()
        self.assertEqual(self.folders(), [("Mine", "Old")])

    def test_exported_settings_can_be_checked_and_imported_again(self):
        self.open_settings()
        exported = self.packs / "mine.json"
        panel = self.panel("Export…", SAVE_PANEL)
        self.assertEqual(self.typed(panel), "quillmar-settings.json")
        self.keyboard.tap(CONTROL, A)
        self.choose(panel, exported, "Save")
        self.settings.wait_until_sheet_is_gone(SAVE_PANEL)
        checked = sub_command("check", str(exported))
        self.assertEqual((checked.returncode, checked.stderr), (0, ""))

        self.settings.select("Mine")
        self.settings.delete("Delete Folder", "Delete")
        self.wait_for_folders()
        panel = self.panel("Import…", OPEN_PANEL)
        self.choose(panel, exported, "Open")
        self.review("Imported settings", "mine.json")
        self.keyboard.tap(RETURN)
        self.wait_until_reviewed()
        self.wait_for_folders(("Mine", "Old"))


if __name__ == "__main__":
    unittest.main()
