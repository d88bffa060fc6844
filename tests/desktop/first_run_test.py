"""What scripts/run gives a new user: the program from an empty build folder, and its name and icons
on the desktop. QUILLMAR_BUILD_FOLDER names the folder that "scripts/run --build" filled."""

import json
import os
import pathlib
import shutil
import unittest

from accessible_windows import LABEL
from quillmar_desktop import run
from windows_test_case import WindowsTestCase

REPOSITORY = pathlib.Path(__file__).resolve().parents[2]
REGISTER = REPOSITORY / "scripts/register"
ENTRY = "applications/com.tovenworks.quillmar.desktop"


def files_in(folder):
    return {str(path.relative_to(folder)) for path in folder.rglob("*") if path.is_file()}


class FirstRunTest(WindowsTestCase):

    def setUp(self):
        super().setUp()
        self.use_program(REPOSITORY / "scripts/run")
        self.data = pathlib.Path(os.environ["XDG_DATA_HOME"])

    def test_the_first_launch_offers_twenty_commands_whose_icons_the_desktop_finds(self):
        self.start_with_windows(None)
        labels = self.windows.wait_for("Welcome to Quillmar").names(LABEL)
        self.assertIn("run any of the 20 starter commands", labels[1])
        settings = json.loads((self.program.folder / "settings.json").read_text(encoding="utf-8"))
        self.assertEqual(sum(not item.get("isSeparator") for category in settings["categories"]
                             for item in category["items"]), 20)
        registered = {path.stem for path in (self.data / "icons/hicolor").rglob("*.svg")}
        self.assertIn(self.icon.properties()["IconName"], registered)
        names = self.icon_names(self.icon.nodes())
        self.assertGreater(len(names), 5)
        self.assertEqual(names - registered, set())

    def icon_names(self, node):
        _, properties, children = node
        own = {properties["icon-name"]} if "icon-name" in properties else set()
        return own.union(*map(self.icon_names, children))


class RegisterTest(WindowsTestCase):

    def setUp(self):
        super().setUp()
        self.data = self.scratch / "data"
        self.data.mkdir()
        self.build = pathlib.Path(os.environ["QUILLMAR_PROGRAM"]).parent.parent

    def register(self, *arguments):
        run(str(REGISTER), *arguments, env={**os.environ, "XDG_DATA_HOME": str(self.data)})

    def launch(self):
        """Starts the registered entry as a desktop does."""
        run("gio", "launch", str(self.data / ENTRY))

    def test_the_entry_is_valid_and_starts_the_program_of_a_folder_with_an_odd_name(self):
        build = self.scratch / "a \"b\" $c `d` \\e"
        (build / "bin").mkdir(parents=True)
        program = build / "bin/quillmar"
        program.write_text(f"#!/bin/sh\nprintf '%s,' \"$@\" >'{self.scratch}/started'\n")
        program.chmod(0o755)
        shutil.copytree(self.build / "share/icons", build / "share/icons")
        self.register(str(build))
        run("desktop-file-validate", str(self.data / ENTRY))
        self.launch()
        self.wait_for_file("started")

    def test_the_desktop_knows_links_and_pack_files_while_it_is_registered(self):
        pack = self.scratch / "A Pack.QuillmarPack"
        pack.write_text("{}")
        variables = {**os.environ, "XDG_DATA_HOME": str(self.data)}

        def types():
            """What opens links, and what the file is for two readers of the types."""
            link = run("gio", "mime", "x-scheme-handler/quillmar", env=variables)
            info = run("gio", "info", "-a", "standard::content-type", str(pack), env=variables)
            return (pathlib.Path(ENTRY).name in link, info.split()[-1],
                    run("xdg-mime", "query", "filetype", str(pack), env=variables).strip())

        self.register(str(self.build))
        pack_type = "application/vnd.tovenworks.quillmar.pack+json"
        self.assertEqual(types(), (True, pack_type, pack_type))
        opener = run("xdg-mime", "query", "default", pack_type, env=variables)
        self.assertEqual(opener.strip(), pathlib.Path(ENTRY).name)
        self.register("--remove")
        self.assertEqual(types()[0], False)
        self.assertNotIn(pack_type, types())

    def test_remove_leaves_no_folder(self):
        self.register(str(self.build))
        self.register("--remove")
        self.assertEqual(list(self.data.iterdir()), [])

    def test_remove_leaves_nothing_and_touches_no_other_file(self):
        others = {"applications/other.desktop", "icons/hicolor/scalable/apps/other.svg"}
        for other in others:
            (self.data / other).parent.mkdir(parents=True, exist_ok=True)
            (self.data / other).touch()
        self.register(str(self.build))
        self.assertGreater(len(files_in(self.data)), 100)
        self.register("--remove")
        self.assertEqual(files_in(self.data), others)

    def test_registering_again_drops_icons_that_are_gone(self):
        self.register(str(self.build))
        stale = self.data / "icons/hicolor/scalable/actions/quillmar-gone-symbolic.svg"
        stale.touch()
        self.register(str(self.build))
        self.assertFalse(stale.exists())

    def test_an_installation_is_left_alone(self):
        run("cmake", "--install", str(self.build), "--prefix", str(self.scratch / "prefix"))
        self.data = self.scratch / "prefix/share"
        entry = self.data / ENTRY
        before = files_in(self.data), entry.read_bytes()
        self.register("--remove")
        self.register(str(self.build))
        self.assertEqual((files_in(self.data), entry.read_bytes()), before)


if __name__ == "__main__":
    unittest.main()
