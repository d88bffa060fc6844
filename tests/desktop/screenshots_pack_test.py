"""The pack for pictures of the screen, with each of the tools that an X11 desktop may have."""

import os
import re
import subprocess
import threading
import unittest

from pack_test_case import PackTestCase
from quillmar_desktop import DEADLINE_SECONDS, run, wait_until


class ScreenshotsPackTest(PackTestCase):

    def setUp(self):
        super().setUp()
        self.have_browser()
        # A tool that finds its pictures folder nowhere puts the folder into the home.
        self.environment["XDG_CURRENT_DESKTOP"] = "XFCE"
        self.folder = self.home / "Screenshots"
        self.have_pack("screenshots")

    def roads(self):
        """The desktop's own tool, and the two general ones."""
        return {"xfce4-screenshooter": {}, "scrot": {"XDG_CURRENT_DESKTOP": ""},
                "import": {"XDG_CURRENT_DESKTOP": "", **self.path_without("scrot")}}

    def take(self, title, environment=None):
        """Runs the item and answers the size of the one picture that it took."""
        output = self.succeed(title, None, environment)
        pictures = list(self.folder.iterdir())
        self.assertEqual([f"Saved as {picture}" for picture in pictures], [output])
        self.assertRegex(pictures[0].name, r"^Screenshot \d{4}(-\d\d){2} \d\d(-\d\d){2}\.png$")
        size = run("identify", "-format", "%m %wx%h", str(pictures[0]))
        pictures[0].unlink()
        return size

    def open_window(self):
        """A window with the focus, 400 by 300 pixels within its frame."""
        window = subprocess.Popen(["xmessage", "-geometry", "400x300+200+200", "A window"])
        self.addCleanup(window.wait)
        self.addCleanup(window.kill)
        wait_until(lambda: self.active_window() == "xmessage\n", "the window has the focus")

    def active_window(self):
        return subprocess.run(["xdotool", "getactivewindow", "getwindowname"],
                              capture_output=True, text=True, check=False).stdout

    def take_area(self, environment):
        """Runs the item, drags over 120 by 80 pixels until it ends, and answers whether it went
        well."""
        outcomes = []
        program = threading.Thread(target=lambda: outcomes.append(
            self.run_title("Picture of an area", None, environment)))
        program.start()
        program.join(0.5)
        while program.is_alive():
            for step in ("mousemove 100 300", "mousedown 1", "mousemove 160 340",
                         "mousemove 220 380", "mouseup 1"):
                run("xdotool", *step.split())
            program.join(0.5)
        return outcomes[0].returncode == 0

    def test_every_item_does_what_its_title_says(self):
        for title in ("Copy the newest screenshot", "Open the newest screenshot"):
            self.fails(title, "There is no screenshot yet.")
        for tool, road in self.roads().items():
            with self.subTest(tool):
                self.assertEqual(self.take("Picture of the screen", road), "PNG 1280x800")
        self.assertEqual(self.take("Picture in five seconds"), "PNG 1280x800")
        self.takes_windows()
        self.takes_areas()
        self.keeps_the_newest_at_hand()
        self.assert_all_were_tried()

    def takes_windows(self):
        self.open_window()
        for tool, road in self.roads().items():
            with self.subTest(tool):
                size = re.fullmatch(r"PNG (\d+)x(\d+)", self.take("Picture of the window", road))
                self.assertIn(int(size[1]), range(400, 431))
                self.assertIn(int(size[2]), range(300, 351))

    def takes_areas(self):
        for tool in ("xfce4-screenshooter", "scrot"):
            with self.subTest(tool):
                # A drag that a tool meets halfway on its start is none to it: asked again.
                wait_until(lambda: self.take_area(self.roads()[tool]), "an area was taken")
                (picture,) = self.folder.iterdir()
                size = run("identify", "-format", "%w %h", str(picture)).split()
                self.assertIn(int(size[0]), range(118, 123))
                self.assertIn(int(size[1]), range(78, 83))
                picture.unlink()

    def keeps_the_newest_at_hand(self):
        self.succeed("Picture of the screen")
        (newest,) = self.folder.iterdir()
        older = self.folder / "Screenshot 1999.png"
        older.write_bytes(b"older")
        os.utime(older, (0, 0))
        self.assertEqual(self.succeed("Copy the newest screenshot"), f"Copied {newest.name}")
        copied = subprocess.run(
            ["xclip", "-selection", "clipboard", "-target", "image/png", "-out"],
            stdout=subprocess.PIPE, check=True, timeout=DEADLINE_SECONDS).stdout
        self.assertEqual(copied, newest.read_bytes())
        self.succeed("Open the newest screenshot")
        self.assertEqual(self.opened(), str(newest))
        self.succeed("Open the screenshots")
        self.assertEqual(self.opened(), str(self.folder))

    def test_without_a_tool_every_picture_says_what_is_missing(self):
        bare = {"XDG_CURRENT_DESKTOP": "", **self.path_without("scrot", "import", "xclip")}
        general = "scrot or ImageMagick on X11."
        own = "This needs the screenshot tool of the desktop, or "
        for title, sentence in {
                "Picture of the screen": f"{own}grim on Wayland, or {general}",
                "Picture in five seconds": f"{own}grim on Wayland, or {general}",
                "Picture of the window": own + general,
                "Picture of an area": f"{own}grim and slurp on Wayland, or scrot on X11.",
        }.items():
            self.fails(title, sentence, environment=bare)
        self.folder.mkdir(exist_ok=True)
        (self.folder / "one.png").write_bytes(b"")
        self.fails("Copy the newest screenshot",
                   "This needs wl-clipboard on Wayland and xclip on X11.", environment=bare)

    def test_a_cancelled_screenshot_is_reported_and_no_other_tool_is_tried(self):
        self.tool("scrot", "exit 1")
        self.fails("Picture of an area", "No picture was taken.",
                   environment={"XDG_CURRENT_DESKTOP": ""})


if __name__ == "__main__":
    unittest.main()
