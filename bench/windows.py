#!/usr/bin/python3
"""Measures the program's windows on the virtual desktop.

Usage: scripts/virtual-desktop bench/windows.py QUILLMAR QT_WINDOW [--rounds N]

Prints the time from a click on a menu entry until its panel is painted, for the first panel of a
process, which loads Qt, and for later panels. Compares the first panel with QT_WINDOW, a minimal Qt
program with the same window, from exec until the window is painted. The two programs alternate, with
all their files in the page cache. Also prints the program's PSS before the first panel, with a panel
open, and after closing it.
"""

import argparse
import json
import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402
from Xlib import X, display  # noqa: E402

from programs import Watcher, end, pss_kilobytes  # noqa: E402

NAME = "com.tovenworks.quillmar"
MENU = "com.canonical.dbusmenu"
SETTLE_SECONDS = 1
TIMEOUT_SECONDS = 20
FIRST_LIMIT = 150
FIRST_RATIO_LIMIT = 1.5
LATER_LIMIT = 30


class Screen:
    """The middle of the screen, where panels open."""

    def __init__(self):
        self.display = display.Display()
        screen = self.display.screen()
        self.root = screen.root
        self.middle = (screen.width_in_pixels // 2, screen.height_in_pixels // 2)

    def colours(self):
        """The number of colours in the middle: one for the empty desktop, more for a window."""
        x, y = self.middle
        pixels = self.root.get_image(x - 60, y - 40, 120, 80, X.ZPixmap, 0xFFFFFF).data
        return len({pixels[at:at + 4] for at in range(0, len(pixels), 4)})

    def wait_for(self, condition, what):
        began = time.monotonic()
        while not condition():
            if time.monotonic() - began > TIMEOUT_SECONDS:
                sys.exit(f"Timeout after {TIMEOUT_SECONDS} seconds; expected: {what}.")

    def wait_for_panel(self):
        self.wait_for(lambda: self.colours() > 4, "a window is on the screen")

    def wait_until_empty(self):
        self.wait_for(lambda: self.colours() == 1, "the screen is empty")

    def close_panel(self):
        subprocess.run(["xdotool", "key", "Escape"], check=True)
        self.wait_until_empty()


class Menu:
    """The program's menu, used as a panel does."""

    def __init__(self, bus):
        self.bus = bus
        root = self.call("GetLayout", GLib.Variant("(iias)", (0, -1, [])))[1]
        self.entry = next(node[0] for node in root[2] if node[1].get("label") == "Ask")

    def call(self, method, arguments):
        return self.bus.call_sync(NAME, "/MenuBar", MENU, method, arguments, None,
                                  Gio.DBusCallFlags.NONE, -1, None).unpack()

    def click(self):
        self.call("Event", GLib.Variant("(isvu)",
                                        (self.entry, "clicked", GLib.Variant("s", ""), 0)))


def milliseconds_until_panel(menu, screen):
    began = time.monotonic()
    menu.click()
    screen.wait_for_panel()
    return (time.monotonic() - began) * 1000


def milliseconds_until_qt_window(program, screen):
    """Starts the minimal Qt program, and ends it once its window is painted."""
    began = time.monotonic()
    process = subprocess.Popen([program], stdout=subprocess.DEVNULL)
    screen.wait_for_panel()
    needed = (time.monotonic() - began) * 1000
    end(process)
    screen.wait_until_empty()
    return needed


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("quillmar")
    parser.add_argument("qt_window")
    parser.add_argument("--rounds", type=int, default=9)
    arguments = parser.parse_args()

    watcher = Watcher()
    GLib.timeout_add(100, lambda: True)
    screen = Screen()
    first, qt, later = [], [], []
    before = opened = after = 0
    with tempfile.TemporaryDirectory() as directory:
        (pathlib.Path(directory) / "settings.json").write_text(json.dumps({"categories": [{
            "name": "Tools", "showAtTopLevel": True,
            "items": [{"title": "Ask", "command": {"value": "echo {{input}}"},
                       "inputPrompt": "What is to be said?"}]}]}))
        environment = dict(os.environ, QUILLMAR_SETTINGS_DIR=directory)
        for number in range(arguments.rounds + 1):
            program, _ = watcher.start([arguments.quillmar], environment)
            menu = Menu(watcher.bus)
            time.sleep(SETTLE_SECONDS)
            before = pss_kilobytes(program.pid)
            time_of_first = milliseconds_until_panel(menu, screen)
            opened = pss_kilobytes(program.pid)
            screen.close_panel()
            for _ in range(arguments.rounds):
                later.append(milliseconds_until_panel(menu, screen))
                screen.close_panel()
            time.sleep(SETTLE_SECONDS)
            after = pss_kilobytes(program.pid)
            end(program)
            time_of_qt = milliseconds_until_qt_window(arguments.qt_window, screen)
            if number > 0:  # The first round warms the page cache.
                first.append(time_of_first)
                qt.append(time_of_qt)

    median = statistics.median
    ratio = median(ours / theirs for ours, theirs in zip(first, qt))
    print(f"click to first panel:    {median(first):.1f} ms / {median(qt):.1f} ms = {ratio:.2f}"
          f"  (limit {FIRST_RATIO_LIMIT:.2f}, and {FIRST_LIMIT} ms)")
    print(f"click to a later panel:  {median(later):.1f} ms  (limit {LATER_LIMIT} ms)")
    print(f"PSS before, with a panel, after closing it: {before} kB, {opened} kB, {after} kB")


if __name__ == "__main__":
    main()
