"""What a test needs to open the program's windows and to use them."""

from accessible_windows import BUTTON, FIELD, AccessibleWindows
from quillmar_desktop import DesktopTestCase, entry, run, tools, wait_until
from x_windows import XWindows


class WindowsTestCase(DesktopTestCase):

    # The X display of the program; None for the one of the test.
    display_name = None

    def open(self, settings, *path, title="Quillmar", **keywords):
        """Starts the program, chooses an entry, and answers the window that opens."""
        self.start_with_windows(settings, **keywords)
        self.icon.choose(*path)
        return self.windows.wait_for(title)

    def start_with_windows(self, settings, **keywords):
        self.program, self.icon = self.start_with_icon(settings, **keywords)
        self.windows = AccessibleWindows(self.program.process.pid)

    def wait_for_focus(self, window, role, name=None):
        """Until keys reach an element. A window that is opened again at once tells the accessibility
        bus that it has the focus before the X server has given it to the window."""
        on_screen = XWindows(self.program.process.pid, self.display_name)

        def focused():
            found = window.focused()
            return (found is not None and found[0] == role and name in (None, found[1])
                    and on_screen.have_focus())
        wait_until(focused, f"the focus is at {role} {name}")

    def questions(self):
        """The panels with a field that are on the screen."""
        return [shown for _, shown in self.windows.all() if shown.names(FIELD)]

    def question(self):
        """The panel with a field, once it is there."""
        return wait_until(self.questions, "the question is asked")[0]

    def read(self, window):
        """Tries the mouse on a button and lets go of it elsewhere, until the window, which takes no
        notice as long as nobody can have read it, follows with the focus."""
        cancel = window.place("Cancel")

        def followed():
            if window.focused() == (BUTTON, "Cancel"):
                return True
            run("xdotool", "mousemove", str(cancel.x + 4), str(cancel.y + 4), "mousedown", "1",
                "mousemove", str(cancel.x - 20), str(cancel.y), "mouseup", "1")
            return False
        wait_until(followed, "the window takes presses")

    def middle_of_run(self, window):
        place = window.place("Run")
        return place.x + place.width // 2, place.y + place.height // 2

    def ask(self, **keywords):
        """An item that writes the value it is given into a file of the test's."""
        return tools(entry("Ask", f"printf %s '{{{{input}}}}' >'{self.scratch}/value'",
                           inputPrompt="Which value?", **keywords))
