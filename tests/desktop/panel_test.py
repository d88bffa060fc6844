"""A panel that comes late or goes and comes back. Runs on a desktop without a panel."""

import unittest

from quillmar_desktop import (DesktopTestCase, Panel, Screen, StatusIcon, document, entry, item,
                              tools, wait_until)


class PanelTest(DesktopTestCase):

    def start_panel(self):
        panel = Panel()
        self.addCleanup(panel.kill)
        return panel

    def test_started_before_the_panel_the_program_gets_its_icon(self):
        program = self.start_on_bus(tools(entry("First")))
        self.start_panel()
        icon = StatusIcon(self.bus, program)
        self.assertEqual(icon.menu()[0], item("First"))
        Screen().tray()

    def test_a_panel_that_was_killed_and_starts_again_shows_the_icon_again(self):
        panel = self.start_panel()
        program, icon = self.start_with_icon(tools(
            entry("Write", f"printf again > {self.scratch}/result")))
        panel.kill()
        wait_until(lambda: not self.bus.registered_items(), "the panel is gone")
        self.start_panel()
        icon = StatusIcon(self.bus, program)
        Screen().tray()
        icon.choose("Write")
        self.wait_for_file("result", "again")

    def test_without_any_panel_the_program_keeps_running_until_it_is_ended(self):
        program = self.start_on_bus(document())
        program.send(15)
        self.assertEqual(program.exit_status(), 0)


if __name__ == "__main__":
    unittest.main()
