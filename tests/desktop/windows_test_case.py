"""What a test needs to open the program's windows and to use them."""

from accessible_windows import AccessibleWindows
from quillmar_desktop import DesktopTestCase, entry, tools, wait_until


class WindowsTestCase(DesktopTestCase):

    def open(self, settings, *path, title="Quillmar", **keywords):
        """Starts the program, chooses an entry, and answers the window that opens."""
        self.start_with_windows(settings, **keywords)
        self.icon.choose(*path)
        return self.windows.wait_for(title)

    def start_with_windows(self, settings, **keywords):
        self.program, self.icon = self.start_with_icon(settings, **keywords)
        self.windows = AccessibleWindows(self.program.process.pid)

    def wait_for_focus(self, window, role, name=None):
        def focused():
            found = window.focused()
            return found is not None and found[0] == role and name in (None, found[1])
        wait_until(focused, f"the focus is at {role} {name}")

    def ask(self, **keywords):
        """An item that writes the value it is given into a file of the test's."""
        return tools(entry("Ask", f"printf %s '{{{{input}}}}' >'{self.scratch}/value'",
                           inputPrompt="Which value?", **keywords))
