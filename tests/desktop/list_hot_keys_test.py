"""“quillmar list” beside a running Quillmar that could not register a hot key."""

import json
import os

from quillmar_desktop import DesktopTestCase, entry, sub_command, tools
from Xlib import X, display

SUPER_SHIFT = 0x100000 | 0x20000
KEY_J, KEY_K = 38, 40  # virtual key codes
X_KEY_K = 45


class ListHotKeysTest(DesktopTestCase):

    def setUp(self):
        super().setUp()
        other_program = display.Display()
        self.addCleanup(other_program.close)
        other_program.screen().root.grab_key(X_KEY_K, X.Mod4Mask | X.ShiftMask, False,
                                             X.GrabModeAsync, X.GrabModeAsync)
        other_program.sync()
        self.settings = tools(
            entry("Free", id="1", shortcut={"keyCode": KEY_J, "modifiers": SUPER_SHIFT}),
            entry("Taken", id="2", shortcut={"keyCode": KEY_K, "modifiers": SUPER_SHIFT}),
            entry("Plain", id="3"))

    def listed(self, program, *words):
        return self.listed_from(program.folder, *words)

    def listed_from(self, folder, *words):
        outcome = sub_command(
            "list", *words, environment={**os.environ, "QUILLMAR_SETTINGS_DIR": str(folder)})
        self.assertEqual((outcome.returncode, outcome.stderr), (0, ""))
        return outcome.stdout

    def test_an_item_whose_hot_key_another_program_holds_is_marked(self):
        program = self.start_on_bus(self.settings)
        self.assertEqual(self.listed(program),
                         "Tools\n"
                         "  1  Free\n"
                         "  2  Taken  (hot key not registered: the shortcut is already in use)\n"
                         "  3  Plain\n")
        self.assertEqual([item.get("hotKeyStatus")
                          for item in json.loads(self.listed(program, "--json"))],
                         [None, 10, None])
        self.assertIn("Could not register hotkey for item 2: 10\n", program.output())

    def test_items_of_another_settings_file_are_not_marked(self):
        self.start_on_bus(self.settings)
        (self.scratch / "settings.json").write_text(json.dumps(self.settings), encoding="utf-8")
        self.assertEqual(self.listed_from(self.scratch),
                         "Tools\n  1  Free\n  2  Taken\n  3  Plain\n")

    def test_without_a_running_program_no_item_is_marked(self):
        program = self.start_on_bus(self.settings)
        program.end()
        self.assertEqual(self.listed(program), "Tools\n  1  Free\n  2  Taken\n  3  Plain\n")
