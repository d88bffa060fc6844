"""The settings window and its sheets: used by keyboard, by mouse or as by a screen reader, and read
over the accessibility bus."""

import collections
import contextlib
import json
import re
import time

from accessible_windows import (BUTTON, CHECKBOX, FIELD, LABEL, OUTLINE, POP_UP_BUTTON, ROW, TAB,
                                TABS, has, text_of)
from gi.repository import Atspi, GLib
from keyboard import (A, CONTROL, DOWN, ESCAPE, HOME, RETURN, RIGHT, SHIFT, SPACE, Keyboard,
                      keyboard_is_free)
from keyboard import TAB as TAB_KEY
from quillmar_desktop import Screen, run, wait_until
from x_windows import XWindows

TITLE = "Quillmar Settings"
TYPES = ("Shell Command", "Script File", "AppleScript")


class Row(collections.namedtuple("Row", "text level checked expanded",
                                 defaults=(2, None, None))):
    """A row of the outline as a screen reader has it. `checked` is None for a row without a
    checkbox, `expanded` for one that cannot be expanded."""

    __slots__ = ()


def folder_row(text, expanded=True):
    return Row(text, 1, None, expanded)


FOLDER_SEPARATOR = Row("separator between folders", 1)
ITEM_SEPARATOR = Row("separator")


def item_row(text, checked=True):
    return Row(text, 2, checked)


def controls(window):
    """What Tab leads to. The current row and the current tab always say that they have the focus."""
    return [element for element in window.elements()
            if element.get_state_set().contains(Atspi.StateType.FOCUSABLE)
            and has(element, Atspi.StateType.SENSITIVE)
            and element.get_role() not in (ROW, TAB, LABEL)]


def focused(elements):
    return next((element for element in elements if has(element, Atspi.StateType.FOCUSED)), None)


def wait_for_focus_to_leave(elements, element):
    """The element that has the focus next."""
    return wait_until(lambda: next((now for now in [focused(elements)] if now != element), None),
                      f"the focus leaves “{element.get_name()}”")


def value_of(control):
    """What a screen reader says after the name."""
    control.clear_cache()
    return control.get_description()


def middle(element):
    place = Atspi.Component.get_extents(element, Atspi.CoordType.SCREEN)
    return place.x + place.width // 2, place.y + place.height // 2


class ByKeyboard:
    """Only the keyboard."""

    def __init__(self, test):
        self.test = test
        self.keyboard = Keyboard()

    def focus(self, window, element):
        """Presses Tab or Shift-Tab until the element, or one inside, has the focus."""
        elements = controls(window)
        wanted = elements.index(element)
        now = wait_until(lambda: focused(elements), "a control has the focus")
        while now != element:
            is_before = elements.index(now) < wanted
            self.keyboard.tap(*([TAB_KEY] if is_before else [SHIFT, TAB_KEY]))
            now = wait_for_focus_to_leave(elements, now)

    def press(self, window, element):
        self.focus(window, element)
        self.keyboard.tap(SPACE)

    def choose(self, window, pop_up, index):
        self.focus(window, pop_up)
        self.keyboard.tap(HOME)
        for _ in range(index):
            self.keyboard.tap(DOWN)

    def select(self, window, outline, index):
        self.focus(window, outline)
        self.keyboard.tap(HOME)
        for _ in range(index):
            self.keyboard.tap(DOWN)

    def toggle_row(self, _row):
        self.keyboard.tap(SPACE)

    def edit(self, window, _row):
        self.press(window, window.element(BUTTON, "Edit"))

    def show_general_tab(self, window):
        self.focus(window, window.element(TABS))
        self.keyboard.tap(RIGHT)

    def answer(self, alert, button):
        # The focus is on the default button.
        self.keyboard.tap(ESCAPE if button == "Cancel" else RETURN)

    def confirm(self, sheet, _button):
        if has(focused(controls(sheet)), Atspi.StateType.MULTI_LINE):
            # There Return begins a new line.
            self.keyboard.tap(TAB_KEY)
        self.keyboard.tap(RETURN)

    def close(self, window):
        self.focus(window, window.element(OUTLINE))
        self.keyboard.tap(RETURN)


