"""The program as its user meets it on the command line: words in, output and exit status out.

Every test has a home and a settings folder of its own, no display and no session bus.
QUILLMAR_PROGRAM names the executable.
"""

import json
import os
import pathlib
import pty
import subprocess
import tempfile
import unittest

PROGRAM = os.environ["QUILLMAR_PROGRAM"]
DEADLINE_SECONDS = 60


def item(title, command, **keys):
    return {"title": title, "command": {"value": command}, **keys}


class CommandLineTestCase(unittest.TestCase):

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="quillmar-test-")
        self.addCleanup(folder.cleanup)
        self.home = pathlib.Path(folder.name, "home")
        self.settings_folder = pathlib.Path(folder.name, "settings")
        self.settings_file = self.settings_folder / "settings.json"
        self.home.mkdir()
        self.settings_folder.mkdir()
        runtime = pathlib.Path(folder.name, "runtime")
        runtime.mkdir(mode=0o700)
        self.environment = {
            "HOME": str(self.home),
            "LC_ALL": "C.UTF-8",
            "PATH": os.environ["PATH"],
            "QUILLMAR_SETTINGS_DIR": str(self.settings_folder),
            "XDG_RUNTIME_DIR": str(runtime),
            **{name: value for name, value in os.environ.items()
               if name.endswith("SAN_OPTIONS")}}

    def have_items(self, *items):
        self.settings_file.write_text(json.dumps(
            {"categories": [{"id": "F", "name": "Tools", "items": items}],
             "preferences": {"notifyOnFailure": False, "useLoginShell": False}}))

    def quillmar(self, *words, wrapper=(), **keywords):
        options = {"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE,
                   "stderr": subprocess.PIPE, **keywords}
        if "input" in options:
            del options["stdin"]
        return subprocess.run([*wrapper, PROGRAM, *words], env=self.environment, text=True,
                              timeout=DEADLINE_SECONDS, check=False, **options)

    def assert_outcome(self, result, status, output="", error=""):
        self.assertEqual((result.returncode, result.stdout, result.stderr),
                         (status, output, error))

    def on_terminal(self, *words, typed):
        """Runs the program with a terminal as standard input, and types the text."""
        controller, terminal = pty.openpty()
        try:
            # What is typed waits in the terminal until it is read.
            os.write(controller, typed.encode())
            return self.quillmar(*words, stdin=terminal)
        finally:
            os.close(controller)
            os.close(terminal)


class InformationTestCase(CommandLineTestCase):

    def test_the_version_is_told(self):
        result = self.quillmar("--version")
        self.assertRegex(result.stdout, r"\AQuillmar \d+\.\d+\.\d+\n\Z")
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_the_help_is_told_anywhere_among_the_options(self):
        result = self.quillmar("run", "--help")
        self.assertIn("Usage:", result.stdout)
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_the_settings_file_is_named_also_when_there_is_none(self):
        self.assert_outcome(self.quillmar("settings-file"), 0, f"{self.settings_file}\n")

    def test_words_without_sense_are_usage_errors(self):
        self.assert_outcome(self.quillmar("start"), 2, "",
                            "Unknown sub-command “start”. To open a file of this name, write "
                            "“./start”.\nTry “quillmar --help”.\n")
        self.assertEqual(self.quillmar("run", "").returncode, 2)

    def test_a_sub_command_writes_nothing_and_leaves_the_first_launch(self):
        for words in (["list"], ["list", "--json"], ["settings-file"], ["run", "Nothing"]):
            self.quillmar(*words)
        self.assertEqual(list(self.settings_folder.iterdir()), [])
        self.assertEqual(list(self.home.iterdir()), [])

    def test_lost_output_is_a_failure(self):
        with open("/dev/full", "w", encoding="utf-8") as full:
            result = self.quillmar("settings-file", stdout=full)
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr,
                         "Standard output could not be written: No space left on device.\n")

    def test_output_into_a_closed_stream_is_a_failure_and_goes_nowhere_else(self):
        self.have_items(item("Say", "echo hello"))
        before = self.settings_file.read_bytes()
        result = self.quillmar("run", "Say", wrapper=["sh", "-c", 'exec "$@" >&-', "sh"])
        self.assertEqual(result.returncode, 1)
        self.assertRegex(result.stderr, r"\AStandard output could not be written: .*\.\n\Z")
        self.assertEqual(self.settings_file.read_bytes(), before)


class ListTestCase(CommandLineTestCase):

    def test_the_items_are_listed_with_the_ids_of_the_file(self):
        self.have_items(item("Date", "date", id="D1"), item("Say", "echo hello"))
        self.assert_outcome(self.quillmar("list"), 0, "Tools\n  D1  Date\n  -   Say\n")

    def test_json_holds_the_ids_of_the_file(self):
        self.have_items(item("Date", "date", id="D1"), item("Say", "echo hello"))
        result = self.quillmar("list", "--json")
        listed = json.loads(result.stdout)
        self.assertEqual([(one["title"], one.get("id")) for one in listed],
                         [("Date", "D1"), ("Say", None)])
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_broken_settings_are_told_and_not_touched(self):
        self.settings_file.write_text('{"categories": 7}')
        for words in (["list"], ["run", "Say"]):
            result = self.quillmar(*words)
            self.assertEqual((result.returncode, result.stdout), (1, ""))
            self.assertRegex(
                result.stderr, rf"\AFailed to load settings: “{self.settings_file}” is not a valid document\. "
                r"categories .*\n\Z")
        self.assertEqual(self.settings_file.read_text(), '{"categories": 7}')
        self.assertEqual(list(self.settings_folder.iterdir()), [self.settings_file])


