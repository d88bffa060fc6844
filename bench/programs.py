#!/usr/bin/python3
"""Compares the program with a minimal Qt tray program, on the virtual desktop.

Usage: scripts/virtual-desktop bench/programs.py QUILLMAR QT_TRAY [--starts N]

With a document of 50 items, prints the ratio of the idle PSS, the median ratio of the times from exec
to the registered icon, and how often the program woke up in ten idle seconds.
"""

import argparse
import json
import os
import pathlib
import signal
import statistics
import subprocess
import sys
import tempfile
import time

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

WATCHER = "org.kde.StatusNotifierWatcher"
SETTLE_SECONDS = 3
IDLE_SECONDS = 10


class Watcher:
    """Starts programs and waits for their status icons."""

    def __init__(self):
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.registered_at = None
        self.bus.signal_subscribe(
            None, WATCHER, "StatusNotifierItemRegistered", None, None,
            Gio.DBusSignalFlags.NONE, self._registered)

    def _registered(self, *_):
        self.registered_at = time.monotonic()

    def start(self, command, environment):
        """Starts the program; returns it and the seconds until its icon was registered."""
        self.registered_at = None
        started_at = time.monotonic()
        process = subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL)
        context = GLib.MainContext.default()
        while self.registered_at is None:
            if process.poll() is not None:
                sys.exit(f"{command[0]} ended with {process.returncode} before it registered an icon.")
            if time.monotonic() - started_at > 20:
                sys.exit(f"{command[0]} registered no icon within 20 seconds.")
            context.iteration(True)
        return process, self.registered_at - started_at


def settings_of_50_items(directory):
    categories = [{
        "name": f"Folder {folder}", "sortOrder": folder,
        "items": [{"title": f"Item {item}", "iconSymbolName": "terminal",
                   "command": {"value": "date +%F"}} for item in range(10)],
    } for folder in range(5)]
    (directory / "settings.json").write_text(json.dumps({"categories": categories}))


def pss_kilobytes(pid):
    for line in pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines():
        if line.startswith("Pss:"):
            return int(line.split()[1])
    sys.exit("The kernel does not report the PSS.")


def wake_ups(pid):
    """The number of voluntary context switches of all threads of the process."""
    total = 0
    for task in pathlib.Path(f"/proc/{pid}/task").iterdir():
        for line in (task / "status").read_text().splitlines():
            if line.startswith("voluntary_ctxt_switches:"):
                total += int(line.split()[1])
    return total


def end(process):
    process.send_signal(signal.SIGTERM)
    process.wait()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("quillmar")
    parser.add_argument("qt_tray")
    parser.add_argument("--starts", type=int, default=15)
    arguments = parser.parse_args()

    watcher = Watcher()
    # Wakes up the wait for the icon, which then notices if the program has ended.
    GLib.timeout_add(100, lambda: True)
    with tempfile.TemporaryDirectory() as directory:
        settings_of_50_items(pathlib.Path(directory))
        environment = dict(os.environ, QUILLMAR_SETTINGS_DIR=directory)

        start_ratios = []
        times = {"quillmar": [], "qt": []}
        for _ in range(arguments.starts):
            ours, our_seconds = watcher.start([arguments.quillmar], environment)
            end(ours)
            theirs, their_seconds = watcher.start([arguments.qt_tray], environment)
            end(theirs)
            times["quillmar"].append(our_seconds)
            times["qt"].append(their_seconds)
            start_ratios.append(our_seconds / their_seconds)

        ours, _ = watcher.start([arguments.quillmar], environment)
        theirs, _ = watcher.start([arguments.qt_tray], environment)
        time.sleep(SETTLE_SECONDS)
        our_pss, their_pss = pss_kilobytes(ours.pid), pss_kilobytes(theirs.pid)
        before = wake_ups(ours.pid)
        time.sleep(IDLE_SECONDS)
        woken = wake_ups(ours.pid) - before
        end(ours)
        end(theirs)

    median = statistics.median
    print(f"idle PSS:                {our_pss} kB / {their_pss} kB = {our_pss / their_pss:.2f}"
          "  (limit 0.37)")
    print(f"exec to registered icon: {median(times['quillmar']) * 1000:.1f} ms / "
          f"{median(times['qt']) * 1000:.1f} ms = {median(start_ratios):.2f}  (limit 0.60)")
    print(f"wake-ups in {IDLE_SECONDS} idle seconds: {woken}  (limit 0)")


if __name__ == "__main__":
    main()
