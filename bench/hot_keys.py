#!/usr/bin/python3
"""Measures what 50 hot keys cost the idle program, on the virtual desktop.

Usage: scripts/virtual-desktop bench/hot_keys.py QUILLMAR [--rounds N]

Prints the PSS that 50 hot keys add, as the median of several rounds, and how often the program woke
up with them in ten idle seconds.
"""

import argparse
import json
import os
import pathlib
import statistics
import tempfile
import time

from gi.repository import GLib

from programs import IDLE_SECONDS, SETTLE_SECONDS, Watcher, end, pss_kilobytes, wake_ups

SUPER_CONTROL_ALT = 0x100000 | 0x40000 | 0x80000
# Virtual key codes of keys that every keyboard has.
KEY_CODES = [code for code in range(51) if code != 10]
ADDED_PSS_LIMIT = 512


def write_settings(directory, are_global):
    """50 items that have shortcuts in either case, so that their menus are the same."""
    items = [{"title": f"Item {code}", "command": {"value": "true"},
              "shortcut": {"keyCode": code, "character": "x", "modifiers": SUPER_CONTROL_ALT,
                           "isGlobal": are_global}}
             for code in KEY_CODES]
    (directory / "settings.json").write_text(json.dumps({"categories": [{"items": items}]}))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("quillmar")
    parser.add_argument("--rounds", type=int, default=5)
    arguments = parser.parse_args()

    watcher = Watcher()
    # Wakes up the wait for the icon, which then notices if the program has ended.
    GLib.timeout_add(100, lambda: True)
    pss = {False: [], True: []}
    woken = 0
    with tempfile.TemporaryDirectory() as directory:
        environment = dict(os.environ, QUILLMAR_SETTINGS_DIR=directory)
        for _ in range(arguments.rounds):
            for with_hot_keys in (False, True):
                write_settings(pathlib.Path(directory), with_hot_keys)
                program, _ = watcher.start([arguments.quillmar], environment)
                time.sleep(SETTLE_SECONDS)
                pss[with_hot_keys].append(pss_kilobytes(program.pid))
                if with_hot_keys and len(pss[True]) == arguments.rounds:
                    before = wake_ups(program.pid)
                    time.sleep(IDLE_SECONDS)
                    woken = wake_ups(program.pid) - before
                end(program)

    without, with_hot_keys = statistics.median(pss[False]), statistics.median(pss[True])
    print(f"idle PSS of {len(KEY_CODES)} hot keys:   {with_hot_keys} kB - {without} kB = "
          f"{with_hot_keys - without} kB  (limit {ADDED_PSS_LIMIT} kB)")
    print(f"wake-ups in {IDLE_SECONDS} idle seconds: {woken}  (limit 0)")


if __name__ == "__main__":
    main()
