"""A file manager, and the files that are dragged out of it."""

import ctypes
import itertools
import subprocess

from accessible_windows import ROW, AccessibleWindows, has
from gi.repository import Atspi
from quillmar_desktop import run, wait_until
from settings_window import middle
from x_windows import XWindows

STEPS = 10


class CursorImage(ctypes.Structure):
    _fields_ = [("x", ctypes.c_short), ("y", ctypes.c_short), ("width", ctypes.c_ushort),
                ("height", ctypes.c_ushort), ("xhot", ctypes.c_ushort), ("yhot", ctypes.c_ushort),
                ("serial", ctypes.c_ulong), ("pixels", ctypes.POINTER(ctypes.c_ulong)),
                ("atom", ctypes.c_ulong), ("name", ctypes.c_char_p)]


class Pointer:
    """The pointer as the X server draws it."""

    def __init__(self):
        self.x11 = ctypes.CDLL("libX11.so.6")
        self.fixes = ctypes.CDLL("libXfixes.so.3")
        self.x11.XOpenDisplay.restype = ctypes.c_void_p
        self.fixes.XFixesGetCursorImage.restype = ctypes.POINTER(CursorImage)
        self.fixes.XFixesGetCursorImage.argtypes = [ctypes.c_void_p]
        self.x11.XFree.argtypes = [ctypes.c_void_p]
        self.display = self.x11.XOpenDisplay(None)
        self.fixes.XFixesQueryExtension(ctypes.c_void_p(self.display), ctypes.byref(ctypes.c_int()),
                                        ctypes.byref(ctypes.c_int()))

    def name(self):
        image = self.fixes.XFixesGetCursorImage(self.display)
        name = image.contents.name.decode()
        self.x11.XFree(image)
        return name


class FileManager:
    """A window of a file manager in the upper left corner of the screen, which shows one folder as a
    list."""

    def __init__(self, test, folder):
        # A list is on the accessibility bus, icons are not.
        for name, value in (("last-view", "ThunarDetailsView"), ("last-side-pane", "void")):
            run("xfconf-query", "--channel", "thunar", "--property", f"/{name}", "--create",
                "--type", "string", "--set", value)
        process = subprocess.Popen(["thunar", str(folder)], stdin=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        test.addCleanup(process.wait)
        test.addCleanup(process.kill)
        self.pointer = Pointer()
        self.window = AccessibleWindows(process.pid).wait_for(f"{folder.name} - Thunar")
        on_screen = XWindows(process.pid).titled(f"{folder.name} - Thunar").resource.id
        run("xdotool", "windowsize", "--sync", str(on_screen), "480", "320", "windowmove", "--sync",
            str(on_screen), "0", "40", "windowactivate", "--sync", str(on_screen))

    def drag(self, names, target):
        """Selects files, drags them to a point of the screen, and holds them there."""
        rows = [self.window.element(ROW, name) for name in names]
        if len(rows) > 1:
            click(middle(rows[0]))
            for row in rows[1:]:
                run("xdotool", "keydown", "ctrl")
                click(middle(row))
                run("xdotool", "keyup", "ctrl")
            wait_until(lambda: all(has(row, Atspi.StateType.SELECTED) for row in rows),
                       "the files are selected")
        # Not where the last click was: that would be a double click.
        start = middle(rows[0])
        run("xdotool", "mousemove", *map(str, start), "mousedown", "1")
        for step in range(STEPS + 1):
            move(*(a + (b - a) * step // STEPS for a, b in zip(start, target)))
            if step > 1:
                wait_until(lambda: self.pointer.name().startswith("dnd-"), "the files are dragged")

    def wait_for_answer(self, is_accepted, target):
        """Moves about the point until the pointer shows whether the files can be dropped there."""
        wanted = "dnd-copy" if is_accepted else "dnd-none"
        steps = itertools.cycle((1, 0))

        def answered():
            move(target[0] + next(steps), target[1])
            return self.pointer.name() == wanted
        wait_until(answered, f"the pointer is {wanted}")

    def drop(self, names, target, is_accepted=True):
        """Drags files to a point of the screen, and drops them there."""
        self.drag(names, target)
        self.wait_for_answer(is_accepted, target)
        run("xdotool", "mouseup", "1")
        wait_until(lambda: not self.pointer.name().startswith("dnd-"), "the drag has ended")


def move(x, y):
    run("xdotool", "mousemove", str(x), str(y))


def click(point):
    run("xdotool", "mousemove", *map(str, point), "click", "1")
