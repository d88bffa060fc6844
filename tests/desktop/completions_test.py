"""The completions of a symbol's name in an editor, with real keys on X11 and on Wayland."""

import json
import unittest

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402  (the version comes first)

from accessible_windows import FIELD, AccessibleWindows
from quillmar_desktop import StatusIcon, entry, run, tools, wait_until
from wayland_test import WaylandTestCase
from windows_test_case import WindowsTestCase


class Editor:
    """The sheet for a new folder, with the focus in the field for its icon."""

    def __init__(self, program, press):
        self.program = program
        self.windows = AccessibleWindows(program.process.pid)
        self.windows.wait_for("Quillmar Settings").press("Add Folder")
        self.sheet = self.windows.wait_for("Add Folder")
        self.wait_for_focus("Name")
        press("Tab")
        self.wait_for_focus("Icon")

    def wait_for_focus(self, name):
        wait_until(lambda: self.sheet.focused() == (FIELD, name), f"“{name}” has the focus")

    def is_open(self):
        return any(title == "Add Folder" for title, _ in self.windows.all())

    def rows(self):
        """The list of completions as screen readers have it: names, the selected one in brackets."""
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(index)
            if application is None or application.get_process_id() != self.program.process.pid:
                continue
            application.clear_cache()
            for at in range(application.get_child_count()):
                element = application.get_child_at_index(at)
                if (element is not None and element.get_role() == Atspi.Role.LIST
                        and element.get_state_set().contains(Atspi.StateType.SHOWING)):
                    return [self.shown(element.get_child_at_index(row))
                            for row in range(element.get_child_count())]
        return []

    @staticmethod
    def shown(row):
        selected = row.get_state_set().contains(Atspi.StateType.SELECTED)
        return f"[{row.get_name()}]" if selected else row.get_name()

    def wait_for_first_row(self, name):
        wait_until(lambda: self.rows()[:1] == [name], f"the first row is “{name}”")

    def wait_for_icon(self, text):
        field = self.sheet.element(FIELD, "Icon")
        wait_until(lambda: Atspi.Text.get_text(field, 0, -1) == text, f"the icon is “{text}”")

    def icon_in_file(self):
        categories = json.loads((self.program.folder / "settings.json").read_text())["categories"]
        return next((each.get("iconSymbolName") for each in categories if each["name"] == "New"),
                    None)


class Completions:
    """What both sessions do. `press` presses keys, and `write` types a text."""

    def choose_with_keys(self):
        editor = self.open_editor()
        self.write("arrow.clock")
        editor.wait_for_first_row("arrow.clockwise")
        self.press("Down")
        editor.wait_for_first_row("[arrow.clockwise]")
        self.press("Return")
        editor.wait_for_icon("arrow.clockwise")
        self.assertEqual(editor.rows(), [])
        self.assertTrue(editor.is_open())
        self.press("Tab", "Tab", "Tab", "Tab")
        editor.wait_for_focus("Name")
        self.write("New")
        self.press("Return")
        wait_until(lambda: editor.icon_in_file() == "arrow.clockwise", "the icon is in the file")

    def close_with_escape(self):
        editor = self.open_editor()
        self.write("fold")
        editor.wait_for_first_row("folder")
        self.press("Escape")
        wait_until(lambda: editor.rows() == [], "the list is closed")
        editor.wait_for_icon("fold")
        self.assertTrue(editor.is_open())
        self.press("Escape")
        wait_until(lambda: not editor.is_open(), "the sheet is closed")


class CompletionsTest(Completions, WindowsTestCase):

    def press(self, *keys):
        run("xdotool", "key", *keys)

    def write(self, text):
        run("xdotool", "type", text)

    def open_editor(self):
        self.open(tools(entry("One")), "Settings...", title="Quillmar Settings")
        return Editor(self.program, self.press)

    def test_keys_choose_a_name(self):
        self.choose_with_keys()

    def test_escape_closes_the_list_before_the_sheet(self):
        self.close_with_escape()

    def test_a_click_accepts_a_name(self):
        editor = self.open_editor()
        self.write("fold")
        editor.wait_for_first_row("folder")
        field = editor.sheet.place("Icon", FIELD)
        run("xdotool", "mousemove", str(field.x + 40), str(field.y + field.height + 10),
            "click", "1")
        editor.wait_for_icon("folder")
        editor.wait_for_focus("Icon")
        self.assertEqual(editor.rows(), [])


class WaylandCompletionsTest(Completions, WaylandTestCase):

    def press(self, *keys):
        self.compositor.press(*keys)

    def write(self, text):
        self.compositor.write(text)

    def open_editor(self):
        program = self.start_on_bus(tools(entry("One")))
        StatusIcon(self.bus, program).choose("Settings...")
        return Editor(program, self.press)

    def test_keys_choose_a_name(self):
        self.choose_with_keys()

    def test_escape_closes_the_list_before_the_sheet(self):
        self.close_with_escape()


if __name__ == "__main__":
    unittest.main()
