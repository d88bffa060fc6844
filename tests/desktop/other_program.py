"""Another program beside Quillmar."""

import time

from quillmar_desktop import wait_until
from Xlib import X, display
from Xlib.protocol import event

FROM_A_PAGER = 2
SECONDS_BEFORE_ASKING = 2


class OtherProgram:
    """Another program's window that has the keyboard, and what was typed into it."""

    def __init__(self):
        self.display = display.Display()
        screen = self.display.screen()
        self.window = screen.root.create_window(
            40, 80, 200, 100, 0, screen.root_depth, X.InputOutput, X.CopyFromParent,
            background_pixel=screen.white_pixel, event_mask=X.FocusChangeMask | X.KeyPressMask)
        self.window.set_wm_name("Another program")
        self.window.map()
        self.display.flush()
        self.keys = 0
        self.asked = time.monotonic()

    def take_focus(self):
        """Waits for the focus. A window manager that is still starting may not give it to a new
        window; asked by the user, through a pager, it does."""
        wait_until(self.asks_for_focus, "the other program has the focus")

    def asks_for_focus(self):
        if self.has_focus():
            return True
        if time.monotonic() - self.asked > SECONDS_BEFORE_ASKING:
            self.asked = time.monotonic()
            atom = self.display.intern_atom("_NET_ACTIVE_WINDOW")
            request = event.ClientMessage(window=self.window, client_type=atom,
                                          data=(32, [FROM_A_PAGER, X.CurrentTime, 0, 0, 0]))
            self.display.screen().root.send_event(
                request, event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
            self.display.flush()
        return False

    def has_focus(self):
        return self.display.get_input_focus().focus == self.window

    def typed_keys(self):
        while self.display.pending_events():
            self.keys += self.display.next_event().type == X.KeyPress
        return self.keys
