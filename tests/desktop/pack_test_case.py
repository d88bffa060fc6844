"""What a test needs to run the items of a pack that ships with the application."""

import contextlib
import html
import json
import os
import pathlib

from quillmar_desktop import DesktopTestCase, Notifications, clipboard_text, wait_until

PACKS = pathlib.Path(os.environ["QUILLMAR_PROGRAM"]).parent.parent / "share/quillmar/packs"

# What a typed text may hold without meaning anything to the shell.
AWKWARD = """It's "5 * 2", $HOME `id` \\n & Grüße"""


class PackTestCase(DesktopTestCase):
    """The program runs on a settings file that holds the pack, in a home folder of the test."""

    def setUp(self):
        super().setUp()
        self.home = self.scratch / "home"
        self.tools = self.scratch / "tools"
        self.home.mkdir()
        self.tools.mkdir()
        self.environment = {
            "HOME": str(self.home),
            "LC_ALL": "C.UTF-8",
            "LANG": "de_DE.UTF-8",
            "PATH": f"{self.tools}:{os.environ['PATH']}",
            "XDG_CACHE_HOME": "",
            "XDG_CONFIG_HOME": "",
        }

    def have_pack(self, name):
        settings = json.loads((PACKS / f"{name}.quillmarpack").read_text(encoding="utf-8"))
        # The shell of a login would replace the path of the test's tools.
        settings["preferences"]["useLoginShell"] = False
        self.items = {item["title"]: item for folder in settings["categories"]
                      for item in folder["items"] if not item["isSeparator"]}
        self.tried = set()
        self.notifications = Notifications()
        self.program = self.start(settings, environment=self.environment)
        wait_until(lambda: self.bus.process_of("com.tovenworks.quillmar")
                   == self.program.process.pid, "the program is on the bus")

    def tool(self, name, script):
        """A program of the test that stands before all others of that name."""
        path = self.tools / name
        path.write_text(f"#!/bin/sh\n{script}\n")
        path.chmod(0o755)

    def have_browser(self):
        """What is opened is written to a file instead."""
        self.tool("xdg-open", f"printf %s \"$1\" >{self.scratch}/opened")

    def opened(self):
        path = self.scratch / "opened"
        address = path.read_text()
        path.unlink()
        return address

    def path_without(self, *hidden):
        """A PATH with all programs but these."""
        folder = self.scratch / ("without " + " ".join(hidden))
        if not folder.exists():
            folder.mkdir()
            for place in self.environment["PATH"].split(":"):
                for program in pathlib.Path(place).glob("*"):
                    if program.name not in hidden:
                        with contextlib.suppress(FileExistsError):
                            (folder / program.name).symlink_to(program)
        return {"PATH": str(folder)}

    def run_title(self, title, text=None, environment=None):
        item = self.items[title]
        self.tried.add(title)
        self.assertEqual("inputPrompt" in item, text is not None, title)
        options = ["--yes"] if item["confirmBeforeRunning"] else []
        if text is not None:
            options += ["--input", text]
        return self.program.run_item(item["id"], {**self.environment, **(environment or {})},
                                     options)

    def succeed(self, title, text=None, environment=None):
        """Runs the item, sees its output arrive where it promises, and answers the output."""
        command = self.items[title]["command"]
        shown = len(self.shown(title))
        outcome = self.run_title(title, text, environment)
        self.assertEqual((outcome.returncode, outcome.stderr), (0, ""), f"{title}: {outcome}")
        output = outcome.stdout.removesuffix("\n")
        if command["copyToClipboard"]:
            wait_until(lambda: clipboard_text() == output, f"{title}: “{output}” is copied")
        if command["showNotification"]:
            wait_until(lambda: len(self.shown(title)) > shown, f"{title}: a notification is shown")
            self.assertEqual(self.shown(title)[-1],
                             output[-400:] or "Command completed successfully")
        else:
            self.assertEqual(self.shown(title), [])
        return output

    def shown(self, title):
        return [html.unescape(notification.body) for notification in self.notifications.all()
                if notification.summary == title and notification.accepted]

    def fails(self, title, sentence, text=None, environment=None):
        """Runs the item and sees it end with this one sentence."""
        outcome = self.run_title(title, text, environment)
        self.assertEqual((outcome.returncode, outcome.stdout), (1, sentence + "\n"), title)

    def matches(self, title, pattern, **keywords):
        self.assertRegex(self.succeed(title, **keywords), f"^(?:{pattern})$", title)

    def assert_all_were_tried(self):
        self.assertEqual(self.tried, set(self.items))
