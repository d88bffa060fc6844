"""The packs that ship with the application: every item of each is run, on a desktop with the tools
that it asks for and once without them, and does what its title says."""

import re
import subprocess
import unittest

from pack_test_case import AWKWARD, PackTestCase
from quillmar_desktop import run, wait_until


class StarterPackTest(PackTestCase):

    def setUp(self):
        super().setUp()
        self.have_browser()
        self.have_pack("starter")

    def test_every_item_does_what_its_title_says(self):
        self.copies()
        self.tells_about_the_computer()
        self.looks_up()
        self.calculates()
        self.minds_the_home_folder()
        self.assert_all_were_tried()

    def copies(self):
        today = run("date", "+%F").strip()
        self.assertIn(self.succeed("Copy today's date"), (today, run("date", "+%F").strip()))
        self.matches("Copy date and time", r"\d{4}-\d\d-\d\d \d\d:\d\d")
        self.matches("Copy a time stamp for file names", r"\d{4}-\d\d-\d\d_\d\d-\d\d-\d\d")
        uuid = "[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}"
        self.matches("Copy a new UUID", uuid)
        passwords = {self.succeed("Copy a new password") for _ in range(3)}
        self.assertEqual(len(passwords), 3)
        for password in passwords:
            self.assertRegex(password, "^[A-HJ-NP-Za-km-z2-9]{20}$")

    def tells_about_the_computer(self):
        self.matches("Disk space", r"[\d.]+[kMGT]?B free of [\d.]+[kMGT]?B \(\d+% used\)")
        self.matches("Memory", r"[\d.]+[KMGT]iB available of [\d.]+[KMGT]iB")
        self.matches("What uses the memory?", r"(\d+ MB \S.*\n?){5}")
        self.matches("Time since the start", r"up .*")
        system = self.succeed("About this system")
        self.assertIn(run("uname", "-r").strip(), system)
        self.assertRegex(system, r"^\S.*, Linux \S+, \S+$")
        addresses = self.succeed("My network addresses")
        self.assertRegex(addresses, r"^([0-9a-f.:]+ \(\S+\)\n?)+$")
        for address in addresses.splitlines():
            self.assertIn(address.split()[0] + "/", run("ip", "address"))
        self.fails("My network addresses", "This needs the program ip; it comes with the package "
                  "iproute2.", environment=self.path_without("ip"))
        self.tool("ip", "true")
        self.fails("My network addresses", "This computer has no network address now.")
        self.tool("busy program", "while :; do :; done")
        with subprocess.Popen([str(self.tools / "busy program")]) as busy:
            try:
                # On a machine that has other things to do it may take a while to get that far.
                wait_until(lambda: re.search(r"(?m)^[\d.]+% busy",
                                             self.succeed("What uses the processor?")),
                           "the busy program is among those that use the processor most")
            finally:
                busy.kill()

    def looks_up(self):
        encoded = "".join(f"%{byte:02x}" for byte in AWKWARD.encode())
        self.succeed("Search Wikipedia…", AWKWARD)
        self.assertEqual(self.opened(),
                         f"https://de.wikipedia.org/w/index.php?search={encoded}")
        self.succeed("Search Wikipedia…", "a", {"LANG": "C.UTF-8"})
        self.assertEqual(self.opened(), "https://en.wikipedia.org/w/index.php?search=%61")
        self.succeed("Find a place on the map…", AWKWARD)
        self.assertEqual(self.opened(), f"https://www.openstreetmap.org/search?query={encoded}")
        self.assertIn(self.succeed("Find the addresses of a host…", "localhost").split()[0],
                      ("127.0.0.1", "::1"))
        self.fails("Find the addresses of a host…", "No addresses were found for “no host”.",
                  "no host")
        self.assertEqual(self.succeed("Count words and letters…", AWKWARD),
                         f"9 words, {len(AWKWARD)} characters")

    def calculates(self):
        for calculation, result in {"3 * (1.5 + 2)": "10.5", "2^10": "1024", "-5+3": "-2",
                                    "10 % 4": "2", "1/3": "0.333333333333"}.items():
            self.assertEqual(self.succeed("Calculate…", calculation), result)
        for wrong in ("", "1 000 + 5", "2(3)", "(1)(2)", "1.2.3", "/2/", "1/0", "(1",
                      "system(1)", "1; id", AWKWARD):
            self.fails("Calculate…", "This has no result. Use numbers such as 1.5, the signs "
                      "+ - * / % ^ and brackets.", wrong)

    def minds_the_home_folder(self):
        self.tool("xdg-user-dir", f"echo '{self.home}/My downloads'")
        self.succeed("Open the downloads")
        self.assertEqual(self.opened(), f"{self.home}/My downloads")
        self.succeed("Open the downloads", environment=self.path_without("xdg-user-dir"))
        self.assertEqual(self.opened(), str(self.home))

        folder = self.home / "Much in here"
        folder.mkdir()
        (folder / "file").write_bytes(b"x" * 300_000)
        largest = self.succeed("Largest folders").splitlines()
        self.assertRegex(largest[0] + largest[1], r"\d+K (Much in here|in all)")
        self.assertEqual({line.partition(" ")[2] for line in largest}, {"Much in here", "in all"})

        self.assertEqual(self.succeed("Empty the thumbnail cache"),
                         "The thumbnail cache is empty already.")
        thumbnails = self.home / ".cache/thumbnails"
        (thumbnails / "large").mkdir(parents=True)
        (thumbnails / "large/picture.png").write_bytes(b"x" * 3000)
        other = self.home / ".cache/other"
        other.write_text("kept")
        self.matches("Empty the thumbnail cache", r"[\d.]+KB freed\.")
        self.assertFalse(thumbnails.exists())
        self.assertTrue(other.exists())
        self.assertTrue(self.items["Empty the thumbnail cache"]["confirmBeforeRunning"])


