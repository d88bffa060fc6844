"""Items that open in a terminal window."""

import os
import pathlib
import shlex
import signal
import stat
import subprocess
import unittest

from quillmar_desktop import (DEADLINE_SECONDS, DesktopTestCase, Notifications, entry, run, tools,
                              wait_until)

XTERM = "^XTerm$"
XFCE = "^Xfce4-terminal$"


def windows(window_class):
    """The ids of the visible windows of this class."""
    return subprocess.run(["xdotool", "search", "--onlyvisible", "--class", window_class],
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
                          check=False, timeout=DEADLINE_SECONDS).stdout.split()


def script_path(name):
    return pathlib.Path(os.environ["TMPDIR"], "Quillmar", name)


class TerminalTest(DesktopTestCase):

    def note(self, text="\"$PWD\""):
        """A command that writes the text and its terminal's device into the file "noted"."""
        return f"printf '%s %s' {text} \"$(tty)\" >{shlex.quote(str(self.scratch / 'noted'))}"

    def open_in_terminal(self, terminal, item, title):
        program, icon = self.start_with_icon(tools(item), environment={"TERMINAL": terminal})
        icon.choose(title)
        return program

    def noted(self):
        """What the command has written, once it has."""
        path = self.scratch / "noted"
        return wait_until(lambda: path.exists() and path.read_text(encoding="utf-8"),
                          "the command has run")

    def close_with_enter(self, window_class):
        """Enter closes the window once its command has ended."""
        window, = wait_until(lambda: windows(window_class), "the terminal is open")
        run("xdotool", "windowfocus", "--sync", window)

        def closed():
            # A key that is pressed before the command has ended is dropped.
            run("xdotool", "key", "Return")
            return not windows(window_class)
        wait_until(closed, "the window is closed")

    def test_a_command_runs_in_the_home_directory_in_a_window_that_stays_open(self):
        self.open_in_terminal("xterm", entry("Place", self.note(), openInTerminal=True),
                              "Place")
        place, terminal = self.noted().split()
        self.assertEqual(place, os.environ["HOME"])
        self.assertTrue(terminal.startswith("/dev/pts/"), terminal)
        self.close_with_enter(XTERM)

    def test_xfce4_terminal_runs_commands_too(self):
        self.open_in_terminal("xfce4-terminal",
                              entry("Place", self.note(), openInTerminal=True), "Place")
        self.assertTrue(self.noted().startswith(os.environ["HOME"] + " /dev/pts/"))
        self.close_with_enter(XFCE)

    def test_the_file_is_private_and_executable(self):
        self.open_in_terminal("xterm", entry("Place", self.note(), openInTerminal=True),
                              "Place")
        self.noted()
        path = script_path("place.command")
        self.assertEqual(stat.S_IMODE(path.stat().st_mode), 0o755)
        self.assertEqual(stat.S_IMODE(path.parent.stat().st_mode), 0o700)
        self.assertEqual(path.read_text().splitlines()[1], "# Quillmar: Place")

    def test_titles_and_paths_with_blanks_quotes_and_other_letters_work(self):
        script = self.scratch / "Größe it's \"2\".sh"
        script.write_text(self.note("\"$0\""), encoding="utf-8")
        title = "Größe 'der' \"Datei\" 構築"
        for terminal in ("xterm", "xfce4-terminal"):
            with self.subTest(terminal=terminal):
                program = self.open_in_terminal(
                    terminal,
                    entry(title, str(script), type="Script File", openInTerminal=True), title)
                self.assertTrue(self.noted().startswith(f"{script} /dev/pts/"))
                self.assertTrue(script_path("gr-e-der-datei.command").exists())
                (self.scratch / "noted").unlink()
                program.end()

    def test_an_input_with_a_quote_reaches_the_command_as_typed(self):
        program = self.start_on_bus(tools(
            entry("Say", self.note("\"{{input}}\""), openInTerminal=True)))
        program.run_item("Say", options=["--input", "it's 5 o'clock"],
                         environment={"TERMINAL": "xterm"})
        self.assertTrue(self.noted().startswith("it's 5 o'clock /dev/pts/"))

    def test_the_window_outlives_the_program(self):
        program = self.open_in_terminal(
            "xterm", entry("Place", self.note(), openInTerminal=True), "Place")
        self.noted()
        program.send(signal.SIGTERM)
        program.exit_status()
        self.close_with_enter(XTERM)

    def test_without_a_terminal_a_notification_says_what_to_do(self):
        notifications = Notifications()
        _, icon = self.start_with_icon(
            tools(entry("Place", self.note(), openInTerminal=True)),
            environment={"PATH": str(self.scratch)})
        icon.choose("Place")
        self.assertEqual(
            notifications.wait_for("Place failed").body,
            "No terminal is installed. Install a terminal, such as xterm, or set TERMINAL to the "
            "command that starts yours.")


if __name__ == "__main__":
    unittest.main()
