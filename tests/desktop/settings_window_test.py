"""The settings window on a real display: a whole menu made in it, by keyboard and by mouse, and what
a screen reader has of it."""

import unittest

from accessible_windows import (BUTTON, CHECKBOX, FIELD, OUTLINE, POP_UP_BUTTON, TABS)
from gi.repository import Atspi
from keyboard import ESCAPE, LEFT, SHIFT, SUPER_SHIFT_K, Combination, Keyboard
from keyboard import TAB as TAB_KEY
from other_program import OtherProgram
from quillmar_desktop import SEPARATOR, document, entry, folder, item, wait_until
from settings_window import (FOLDER_SEPARATOR, ITEM_SEPARATOR, TYPES, ByKeyboard, ByMouse,
                             SettingsWindow, Sheet, controls, focused, folder_row, item_row,
                             stored_bytes, wait_for_focus_to_leave, without_ids)
from windows_test_case import WindowsTestCase

F5 = Combination(71, 96)


def stored_command(value, **keywords):
    return {"copyToClipboard": False, "openInTerminal": False, "runInBackground": True,
            "showNotification": False, "type": TYPES[0], "value": value, **keywords}


def stored_item(title, command, **keywords):
    return {"command": command, "confirmBeforeRunning": False, "id": "", "isEnabled": True,
            "isSeparator": False, "title": title, **keywords}


def stored_folder(name, sort_order, *items, **keywords):
    return {"id": "", "isSeparator": False, "items": list(items), "name": name,
            "showAtTopLevel": False, "sortOrder": sort_order, **keywords}


