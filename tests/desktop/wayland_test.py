"""The program in a Wayland session: a compositor without a screen, real key presses."""

import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest
import unittest.mock

from quillmar_desktop import (DEADLINE_SECONDS, DesktopTestCase, entry, run, sub_command, tools,
                              wait_until)

NOBODY = 65534
APPLICATION = "com.tovenworks.quillmar"


class Compositor:
    """A compositor whose windows float, with a keyboard."""

    def __init__(self):
        # Not below a folder that is the user's alone.
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="wayland-", dir="/tmp"))
        self.folder.chmod(0o700)
        (self.folder / "config").write_text(
            "xwayland disable\n"
            f'for_window [app_id="{APPLICATION}"] floating enable\n'
            f"exec sh -c 'echo $WAYLAND_DISPLAY $SWAYSOCK > {self.folder}/ready'\n",
            encoding="utf-8")
        command = ["sway", "--config", str(self.folder / "config")]
        if os.geteuid() == 0:  # as which it refuses to run
            os.chown(self.folder, NOBODY, NOBODY)
            command = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups",
                       *command]
        environment = {**os.environ, "XDG_RUNTIME_DIR": str(self.folder),
                       "WLR_BACKENDS": "headless", "WLR_RENDERER": "pixman",
                       "WLR_LIBINPUT_NO_DEVICES": "1"}
        self.process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        ready = self.folder / "ready"
        display, socket = wait_until(lambda: ready.exists() and ready.read_text().split(),
                                     "the compositor is ready")
        self.variables = {"XDG_RUNTIME_DIR": str(self.folder), "WAYLAND_DISPLAY": display,
                          "SWAYSOCK": socket, "XDG_SESSION_TYPE": "wayland"}
        # A keyboard that stays: when the last one goes, windows lose the focus.
        self.keyboard = subprocess.Popen(["wtype", "-s", str(DEADLINE_SECONDS * 60_000)],
                                         env={**os.environ, **self.variables})

    def end(self):
        for process in (self.keyboard, self.process):
            process.kill()
            process.wait()
        shutil.rmtree(self.folder)

    def press(self, *keys):
        run("wtype", *(word for key in keys for word in ("-k", key)))

    def write(self, text):
        run("wtype", text)

    def windows(self):
        """The program's windows."""
        found, nodes = [], [json.loads(run("swaymsg", "--raw", "-t", "get_tree"))]
        while nodes:
            node = nodes.pop()
            nodes += node["nodes"] + node["floating_nodes"]
            if node.get("app_id") == APPLICATION:
                found.append(node)
        return found

    def wait_for_focus(self, condition=lambda window: True):
        """The program's only window, once it has the focus."""
        def focused():
            windows = self.windows()
            if len(windows) == 1 and windows[0]["focused"] and condition(windows[0]):
                return windows[0]
            return None
        return wait_until(focused, "one window of the program has the focus")

    def wait_for_no_window(self):
        wait_until(lambda: not self.windows(), "the program shows no window")


class WaylandTestCase(DesktopTestCase):

    def setUp(self):
        super().setUp()
        self.compositor = Compositor()
        self.addCleanup(self.compositor.end)
        patch = unittest.mock.patch.dict(os.environ, self.compositor.variables)
        patch.start()
        self.addCleanup(patch.stop)
        del os.environ["DISPLAY"]


class WaylandTest(WaylandTestCase):

    def start_and_open_menu(self, *items):
        program = self.start_on_bus(tools(*items))
        outcome = sub_command("menu")
        self.assertEqual((outcome.returncode, outcome.stderr), (0, ""))
        self.compositor.wait_for_focus()
        return program

    def writing(self, title, text, **keywords):
        return entry(title, f"printf %s {text} > {self.scratch}/result", **keywords)

    def test_the_menu_opens_in_a_small_window_and_runs_an_item(self):
        self.start_and_open_menu(self.writing("One", "1"), self.writing("Two", "2"))
        size = self.compositor.windows()[0]["rect"]
        self.assertLess(size["width"], 400)
        self.assertLess(size["height"], 400)
        self.compositor.press("Down", "Down", "Return")
        self.wait_for_file("result", "2")
        self.compositor.wait_for_no_window()

    def test_a_menu_longer_than_the_screen_scrolls_in_its_window(self):
        self.start_and_open_menu(*[entry(f"Item {number}") for number in range(150)],
                                 self.writing("Last", "1"))
        self.assertLess(self.compositor.windows()[0]["rect"]["height"], 720)
        # Past "Quit Quillmar", "Settings…" and "About Quillmar".
        self.compositor.press("Up", "Up", "Up", "Up", "Return")
        self.wait_for_file("result", "1")
        self.compositor.wait_for_no_window()

    def test_escape_closes_the_menu_and_runs_nothing(self):
        program = self.start_and_open_menu(
            entry("One", f"touch {self.scratch}/wrong"), self.writing("Two", "2"))
        self.compositor.press("Down", "Escape")
        self.compositor.wait_for_no_window()
        # Run after whatever the keys had brought about.
        self.assertEqual(program.run_item("Two").returncode, 0)
        self.wait_for_file("result", "2")
        self.assertFalse((self.scratch / "wrong").exists())

    def test_what_is_typed_into_a_question_reaches_the_command(self):
        self.start_and_open_menu(self.writing("Ask", "{{input}}", inputPrompt="What?"))
        menu = self.compositor.windows()[0]["id"]
        self.compositor.press("Down", "Return")
        self.compositor.wait_for_focus(lambda window: window["id"] != menu)
        self.compositor.write("grüße")
        self.compositor.press("Return")
        self.wait_for_file("result", "grüße")
        self.compositor.wait_for_no_window()


if __name__ == "__main__":
    unittest.main()