class CheckTestCase(CommandLineTestCase):

    def test_a_good_file_is_passed_in_silence(self):
        self.have_items()
        self.assert_outcome(self.quillmar("check", str(self.settings_file)), 0)

    def test_bad_and_missing_files_are_each_told_once(self):
        bad = self.home / "bad.json"
        bad.write_text("[]")
        result = self.quillmar("check", str(bad), "nofile")
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        first, second = result.stderr.splitlines()
        self.assertTrue(first.startswith(f"{bad}: The document "), first)
        self.assertEqual(second, "The file “nofile” could not be read: No such file or directory.")

    def test_a_hyphen_is_standard_input(self):
        self.assert_outcome(self.quillmar("check", "-", input="{}"), 0)
        result = self.quillmar("check", "-", input="[]")
        self.assertEqual(result.returncode, 1)
        self.assertIn("Standard input: The document ", result.stderr)

    def test_a_device_is_refused(self):
        result = self.quillmar("check", "/dev/zero")
        self.assertEqual(result.returncode, 1)
        self.assertIn("It is not a regular file", result.stderr)


class MenuTestCase(CommandLineTestCase):

    def test_without_a_session_bus_there_is_no_menu(self):
        self.assert_outcome(self.quillmar("menu"), 1, "",
                            "There is no session bus, so there is no menu to show.\n")

    def test_further_words_are_usage_errors(self):
        self.assert_outcome(self.quillmar("menu", "now"), 2, "",
                            "“menu” takes no arguments (got “now”).\n"
                            "Try “quillmar --help”.\n")


class RunTestCase(CommandLineTestCase):

    def setUp(self):
        super().setUp()
        self.trace = self.home / "trace"
        self.have_items(
            item("Say", "echo hello"),
            item("Fail", "echo went wrong; false"),
            item("Twice", "true"), item("Twice", "true"),
            item("Ask", "echo one {{input}} >trace\ncat trace", confirmBeforeRunning=True,
                 inputPrompt="Which one?"),
            item("Confirm", "echo one >trace\ncat trace", confirmBeforeRunning=True),
            {"title": "Copy", "command": {"value": "echo copied", "copyToClipboard": True,
                                          "showNotification": True}})

    def test_the_output_is_printed(self):
        self.assert_outcome(self.quillmar("run", "Say"), 0, "hello\n")

    def test_a_failed_command_gives_1(self):
        self.assert_outcome(self.quillmar("run", "Fail"), 1, "went wrong\n")

    def test_unknown_and_ambiguous_items_give_2(self):
        self.assert_outcome(self.quillmar("run", "Nothing"), 2, "",
                            "No item has the id or title “Nothing”. “quillmar list” prints all "
                            "items.\n")
        self.assert_outcome(self.quillmar("run", "Twice"), 2, "",
                            "2 items have the title “Twice” and none of them has an id; give each "
                            "an \"id\" in the settings file.\n")

    def test_without_a_terminal_the_missing_options_are_named_and_nothing_runs(self):
        self.assert_outcome(self.quillmar("run", "Ask", input="y\ntwo\n"), 2, "",
                            "“Ask” asks for a confirmation and a value, and there is no terminal "
                            "to ask on; give the options “--yes” and “--input TEXT”.\n")
        self.assertFalse(self.trace.exists())

    def test_options_answer_the_questions(self):
        self.assert_outcome(self.quillmar("run", "Ask", "--yes", "--input", "two"), 0, "one two\n")

    def test_a_value_that_is_not_asked_for_is_reported_as_ignored(self):
        self.assert_outcome(self.quillmar("run", "Say", "--input", "x"), 0, "hello\n",
                            "“Say” does not ask for a value, so “--input” was ignored.\n")

    def test_questions_are_answered_on_the_terminal(self):
        result = self.on_terminal("run", "Ask", typed="Yes\ntwo\n")
        self.assert_outcome(result, 0, "one two\n",
                            "Run “Ask”?\necho one {{input}} >trace\ncat trace\n"
                            "Type y to run it: Ask\nWhich one?: ")

    def test_declining_on_the_terminal_gives_1_and_runs_nothing(self):
        result = self.on_terminal("run", "Confirm", typed="n\n")
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        self.assertFalse(self.trace.exists())

    def test_the_end_of_typing_declines(self):
        result = self.on_terminal("run", "Ask", "--yes", typed="\x04")
        self.assertEqual((result.returncode, result.stdout), (1, ""))
        self.assertFalse(self.trace.exists())

    def test_without_an_instance_in_the_session_what_is_left_out_is_told(self):
        # The bus may write to standard error, too.
        error_file = self.home / "error"
        result = self.quillmar("run", "Copy", wrapper=[
            "dbus-run-session", "--", "sh", "-c", 'exec "$@" 2>"$0"', error_file])
        self.assertEqual((result.returncode, result.stdout), (0, "copied\n"))
        self.assertEqual(error_file.read_text(),
                         "Quillmar is not running, so the output was not copied to the clipboard "
                         "and no notification was shown.\n")

    def test_without_a_session_bus_what_is_left_out_is_told(self):
        result = self.quillmar("run", "Copy")
        self.assertEqual((result.returncode, result.stdout), (0, "copied\n"))
        self.assertRegex(result.stderr, r"\AThere is no session bus, .*not copied .*\.\n\Z")


if __name__ == "__main__":
    unittest.main()
