"""The program whose resources are damaged."""

import json
import unittest

from accessible_windows import BUTTON, IMAGE, LABEL
from installation import Installation
from quillmar_desktop import Screen, entry, tools, wait_until
from windows_test_case import WindowsTestCase


class ResourcesTest(WindowsTestCase):

    def setUp(self):
        super().setUp()
        self.installation = Installation(self.scratch / "prefix").use(self)
        self.starter = self.installation.share / "quillmar/packs/starter.quillmarpack"
        icons = self.installation.share / "icons/hicolor"
        self.application_icon = icons / "scalable/apps/com.tovenworks.quillmar.svg"
        self.status_icon = icons / "symbolic/apps/com.tovenworks.quillmar-statusIcon-symbolic.svg"

    def first_launch_without_commands(self, line):
        """The very first launch, which installs nothing and says why in this line."""
        self.first_launch()
        self.assertIn("run any of the 0 starter commands we just installed",
                      self.window.names(LABEL)[1])
        self.assertIn(line, self.program.output().splitlines())
        self.assertEqual(self.icon.menu()[0].title, "About Quillmar")
        settings = (self.program.folder / "settings.json").read_text(encoding="utf-8")
        self.assertEqual(json.loads(settings)["categories"], [])
        self.window.press("Get Started")
        self.windows.wait_until_gone("Welcome to Quillmar")

    def first_launch(self):
        self.start_with_windows(None)
        self.window = self.windows.wait_for("Welcome to Quillmar")

    def test_without_the_starter_pack_the_welcome_window_tells_of_no_commands(self):
        self.starter.unlink()
        self.first_launch_without_commands(
            "Failed to install the starter pack: The resource “packs/starter.quillmarpack” is "
            "missing.")

    def test_with_a_broken_starter_pack_the_welcome_window_tells_of_no_commands(self):
        self.starter.unlink()
        self.starter.write_text('{"categories": [')
        self.first_launch_without_commands(
            f"Failed to install the starter pack: “{self.starter}” is not a valid document. Line 1, column 17: expected a value, found the "
            "end of the document.")

    def test_with_a_starter_pack_that_is_a_folder_the_welcome_window_tells_of_no_commands(self):
        self.starter.unlink()
        self.starter.mkdir()
        self.first_launch_without_commands(
            "Failed to install the starter pack: The resource “packs/starter.quillmarpack” is "
            "missing.")

    def colours_of_icon(self):
        return len(Screen().colours(self.window.place("", IMAGE)))

    def test_the_applications_icon_is_drawn_in_the_welcome_window(self):
        self.first_launch()
        wait_until(lambda: self.colours_of_icon() > 2, "the icon is drawn")

    def test_without_the_applications_icon_its_place_is_empty_and_the_rest_is_there(self):
        self.application_icon.unlink()
        self.first_launch()
        self.assertEqual(self.window.names(BUTTON),
                         ["Browse Packs…", "Open Settings", "Get Started"])
        wait_until(lambda: len(Screen().colours(self.window.place("Get Started"))) > 2,
                   "the window is drawn")
        wait_until(lambda: self.colours_of_icon() == 1, "there is nothing but the background")
        self.assertIn("The image “applicationIcon” is missing from the resources.",
                      self.program.output().splitlines())

    def test_without_the_status_icon_there_is_a_place_to_click_all_the_same(self):
        self.status_icon.unlink()
        self.start_with_windows(tools(entry("Write", f"touch '{self.scratch}/done'")))
        self.assertIn("The image “statusIcon” is missing from the resources.",
                      self.program.output().splitlines())
        screen = Screen()
        menu = screen.open_menu()
        screen.click(menu.x + 40, menu.y + 16)
        self.wait_for_file("done")

    def test_without_any_resources_it_runs_items_and_asks(self):
        for file in self.installation.share.rglob("*"):
            if file.is_symlink():
                file.unlink()
        window = self.open(self.ask(), "Ask")
        window.type("something")
        window.press("Run")
        self.wait_for_file("value", "something")
        self.icon.choose("About Quillmar")
        self.assertEqual(self.windows.wait_for("About Quillmar").elements(), [])
        self.icon.choose("Quit Quillmar")
        self.assertEqual(self.program.exit_status(), 0)


if __name__ == "__main__":
    unittest.main()