class WholeMenuTest(WindowsTestCase):

    def setUp(self):
        super().setUp()
        self.other = OtherProgram()
        self.other.take_focus()
        self.greet = f"printf %s '{{{{input}}}}' >'{self.scratch}/greeting'"
        self.mark = f"cd '{self.scratch}'\ntouch mark"
        self.script = f"{self.scratch}/script.sh"
        self.speak = 'say "hello"'

    def open_settings(self, hand):
        self.start_with_windows(document())
        self.icon.choose("Settings...")
        return SettingsWindow(self, hand)

    def add_entries(self, settings):
        settings.add_folder("Home", is_at_top=True)
        settings.add_folder("Office", icon="folder.fill")
        settings.select("Office")
        settings.add_item("Greet", self.greet, "Copy output to clipboard", icon="terminal",
                          input_label="Who is it?")
        settings.select("Greet")
        settings.add_item("Script", self.script, "Show notification with output",
                          "Open in Terminal", type_index=1, shortcut=(F5, "F5"), is_global=False)
        settings.select("Home, shown at top level")
        settings.add_item("Speak", self.speak, "Ask before running", type_index=2)
        settings.add_item("Mark", self.mark, shortcut=(SUPER_SHIFT_K, "⇧⌘K"))
        settings.wait_for_rows(
            folder_row("Home, shown at top level"), item_row("Speak"), item_row("Mark, ⇧⌘K"),
            folder_row("Office"), item_row("Greet"), item_row("Script, F5"))

    def add_separators(self, settings):
        settings.select("Greet")
        settings.change_rows("Add Separator")
        settings.select("Script, F5")
        settings.change_rows("Add Separator")
        settings.select("Home, shown at top level")
        settings.change_rows("Add Separator")
        settings.wait_for_rows(
            folder_row("Home, shown at top level"), item_row("Speak"), item_row("Mark, ⇧⌘K"),
            FOLDER_SEPARATOR,
            folder_row("Office"), item_row("Greet"), ITEM_SEPARATOR, item_row("Script, F5"),
            ITEM_SEPARATOR)

    def change_entries(self, settings):
        settings.edit("Greet")
        sheet = Sheet(settings, "Edit Item")
        sheet.fill("Title", "Greet all")
        sheet.confirm("Save")

        settings.select("Mark, ⇧⌘K")
        settings.change_rows("Move Up")
        settings.select("Home, shown at top level")
        settings.change_rows("Move Down")
        settings.change_rows("Move Down")
        settings.select("separator between folders")
        settings.change_rows("Move Down")
        settings.toggle("Speak")
        settings.wait_for_rows(
            folder_row("Office"), item_row("Greet all"), ITEM_SEPARATOR, item_row("Script, F5"),
            ITEM_SEPARATOR,
            FOLDER_SEPARATOR,
            folder_row("Home, shown at top level"), item_row("Mark, ⇧⌘K"),
            item_row("Speak", checked=False))

    def delete_entries(self, settings):
        settings.add_folder("Old")
        settings.select("Old")
        settings.delete("Delete Folder", "Cancel")
        settings.find("Old")
        settings.delete("Delete Folder", "Delete")
        settings.select("separator", 1)
        settings.change_rows("Delete")
        settings.wait_for_rows(
            folder_row("Office"), item_row("Greet all"), ITEM_SEPARATOR, item_row("Script, F5"),
            FOLDER_SEPARATOR,
            folder_row("Home, shown at top level"), item_row("Mark, ⇧⌘K"),
            item_row("Speak", checked=False))

    def expected_document(self):
        shortcut = {"isGlobal": True, **SUPER_SHIFT_K.shortcut(character="k")}
        home = stored_folder(
            "Home", 2,
            stored_item("Mark", stored_command(self.mark), shortcut=shortcut),
            stored_item("Speak", stored_command(self.speak, type="AppleScript"),
                        confirmBeforeRunning=True, isEnabled=False),
            showAtTopLevel=True)
        office = stored_folder(
            "Office", 0,
            stored_item("Greet all", stored_command(self.greet, copyToClipboard=True),
                        iconSymbolName="terminal", inputPrompt="Who is it?"),
            stored_item("", stored_command(""), isSeparator=True),
            stored_item("Script", stored_command(self.script, type="Script File",
                                                 showNotification=True, openInTerminal=True),
                        shortcut=F5.shortcut(character="\uf708", isGlobal=False)),
            iconSymbolName="folder.fill")
        separator = stored_folder("", 1, isSeparator=True)
        return {"categories": [home, office, separator],
                "preferences": {"flattenSingleFolder": False, "notifyOnFailure": True,
                                "useLoginShell": False},
                "version": 2}

    def check_file(self):
        settings = (self.program.folder / "settings.json").read_bytes()
        self.assertEqual(without_ids(settings).decode(),
                         stored_bytes(self.expected_document()).decode())

    def check_menu(self):
        self.assertEqual(self.icon.menu()[:4], (
            folder("Office", item("Greet all", icon=True), SEPARATOR, item("Script", "F5"),
                   icon=True),
            SEPARATOR,
            item("Mark", "Shift+Super+k"),
            SEPARATOR))

    def run_items(self):
        self.other.take_focus()
        Keyboard().type(SUPER_SHIFT_K)
        self.wait_for_file("mark")
        self.icon.choose("Office", "Greet all")
        question = self.question()
        question.type("everybody")
        question.press("Run")
        self.wait_for_file("greeting", "everybody")

    def make_menu(self, hand):
        settings = self.open_settings(hand)
        self.add_entries(settings)
        self.add_separators(settings)
        self.change_entries(settings)
        self.delete_entries(settings)
        self.check_file()
        self.check_menu()
        settings.close()
        self.run_items()

    def test_a_whole_menu_is_made_by_keyboard(self):
        self.make_menu(ByKeyboard(self))

    def test_a_whole_menu_is_made_by_mouse(self):
        self.make_menu(ByMouse(self))


# Roles of elements that only hold others.
CONTAINERS = {Atspi.Role.FILLER, Atspi.Role.PANEL, Atspi.Role.SCROLL_PANE, Atspi.Role.VIEWPORT,
              Atspi.Role.GROUPING, Atspi.Role.UNKNOWN}


