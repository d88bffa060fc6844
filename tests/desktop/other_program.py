"""Another program beside Quillmar."""

from Xlib import X, display


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

    def has_focus(self):
        return self.display.get_input_focus().focus == self.window

    def typed_keys(self):
        while self.display.pending_events():
            self.keys += self.display.next_event().type == X.KeyPress
        return self.keys
