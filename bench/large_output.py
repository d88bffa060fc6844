#!/usr/bin/python3
"""Measures how long the menu does not respond while 200 MB of command output are reported.

Usage: scripts/virtual-desktop bench/large_output.py QUILLMAR

Prints the longest duration of a menu call, without a report and with each kind of report.
"""

import argparse
import json
import os
import pathlib
import subprocess
import tempfile
import time

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

NAME = "com.tovenworks.quillmar"
OUTPUT_BYTES = 200_000_000
SETTLE_SECONDS = 2
LIMIT_MS = 100
MENU_TIMEOUT_SECONDS = 60

KINDS = {
    "no report": {},
    "clipboard": {"copyToClipboard": True},
    "notification": {"showNotification": True},
    "clipboard and notification": {"copyToClipboard": True, "showNotification": True},
}


class Menu:
    """The program's menu on the session bus."""

    def __init__(self):
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)

    def call(self, method, arguments, result=None):
        return self.bus.call_sync(
            NAME, "/MenuBar", "com.canonical.dbusmenu", method, arguments,
            result and GLib.VariantType(result), Gio.DBusCallFlags.NONE,
            MENU_TIMEOUT_SECONDS * 1000, None)

    def wait_until_ready(self):
        deadline = time.monotonic() + MENU_TIMEOUT_SECONDS
        while True:
            try:
                return self.layout()
            except GLib.Error:
                if time.monotonic() > deadline:
                    raise
                time.sleep(0.1)

    def layout(self):
        return self.call("GetLayout", GLib.Variant("(iias)", (0, -1, ["label"])), "(u(ia{sv}av))")

    def choose(self, label):
        entries = self.layout().unpack()[1][2]
        number = next(entry[0] for entry in entries if entry[1].get("label") == label)
        self.call("Event", GLib.Variant(
            "(isvu)", (number, "clicked", GLib.Variant("s", ""), 0)))

    def longest_call(self, is_over):
        longest = 0.0
        while not is_over():
            before = time.monotonic()
            self.layout()
            longest = max(longest, time.monotonic() - before)
            time.sleep(0.001)
        return longest


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("quillmar")
    options = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="bench-") as folder:
        done = pathlib.Path(folder, "done")
        items = [{"title": title,
                  "command": {"value": f"yes é | head -c {OUTPUT_BYTES}; touch '{done}'", **flags}}
                 for title, flags in KINDS.items()]
        pathlib.Path(folder, "settings.json").write_text(json.dumps(
            {"categories": [{"name": "Bench", "showAtTopLevel": True, "items": items}],
             "preferences": {"useLoginShell": False}}), encoding="utf-8")
        with subprocess.Popen([options.quillmar], stdout=subprocess.DEVNULL,
                              env={**os.environ, "QUILLMAR_SETTINGS_DIR": folder}) as process:
            menu = Menu()
            menu.wait_until_ready()
            for title in KINDS:
                done.unlink(missing_ok=True)
                ends_at = []

                def is_over(times=ends_at):
                    # The report follows the end of the command.
                    if not times and done.exists():
                        times.append(time.monotonic() + SETTLE_SECONDS)
                    return bool(times) and time.monotonic() > times[0]

                menu.choose(title)
                print(f"{title}: the longest call took {menu.longest_call(is_over) * 1000:.0f} ms"
                      f"  (limit {LIMIT_MS} ms)")
            process.kill()


if __name__ == "__main__":
    main()