class ByMouse:
    """The mouse, and the keyboard for texts and shortcuts alone."""

    def __init__(self, test):
        self.test = test
        self.keyboard = Keyboard()

    def focus(self, _window, element):
        self.click_until(element, lambda: has(element, Atspi.StateType.FOCUSED),
                         "the control has the focus")

    def click_until(self, element, condition, what):
        patience_ends = 0

        def done():
            nonlocal patience_ends
            if condition():
                return True
            if time.monotonic() > patience_ends:
                self.click(element)
                patience_ends = time.monotonic() + 1
            return False
        wait_until(done, what)

    def click(self, element):
        Screen().click(*middle(element))

    def press(self, _window, element):
        self.click(element)

    def choose(self, _window, pop_up, index):
        self.click(pop_up)
        wait_until(lambda: has(pop_up, Atspi.StateType.EXPANDED), "the list is open")
        title = pop_up.get_child_at_index(0).get_child_at_index(index)
        # The list ignores clicks right after it has opened.
        self.click_until(title, lambda: not has(pop_up, Atspi.StateType.EXPANDED),
                         "the list has closed")

    def select(self, _window, outline, index):
        self.click(outline_rows(outline)[index])

    def toggle_row(self, row):
        place = Atspi.Component.get_extents(row, Atspi.CoordType.SCREEN)
        Screen().click(place.x + 8, place.y + place.height // 2)

    def edit(self, _window, row):
        # By way of the test's own process the clicks could be too far apart.
        run("xdotool", "mousemove", *map(str, middle(row)), "click", "--repeat", "2", "--delay",
            "100", "1")

    def show_general_tab(self, window):
        self.click(window.element(TAB, "General"))

    def answer(self, alert, button):
        self.test.read(alert)
        self.click(alert.element(BUTTON, button))

    def confirm(self, sheet, button):
        self.click(sheet.element(BUTTON, button))

    def close(self, window):
        self.click(window.element(BUTTON, "Close"))


def outline_rows(outline):
    """The rows. They are read again if one goes away meanwhile."""
    def read():
        with contextlib.suppress(GLib.Error):
            outline.clear_cache()
            children = [outline.get_child_at_index(index)
                        for index in range(outline.get_child_count())]
            return [[child for child in children if child is not None and child.get_role() == ROW]]
        return None
    return wait_until(read, "the rows can be read")[0]


class Sheet:
    """An editor."""

    def __init__(self, settings, title):
        self.settings = settings
        self.hand = settings.hand
        self.title = title
        self.window = settings.windows.wait_for(title)
        settings.wait_for_keyboard(self.window)

    def fill(self, name, text):
        field = self.window.element(FIELD, name)
        self.hand.focus(self.window, field)
        self.hand.keyboard.tap(CONTROL, A)
        for number, line in enumerate(text.split("\n")):
            if number > 0:
                self.hand.keyboard.tap(RETURN)
            run("xdotool", "type", "--delay", "1", line)
        wait_until(lambda: text_of(field) == text, f"“{name}” holds what was typed")

    def leave_completions(self):
        """The list of completions covers the next field."""
        self.hand.keyboard.tap(TAB_KEY)

    def toggle(self, name):
        box = self.window.element(CHECKBOX, name)
        before = has(box, Atspi.StateType.CHECKED)
        self.hand.press(self.window, box)
        wait_until(lambda: has(box, Atspi.StateType.CHECKED) != before, f"“{name}” is toggled")

    def choose(self, name, index, title):
        pop_up = self.window.element(POP_UP_BUTTON, name)
        self.hand.choose(self.window, pop_up, index)
        wait_until(lambda: value_of(pop_up) == title, f"“{title}” is chosen")

    def record(self, combination, text):
        recorder = self.window.element(BUTTON, "Keyboard shortcut")
        self.hand.press(self.window, recorder)
        wait_until(lambda: has(recorder, Atspi.StateType.PRESSED) and not keyboard_is_free(),
                   "the shortcut is recorded")
        self.hand.keyboard.type(combination)
        wait_until(lambda: value_of(recorder) == text, f"the shortcut is {text}")

    def confirm(self, button):
        self.hand.confirm(self.window, button)
        self.settings.wait_until_sheet_is_gone(self.title)

    def cancel(self):
        self.hand.keyboard.tap(ESCAPE)
        self.settings.wait_until_sheet_is_gone(self.title)


class SettingsWindow:
    """The window that is open, and the hand that uses it."""

    def __init__(self, test, hand):
        self.test = test
        self.windows = test.windows
        self.hand = hand
        self.on_screen = XWindows(test.program.process.pid)
        self.window = self.windows.wait_for(TITLE)
        self.outline = self.window.element(OUTLINE)
        self.wait_for_keyboard(self.window)

    def wait_for_keyboard(self, window):
        wait_until(lambda: has(window.accessible, Atspi.StateType.ACTIVE)
                   and self.on_screen.have_focus(), "the window has the keyboard")

    def wait_until_sheet_is_gone(self, title):
        self.windows.wait_until_gone(title)
        self.wait_for_keyboard(self.window)

    def rows(self):
        """All visible rows; None while they change."""
        with contextlib.suppress(GLib.Error, ValueError):
            return [self.row(element) for element in outline_rows(self.outline)]
        return None

    def row(self, element):
        states = element.get_state_set()
        checked = states.contains(Atspi.StateType.CHECKED)
        expanded = states.contains(Atspi.StateType.EXPANDED)
        level, _, is_unchecked = element.get_description().partition(", ")
        return Row(element.get_name(), int(level.removeprefix("level ")),
                   checked if checked or is_unchecked else None,
                   expanded if states.contains(Atspi.StateType.EXPANDABLE) else None)

    def wait_for_rows(self, *rows):
        """Waits until exactly these are shown."""
        wait_until(lambda: self.rows() == list(rows), f"the rows are {rows}")

    def find(self, text, number=0):
        """The element and the index of the row with this text, or of a later one like it."""
        found = [(index, element) for index, element in enumerate(outline_rows(self.outline))
                 if element.get_name() == text]
        return found[number]

    def select(self, text, number=0):
        index, _ = self.find(text, number)
        self.hand.select(self.window, self.outline, index)
        wait_until(lambda: has(self.find(text, number)[1], Atspi.StateType.SELECTED),
                   f"“{text}” is selected")

    def toggle(self, text):
        """Enables or disables an item."""
        self.select(text)
        index, element = self.find(text)
        before = self.rows()[index].checked
        self.hand.toggle_row(element)
        wait_until(lambda: self.rows()[index].checked != before, f"“{text}” is toggled")

    def press(self, name):
        self.hand.press(self.window, self.window.element(BUTTON, name))

    def change_rows(self, button):
        """Presses a button that changes the rows at once."""
        before = self.rows()
        self.press(button)
        wait_until(lambda: self.rows() not in (None, before), f"“{button}” changes the rows")

    def add_folder(self, name, icon="", is_at_top=False):
        self.press("Add Folder")
        sheet = Sheet(self, "Add Folder")
        sheet.fill("Name", name)
        if icon:
            sheet.fill("Icon", icon)
            sheet.leave_completions()
        if is_at_top:
            sheet.toggle("Show items directly in the menu, not in a submenu")
        sheet.confirm("Add")

    def add_item(self, title, command, *options, icon="", type_index=0, input_label="",
                 shortcut=None, is_global=True):
        """`shortcut` is a combination and its text."""
        self.press("Add Item")
        sheet = Sheet(self, "Add Item")
        sheet.fill("Title", title)
        if icon:
            sheet.fill("Icon", icon)
            sheet.leave_completions()
        if type_index:
            sheet.choose("Type", type_index, TYPES[type_index])
        sheet.fill("Command", command)
        if input_label:
            sheet.fill("Input label", input_label)
        if shortcut:
            sheet.record(*shortcut)
        if not is_global:
            sheet.toggle("Works system-wide")
        for option in options:
            sheet.toggle(option)
        sheet.confirm("Add")

    def edit(self, text):
        self.select(text)
        self.hand.edit(self.window, self.find(text)[1])

    def delete(self, title, answer):
        """Deletes the selected entry, or not, as the alert with this title is answered."""
        self.press("Delete")
        self.hand.answer(self.alert(title), answer)
        self.wait_until_sheet_is_gone(title)

    def alert(self, title):
        alert = self.windows.wait_for(title)
        self.wait_for_keyboard(alert)
        return alert

    def show_general_tab(self):
        self.hand.show_general_tab(self.window)
        wait_until(lambda: self.window.names(CHECKBOX), "the tab is shown")

    def close(self):
        self.hand.close(self.window)
        self.windows.wait_until_gone(TITLE)


def stored_bytes(document):
    """What the program writes for a document."""
    text = json.dumps(document, indent=2, sort_keys=True, separators=(",", " : "),
                      ensure_ascii=False)
    text = re.sub(r"^( *)(.*)\[\]", r"\1\2[\n\n\1]", text, flags=re.MULTILINE)
    return text.replace("/", "\\/").encode()


def without_ids(settings):
    """The bytes of a settings file with empty ids."""
    return re.sub(rb'"id" : "[0-9A-F-]{36}"', b'"id" : ""', settings)
