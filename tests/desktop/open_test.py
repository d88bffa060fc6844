"""Pack files and links, opened as the user's other programs open them."""

import json
import os
import pathlib
import shlex
import subprocess
import sys
import unittest
import urllib.parse

from accessible_windows import LABEL, AccessibleWindows
from gi.repository import GLib
from quillmar_desktop import DEADLINE_SECONDS, DesktopTestCase, document, run, sub_command, wait_until

HERE = pathlib.Path(__file__).resolve().parent
REGISTER = HERE.parents[1] / "scripts/register"
NAME = "com.tovenworks.quillmar"


class OpenTestCase(DesktopTestCase):

    def setUp(self):
        super().setUp()
        self.build = pathlib.Path(os.environ["QUILLMAR_PROGRAM"]).parent.parent
        run(str(REGISTER), str(self.build))

    def pack(self, name, extension=".quillmarpack"):
        """Writes a pack file."""
        path = self.scratch / (name + extension)
        path.write_text(json.dumps({"name": name, "categories": []}), encoding="utf-8")
        return path

    def call_open(self, *urls):
        self.bus.call(NAME, "/com/tovenworks/quillmar", "org.freedesktop.Application.Open",
                      GLib.Variant("(asa{sv})", (urls, {})))

    def wait_for_review(self, name):
        """Waits until the program on the bus asks whether to add this pack."""
        question = f"Add “{name}” to Quillmar?"

        def is_asked():
            windows = AccessibleWindows(self.bus.process_of(NAME))
            try:
                return any(question in window.names(LABEL) for _, window in windows.all())
            except GLib.Error:  # an earlier review went away meanwhile
                return False
        wait_until(is_asked, f"“{question}” is asked")


class RunningProgramTest(OpenTestCase):

    def test_packs_open_through_gio_xdg_open_and_the_bus(self):
        self.start_on_bus(document())
        for name, *command in (("gio open", "gio", "open"), ("xdg-open", "xdg-open")):
            run(*command, str(self.pack(name)))
            self.wait_for_review(name)
        run("gio", "open", str(self.pack("In capitals", ".QUILLMARPACK")))
        self.wait_for_review("In capitals")
        self.call_open(self.pack("first").as_uri(), self.pack("second, é").as_uri())
        self.wait_for_review("second, é")

    def test_a_second_start_forwards_its_files_and_prints_nothing(self):
        program = self.start_on_bus(document())
        self.pack("first")
        last = self.pack("last")
        outcome = subprocess.run(
            [os.environ["QUILLMAR_PROGRAM"], "first.quillmarpack", last], cwd=self.scratch,
            stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False,
            timeout=DEADLINE_SECONDS)
        self.assertEqual((outcome.returncode, outcome.stdout, outcome.stderr), (0, "", ""))
        self.wait_for_review("last")
        self.assertEqual(self.bus.process_of(NAME), program.process.pid)

    def test_a_url_that_is_not_supported_is_named_and_the_files_are_opened(self):
        self.start_on_bus(document())
        outcome = sub_command(str(self.pack("good")), "sftp://host/x.quillmarpack")
        self.assertEqual((outcome.returncode, outcome.stdout), (2, ""))
        self.assertEqual(outcome.stderr, "Quillmar opens files and links that begin with "
                                         "“quillmar:” (got “sftp://host/x.quillmarpack”).\n")
        self.wait_for_review("good")


class LinkTest(OpenTestCase):

    def setUp(self):
        super().setUp()
        server = subprocess.Popen(
            ["sh", "-c", 'exec "$@" 3>&1', "sh", sys.executable, "-B",
             HERE.parent / "linux/tls_server.py", self.scratch, "valid"], stdout=subprocess.PIPE,
            text=True)
        self.addCleanup(server.stdout.close)
        self.addCleanup(server.wait)
        self.addCleanup(server.kill)
        self.server = f"https://localhost:{server.stdout.readline().split()[0]}"
        self.trust_the_server()

    def trust_the_server(self):
        script = self.scratch / "quillmar"
        command = [sys.executable, "-B", HERE / "trusted_authority.py", self.scratch / "ca.pem",
                   os.environ["QUILLMAR_PROGRAM"]]
        script.write_text("#!/bin/sh\nexec " + shlex.join(map(str, command)) + "\n")
        script.chmod(0o755)
        self.use_program(script)

    def link(self, target):
        return "quillmar://import?url=" + urllib.parse.quote(self.server + target, safe="")

    def test_libcurl_is_loaded_with_the_first_download(self):
        program = self.start_on_bus(document())
        maps = pathlib.Path(f"/proc/{program.process.pid}/maps")
        self.assertNotIn("libcurl", maps.read_text())
        for opener in (("gio", "open"), ("xdg-open",)):
            name = opener[0]
            run(*opener, self.link(f"/pack?{name}"))
            self.wait_for_review(name)
        self.assertIn("libcurl", maps.read_text())
        self.call_open(self.link("/pack?bus"))
        self.wait_for_review("bus")


class FirstStartTest(OpenTestCase):
    """No instance is running yet."""

    def setUp(self):
        super().setUp()
        self.settings = self.scratch / "settings"
        self.settings.mkdir()
        (self.settings / "settings.json").write_text(json.dumps(document()), encoding="utf-8")
        self.variables = {"QUILLMAR_SETTINGS_DIR": str(self.settings)}

    def test_the_program_starts_with_the_file(self):
        # The program keeps its standard output open, so nobody reads it.
        subprocess.run(["gio", "open", self.pack("first")], env={**os.environ, **self.variables},
                       stdout=subprocess.DEVNULL, check=True, timeout=DEADLINE_SECONDS)
        self.wait_for_review("first")

    def test_a_url_that_is_not_supported_is_named_and_the_program_starts_with_the_file(self):
        with subprocess.Popen(
                [os.environ["QUILLMAR_PROGRAM"], "sftp://host/x.quillmarpack", self.pack("good")],
                env={**os.environ, **self.variables}, stdin=subprocess.DEVNULL,
                stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True) as program:
            self.addCleanup(program.kill)
            self.wait_for_review("good")
            program.terminate()
            _, errors = program.communicate(timeout=DEADLINE_SECONDS)
        self.assertIn("(got “sftp://host/x.quillmarpack”).", errors)
        self.assertEqual(program.returncode, 2)

    def test_a_call_on_the_bus_starts_the_program_with_the_file(self):
        self.bus.call("org.freedesktop.DBus", "/org/freedesktop/DBus",
                      "org.freedesktop.DBus.UpdateActivationEnvironment",
                      GLib.Variant("(a{ss})", (self.variables,)))
        self.call_open(self.pack("first").as_uri())
        self.wait_for_review("first")


if __name__ == "__main__":
    unittest.main()