class ClipboardPackTest(PackTestCase):

    # What was copied, and what each item makes of it.
    TEXT = "don't say “Grüße”\n  twice,  twice\ndon't say “Grüße”"
    RESULTS = {
        "Make it plain text": TEXT,
        "Join its lines": "don't say “Grüße” twice, twice don't say “Grüße”",
        "Quote its lines": "> don't say “Grüße”\n>   twice,  twice\n> don't say “Grüße”",
        "Change it to CAPITALS": "DON'T SAY “GRÜßE”\n  TWICE,  TWICE\nDON'T SAY “GRÜßE”",
        "Change it to small letters": "don't say “grüße”\n  twice,  twice\ndon't say “grüße”",
        "Change It To Title Case": "Don't Say “Grüße”\n  Twice,  Twice\nDon't Say “Grüße”",
        "Sort its lines": "twice,  twice\ndon't say “Grüße”\ndon't say “Grüße”",
        "Drop lines that repeat": "don't say “Grüße”\n  twice,  twice",
        "Count its words and lines": "3 lines, 8 words, 51 characters",
    }

    def setUp(self):
        super().setUp()
        self.have_browser()
        self.have_pack("clipboard")

    def copy(self, text):
        subprocess.run(["xclip", "-selection", "clipboard", "-in"], input=text.encode(),
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)

    def test_every_item_does_what_its_title_says(self):
        for title in self.items:
            if title != "Open its link":
                self.fails(title, "There is no text on the clipboard.")
        for road in ({}, self.path_without("xclip")):
            for title, result in self.RESULTS.items():
                with self.subTest(title, road=road):
                    self.copy(self.TEXT)
                    self.assertEqual(self.succeed(title, environment=road), result)
        self.opens_a_link()
        self.assert_all_were_tried()

    def opens_a_link(self):
        self.copy("https://example.org/a?b=1&c='d'")
        self.succeed("Open its link")
        self.assertEqual(self.opened(), "https://example.org/a?b=1&c='d'")
        for text in ("ftp://example.org", "https://", "https://example.org and more", "plain"):
            self.copy(text)
            self.fails("Open its link", "There is no web address on the clipboard.")

    def test_a_text_that_the_program_copied_itself_can_be_changed(self):
        self.copy("by another")
        self.assertEqual(self.succeed("Change it to CAPITALS"), "BY ANOTHER")
        self.assertEqual(self.succeed("Quote its lines"), "> BY ANOTHER")

    def test_without_a_tool_every_item_says_which_one_is_missing(self):
        for title in self.items:
            self.fails(title, "This needs wl-clipboard on Wayland, and xclip or xsel on X11.",
                      environment=self.path_without("xclip", "xsel"))


if __name__ == "__main__":
    unittest.main()
