"""The keyboard of the X display, pressed with XTEST by its key codes, and another program's grabs."""

import time

from quillmar_desktop import run
from Xlib import X, display, error
from Xlib.ext import xtest

# X key codes.
ESCAPE = 9
TAB = 23
RETURN = 36
CONTROL = 37
A = 38
SHIFT = 50
ALT = 64
SPACE = 65
CAPS_LOCK = 66
NUM_LOCK = 77
HOME = 110
LEFT = 113
RIGHT = 114
DOWN = 116
SUPER = 133
MENU = 135

# Bits of stored shortcuts, and the key and the X modifier of each.
MODIFIERS = {0x20000: (SHIFT, X.ShiftMask), 0x40000: (CONTROL, X.ControlMask),
             0x80000: (ALT, X.Mod1Mask), 0x100000: (SUPER, X.Mod4Mask)}
SHIFT_FLAG, CONTROL_FLAG, OPTION_FLAG, COMMAND_FLAG = MODIFIERS

SECOND_LAYOUT = 0x2000


class Combination:
    """A key with modifiers: the X key code, the virtual key code that is stored for it, and flags of
    stored shortcuts."""

    def __init__(self, key, virtual_key, flags=0):
        self.key = key
        self.virtual_key = virtual_key
        self.flags = flags

    def shortcut(self, **keywords):
        """As a settings document has it."""
        return {"keyCode": self.virtual_key, "character": "", "modifiers": self.flags,
                "isGlobal": True, **keywords}

    def keys(self):
        """X key codes in the order in which one presses them."""
        return [key for flag, (key, _) in MODIFIERS.items() if self.flags & flag] + [self.key]

    def x_modifiers(self):
        return sum(mask for flag, (_, mask) in MODIFIERS.items() if self.flags & flag)


SUPER_SHIFT_K = Combination(45, 40, COMMAND_FLAG | SHIFT_FLAG)
SUPER_SHIFT_L = Combination(46, 37, COMMAND_FLAG | SHIFT_FLAG)


class Keyboard:

    def __init__(self):
        self.display = display.Display()

    def press(self, *keys):
        self.send(X.KeyPress, keys)

    def release(self, *keys):
        self.send(X.KeyRelease, reversed(keys))

    def tap(self, *keys):
        """Presses keys one after another, then releases them."""
        self.press(*keys)
        self.release(*keys)

    def type(self, combination):
        self.tap(*combination.keys())

    def send(self, event, keys):
        for key in keys:
            xtest.fake_input(self.display, event, key)
        self.display.sync()

    def state(self):
        """The modifiers that are down or locked, and the layout."""
        return self.display.screen().root.query_pointer().mask

    def set_lock(self, key, mask, locked):
        if bool(self.state() & mask) != locked:
            self.tap(key)

    def set_locks(self, caps_lock, num_lock):
        self.set_lock(CAPS_LOCK, X.LockMask, caps_lock)
        self.set_lock(NUM_LOCK, X.Mod2Mask, num_lock)

    def set_layout(self, *options):
        run("setxkbmap", *options)

    def use_second_layout(self):
        """The layouts must have been set with the option grp:menu_toggle."""
        self.tap(MENU)


class OtherGrabs:
    """The grabs of another program, which last as long as the object."""

    def __init__(self):
        self.display = display.Display()

    def grab(self, combination):
        """True unless the combination is taken."""
        taken = error.CatchError(error.BadAccess)
        self.display.screen().root.grab_key(combination.key, combination.x_modifiers(), False,
                                            X.GrabModeAsync, X.GrabModeAsync, onerror=taken)
        self.display.sync()
        return taken.get_error() is None

    def end(self):
        self.display.close()


def is_free(combination):
    """True if no program has the combination."""
    other = OtherGrabs()
    free = other.grab(combination)
    other.end()
    return free


def keyboard_is_free():
    """True if no program has grabbed the keyboard."""
    other = display.Display()
    # The server refuses a grab in the future, so this one takes the keyboard from nobody. It looks
    # for other grabs first. Its clock is the system's.
    in_an_hour = int(time.monotonic() * 1000) + 3_600_000
    status = other.screen().root.grab_keyboard(False, X.GrabModeAsync, X.GrabModeAsync,
                                               in_an_hour % 2**32)
    other.close()
    return status != X.AlreadyGrabbed
