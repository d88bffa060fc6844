"""A key of the keyboard that somebody holds down."""

import threading

from quillmar_desktop import run, wait_until
from Xlib import X, display
from Xlib.ext import record

EVENT_BYTES = 32


class HeldKey:
    """Held down inside a with statement, while the X server repeats it."""

    def __init__(self, name):
        self.name = name
        self.presses = 0
        self.control = display.Display()
        self.recorder = display.Display()
        # Presses as the server makes them, whoever gets them.
        self.context = self.recorder.record_create_context(0, [record.AllClients], [{
            "core_requests": (0, 0), "core_replies": (0, 0), "ext_requests": (0, 0, 0, 0),
            "ext_replies": (0, 0, 0, 0), "delivered_events": (0, 0),
            "device_events": (X.KeyPress, X.KeyPress), "errors": (0, 0),
            "client_started": False, "client_died": False}])
        self.thread = threading.Thread(target=self.record, daemon=True)

    def record(self):
        def count(reply):
            if reply.category == record.FromServer:
                self.presses += len(reply.data) // EVENT_BYTES
        self.recorder.record_enable_context(self.context, count)

    def __enter__(self):
        self.thread.start()
        run("xdotool", "keydown", self.name)
        return self

    def __exit__(self, *_):
        run("xdotool", "keyup", self.name)
        self.control.record_disable_context(self.context)
        self.control.flush()
        self.thread.join()

    def wait_for_presses(self, count):
        """Waits until the key has been repeated that often from now on."""
        enough = self.presses + count
        wait_until(lambda: self.presses >= enough, f"“{self.name}” is repeated {count} times")
