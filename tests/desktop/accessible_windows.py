"""The program's windows as a screen reader has them: found, read, pressed and filled by way of the
accessibility bus, never by coordinates."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402  (the version comes first)

from quillmar_desktop import wait_until  # noqa: E402

WINDOW_ROLES = {Atspi.Role.FRAME, Atspi.Role.DIALOG, Atspi.Role.WINDOW, Atspi.Role.FILE_CHOOSER,
                Atspi.Role.ALERT}

LABEL = Atspi.Role.LABEL
FIELD = Atspi.Role.TEXT
BUTTON = Atspi.Role.PUSH_BUTTON
LINK = Atspi.Role.LINK
IMAGE = Atspi.Role.IMAGE
CHECKBOX = Atspi.Role.CHECK_BOX
POP_UP_BUTTON = Atspi.Role.COMBO_BOX
OUTLINE = Atspi.Role.TREE
ROW = Atspi.Role.TABLE_CELL  # as the toolkit says
TABS = Atspi.Role.PAGE_TAB_LIST
TAB = Atspi.Role.PAGE_TAB


def has(element, state):
    """Whether an element of a window has a state now."""
    element.clear_cache()
    return element.get_state_set().contains(state)


def text_of(field):
    """What a field holds now."""
    text = Atspi.Text.get_text(field, 0, Atspi.Text.get_character_count(field))
    return text.replace("\u2029", "\n")


class Window:
    """One window that is on the screen."""

    def __init__(self, accessible):
        self.accessible = accessible

    def elements(self):
        """All that is shown in the window, in the order in which it is read."""
        found = []
        waiting = [self.accessible]
        while waiting:
            element = waiting.pop()
            # What lies in a hidden element is hidden, too.
            if element is None or not element.get_state_set().contains(Atspi.StateType.SHOWING):
                continue
            found.append(element)
            waiting += [element.get_child_at_index(index)
                        for index in reversed(range(element.get_child_count()))]
        return found[1:]

    def names(self, *roles):
        """The names of the elements with one of the roles."""
        return [element.get_name() for element in self.elements() if element.get_role() in roles]

    def element(self, role, name=None):
        def find():
            return next((element for element in self.elements() if element.get_role() == role
                         and name in (None, element.get_name())), None)
        return wait_until(find, f"there is a {Atspi.role_get_name(role)} “{name}”")

    def press(self, name, role=BUTTON):
        element = self.element(role, name)
        if not Atspi.Action.do_action(element, 0):
            raise AssertionError(f"“{name}” can't be pressed.")

    def is_enabled(self, name, role=BUTTON):
        return self.element(role, name).get_state_set().contains(Atspi.StateType.SENSITIVE)

    def place(self, name, role=BUTTON):
        """Where an element is on the screen: x, y, width, height in pixels."""
        return Atspi.Component.get_extents(self.element(role, name), Atspi.CoordType.SCREEN)

    def content_place(self):
        """Where the window without its frame is on the screen."""
        return Atspi.Component.get_extents(self.accessible, Atspi.CoordType.SCREEN)

    def type(self, text):
        """Fills the window's one field."""
        field = self.element(FIELD)
        if not Atspi.EditableText.set_text_contents(field, text):
            raise AssertionError("The field can't be filled.")

    def text(self):
        """What the window's one field holds."""
        return text_of(self.element(FIELD))

    def focused(self):
        """(role, name) of the element that has the keyboard; None when the window has it not."""
        for element in self.elements():
            if element.get_state_set().contains(Atspi.StateType.FOCUSED):
                return element.get_role(), element.get_name()
        return None

    def is_active(self):
        return self.accessible.get_state_set().contains(Atspi.StateType.ACTIVE)


class AccessibleWindows:
    """The windows of one process."""

    def __init__(self, process_id):
        self.process_id = process_id

    def all(self):
        """(title, window) of each that is on the screen."""
        found = []
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            try:
                application = desktop.get_child_at_index(index)
                if application is None or application.get_process_id() != self.process_id:
                    continue
                found += self.shown(application)
            except GLib.Error:  # it went away in between
                continue
        return found

    def shown(self, application):
        application.clear_cache()
        children = [application.get_child_at_index(index)
                    for index in range(application.get_child_count())]
        return [(child.get_name(), Window(child)) for child in children
                if child is not None and child.get_role() in WINDOW_ROLES
                and child.get_state_set().contains(Atspi.StateType.SHOWING)]

    def wait_for(self, title):
        def find():
            return next((window for name, window in self.all() if name == title), None)
        return wait_until(find, f"there is a window “{title}”")

    def wait_until_gone(self, title):
        wait_until(lambda: all(name != title for name, _ in self.all()),
                   f"the window “{title}” has closed")