class AccessibleSettingsTest(WindowsTestCase):

    def open_settings(self):
        self.start_with_windows(document(
            {"name": "Office", "items": [entry("Greet"), {"isSeparator": True},
                                         entry("Off", isEnabled=False)]},
            {"isSeparator": True, "sortOrder": 1},
            {"name": "Home", "sortOrder": 2, "showAtTopLevel": True, "items": [entry("Mark")]}))
        self.icon.choose("Settings...")
        settings = SettingsWindow(self, ByKeyboard(self))
        self.keyboard = settings.hand.keyboard
        return settings

    def tab_order(self, window, *keys):
        """The controls that the keys lead to, from the one with the focus until it has it again."""
        elements = controls(window)
        first = now = wait_until(lambda: focused(elements), "a control has the focus")
        order = []
        while not order or now != first:
            self.keyboard.tap(*keys)
            now = wait_for_focus_to_leave(elements, now)
            order.append((now.get_role(), now.get_name()))
        return order

    def check(self, window, *expected):
        """`expected` are the controls, beginning after that with the focus."""
        unnamed = [Atspi.role_get_name(element.get_role()) for element in window.elements()
                   if element.get_role() not in CONTAINERS and not element.get_name()]
        self.assertEqual(unnamed, [])
        self.assertEqual(self.tab_order(window, TAB_KEY), list(expected))
        backwards = [*expected[-2::-1], expected[-1]]
        self.assertEqual(self.tab_order(window, SHIFT, TAB_KEY), backwards)

    def test_every_control_has_a_name_and_tab_reaches_and_leaves_it(self):
        settings = self.open_settings()
        main = settings.window
        self.check(main, *self.buttons("Add Folder", "Add Item", "Add Separator", "Edit", "Delete",
                                       "Move Up", "Move Down", "Import…", "Export…", "Close"),
                   (TABS, "Menu Items"), (OUTLINE, "Menu items"))

        settings.press("Add Folder")
        sheet = Sheet(settings, "Add Folder")
        self.check(sheet.window, (FIELD, "Icon"),
                   (CHECKBOX, "Show items directly in the menu, not in a submenu"),
                   *self.buttons("Cancel", "Add"), (FIELD, "Name"))
        sheet.cancel()

        settings.press("Add Item")
        sheet = Sheet(settings, "Add Item")
        self.check(sheet.window, (FIELD, "Icon"), (POP_UP_BUTTON, "Type"), (FIELD, "Command"),
                   (FIELD, "Input label"), (BUTTON, "Keyboard shortcut"),
                   *self.checkboxes("Works system-wide", "Show notification with output",
                                    "Copy output to clipboard", "Ask before running",
                                    "Open in Terminal"),
                   *self.buttons("Cancel", "Add"), (FIELD, "Title"))
        sheet.cancel()

        settings.select("Greet")
        settings.press("Delete")
        self.check(settings.alert("Delete Item"), *self.buttons("Cancel", "Delete"))
        self.keyboard.tap(ESCAPE)
        settings.wait_until_sheet_is_gone("Delete Item")

        settings.show_general_tab()
        self.check(main, *self.checkboxes(
            "Launch Quillmar at login", "Notify me when a command fails",
            "Run shell commands in my login shell (loads PATH from Homebrew, nvm, pyenv, etc.)",
            "When there is only one folder, show its items directly in the menu"),
            *self.buttons("Check for Updates…", "Show in Finder"), (TABS, "General"))

    @staticmethod
    def buttons(*names):
        return [(BUTTON, name) for name in names]

    @staticmethod
    def checkboxes(*names):
        return [(CHECKBOX, name) for name in names]

    def test_a_row_tells_its_text_its_level_its_state_and_its_expansion(self):
        settings = self.open_settings()
        office = folder_row("Office"), item_row("Greet"), ITEM_SEPARATOR, item_row("Off", False)
        rest = (FOLDER_SEPARATOR, folder_row("Home, shown at top level"), item_row("Mark"))
        settings.wait_for_rows(*office, *rest)
        settings.toggle("Off")
        settings.toggle("Greet")
        settings.wait_for_rows(folder_row("Office"), item_row("Greet", False), ITEM_SEPARATOR,
                               item_row("Off"), *rest)
        settings.select("Office")
        self.keyboard.tap(LEFT)
        settings.wait_for_rows(folder_row("Office", expanded=False), *rest)


if __name__ == "__main__":
    unittest.main()
