#!/usr/bin/python3
"""Measures the program's windows on the virtual desktop.

Usage: scripts/virtual-desktop bench/windows.py QUILLMAR [--rounds N]

Prints how long it takes from a click on an entry of the menu until the panel that it opens is
painted on the screen: the first time in a process, which loads the toolkit (warm: its files are in
the page cache), and later on; and the program's PSS before its first window, with one open, and
after all are closed.
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
PATIENCE_SECONDS = 20
FIRST_LIMIT = 150
LATER_LIMIT = 30


class Screen:
    """The middle of the screen, where panels open."""

    def __init__(self):
        self.display = display.Display()
        screen = self.display.screen()
        self.root = screen.root
        self.middle = (screen.width_in_pixels // 2, screen.height_in_pixels // 2)

    def colours(self):
        """How many colours the middle shows: one for the bare desktop, more with text on it."""
        x, y = self.middle
        pixels = self.root.get_image(x - 60, y - 40, 120, 80, X.ZPixmap, 0xFFFFFF).data
        return len({pixels[at:at + 4] for at in range(0, len(pixels), 4)})

    def wait_for(self, condition, what):
        began = time.monotonic()
        while not condition():
            if time.monotonic() - began > PATIENCE_SECONDS:
                sys.exit(f"Not so after {PATIENCE_SECONDS} seconds: {what}.")

    def wait_for_panel(self):
        self.wait_for(lambda: self.colours() > 4, "a panel is on the screen")

    def close_panel(self):
        subprocess.run(["xdotool", "key", "Escape"], check=True)
        self.wait_for(lambda: self.colours() == 1, "the panel is closed")


class Menu:
    """The program's menu, as a panel clicks it."""

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


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("quillmar")
    parser.add_argument("--rounds", type=int, default=9)
    arguments = parser.parse_args()

    watcher = Watcher()
    GLib.timeout_add(100, lambda: True)
    screen = Screen()
    first, later = [], []
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
            if number > 0:  # the one before warmed the page cache
                first.append(time_of_first)

    print(f"click to first panel:    {statistics.median(first):.1f} ms  (limit {FIRST_LIMIT})")
    print(f"click to a later panel:  {statistics.median(later):.1f} ms  (limit {LATER_LIMIT})")
    print(f"PSS before, with a panel, after closing it: {before} kB, {opened} kB, {after} kB")


if __name__ == "__main__":
    main()
