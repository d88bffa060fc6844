"""The windows of an X display as its server knows them."""

import collections
import contextlib

from quillmar_desktop import wait_until
from Xlib import X, display, error
from Xlib.protocol import event


class XWindows:
    """The windows of one process that are on the screen, in pixels of the screen. Of a window in a
    frame or in a tray this is the content, without what lies around it."""

    Window = collections.namedtuple("Window", "title parent x y width height resource")

    def __init__(self, process_id, display_name=None):
        self.process_id = process_id
        self.display = display.Display(display_name)
        self.root = self.display.screen().root
        self.pid = self.display.intern_atom("_NET_WM_PID")
        self.title = self.display.intern_atom("_NET_WM_NAME")

    def all(self):
        found = []
        waiting = [self.root]
        while waiting:
            window = waiting.pop()
            with contextlib.suppress(error.XError):  # it went away in between
                tree = window.query_tree()
                waiting += tree.children
                if self.is_ours(window):
                    found.append(self.described(window, tree.parent))
        return found

    def is_ours(self, window):
        process_id = window.get_full_property(self.pid, X.AnyPropertyType)
        return (process_id is not None and list(process_id.value) == [self.process_id]
                and window.get_attributes().map_state == X.IsViewable)

    def described(self, window, parent):
        title = window.get_full_property(self.title, X.AnyPropertyType)
        geometry = window.get_geometry()
        place = self.root.translate_coords(window, 0, 0)
        return self.Window(title.value.decode() if title else "", parent, place.x, place.y,
                           geometry.width, geometry.height, window)

    def embedded(self):
        """Those that lie in a window of another program."""
        return [window for window in self.all() if window.parent != self.root]

    def menus(self):
        """Those that no window manager has taken into a frame."""
        return [window for window in self.all() if window.parent == self.root]

    def have_focus(self):
        """Whether key presses reach one of them."""
        window = self.display.get_input_focus().focus
        with contextlib.suppress(error.XError):  # it went away in between
            # Some toolkits give the focus to a window inside of theirs.
            while window not in (X.NONE, X.PointerRoot, self.root):
                if self.is_ours(window):
                    return True
                window = window.query_tree().parent
        return False

    def titled(self, title):
        """The window with this title, once it is there."""
        return wait_until(
            lambda: next((window for window in self.all() if window.title == title), None),
            f"there is a window “{title}”")

    def ask_to_close(self, title):
        """Asks the window manager to close a window, as a task bar does."""
        window = self.titled(title).resource
        request = event.ClientMessage(
            window=window, client_type=self.display.intern_atom("_NET_CLOSE_WINDOW"),
            data=(32, [X.CurrentTime, 2, 0, 0, 0]))
        self.root.send_event(request, X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.display.sync()

    def destroy(self, title):
        """Destroys a window without asking its program."""
        self.titled(title).resource.destroy()
        self.display.sync()

    def kill_client(self, title):
        """Closes the connection of a window's program to the server."""
        self.titled(title).resource.kill_client()
        self.display.sync()
