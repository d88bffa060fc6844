#!/usr/bin/python3
"""Presses a hot key of a background command many times and counts what happens.

Usage: scripts/virtual-desktop bench/hot_key_load.py QUILLMAR [--seconds N] [--rate N]

Prints how many commands ran, the program's PSS, descriptors and threads before, during and after the
load, and the slowest answer of the menu meanwhile. Fails if a press ran no command or more than one,
or if something is left behind.
"""

import argparse
import os
import pathlib
import statistics
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests" / "desktop"))

from keyboard import Combination, Keyboard, is_free  # noqa: E402
from quillmar_desktop import Bus, Program, StatusIcon, entry, tools, wait_until  # noqa: E402

F5 = Combination(71, 96)
MENU_EVERY_SECONDS = 0.1
SAMPLE_EVERY_SECONDS = 5
# More than the allocator has arenas. Commands that run at the same time use all of them.
WARM_UP_PRESSES = 100
MEMORY_LIMIT_KILOBYTES = 1024


class Usage:
    """What a process holds now."""

    def __init__(self, pid):
        folder = pathlib.Path(f"/proc/{pid}")
        fields = dict(line.split(":", 1) for line in
                      (folder / "smaps_rollup").read_text().splitlines()[1:])
        self.memory = int(fields["Pss"].split()[0])
        self.descriptors = len(os.listdir(folder / "fd"))
        self.threads = len(os.listdir(folder / "task"))

    def __str__(self):
        return f"{self.memory} KB PSS, {self.descriptors} descriptors, {self.threads} threads"


class Load:

    def __init__(self, folder):
        self.runs_file = folder / "runs"
        self.runs_file.touch()
        self.go_file = folder / "go"
        self.program = Program(tools(entry(
            "Count", f"echo >>'{self.runs_file}'; until [ -e '{self.go_file}' ]; do sleep 0.1; done",
            shortcut=F5.shortcut())))
        self.icon = StatusIcon(Bus(), self.program)
        self.keyboard = Keyboard()
        self.presses = 0
        self.answers = []
        wait_until(lambda: not is_free(F5), "the hot key is registered")
        self.idle_threads = self.usage().threads

    def usage(self):
        return Usage(self.program.process.pid)

    def press(self):
        self.keyboard.type(F5)
        self.presses += 1

    def runs(self):
        return self.runs_file.stat().st_size

    def wait_for_runs(self):
        wait_until(lambda: self.runs() >= self.presses, f"{self.presses} commands have run")

    def warm_up(self):
        """Runs commands that wait for each other."""
        for _ in range(WARM_UP_PRESSES):
            self.press()
        self.wait_for_runs()
        self.go_file.touch()
        self.wait_for_threads(self.idle_threads)

    def wait_for_threads(self, count):
        wait_until(lambda: self.usage().threads <= count, f"there are {count} threads")

    def open_menu(self):
        began = time.monotonic()
        self.icon.menu()
        self.answers.append(time.monotonic() - began)

    def run(self, seconds, rate):
        began = time.monotonic()
        next_menu = next_sample = began
        for number in range(seconds * rate):
            time.sleep(max(0, began + number / rate - time.monotonic()))
            self.press()
            if time.monotonic() >= next_menu:
                self.open_menu()
                next_menu += MENU_EVERY_SECONDS
            if time.monotonic() >= next_sample:
                print(f"  {time.monotonic() - began:4.0f} s: {self.usage()}, "
                      f"{self.presses - self.runs()} commands behind")
                next_sample += SAMPLE_EVERY_SECONDS
        print(f"{seconds * rate} presses in {time.monotonic() - began:.1f} s")


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program")
    parser.add_argument("--seconds", type=int, default=30)
    parser.add_argument("--rate", type=int, default=200, help="presses in a second")
    options = parser.parse_args()
    os.environ["QUILLMAR_PROGRAM"] = str(pathlib.Path(options.program).resolve())
    with tempfile.TemporaryDirectory() as folder:
        load = Load(pathlib.Path(folder))
        try:
            load.warm_up()
            before = load.usage()
            print(f"before: {before}")
            load.run(options.seconds, options.rate)
            load.wait_for_runs()
            load.wait_for_threads(before.threads)
            after = load.usage()
            print(f"after:  {after}")
            print(f"{load.presses} presses, {load.runs()} commands")
            print(f"{len(load.answers)} answers of the menu, median "
                  f"{1000 * statistics.median(load.answers):.1f} ms, slowest "
                  f"{1000 * max(load.answers):.1f} ms")
            kept = (after.memory - before.memory <= MEMORY_LIMIT_KILOBYTES
                    and after.descriptors <= before.descriptors)
            return 0 if load.runs() == load.presses and kept else 1
        finally:
            load.program.end()


if __name__ == "__main__":
    sys.exit(main())
