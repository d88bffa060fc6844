"""The program as a packager installs it: in a folder of its own, apart from the tree that it was built
in."""

import json
import os
import pathlib
import unittest

from accessible_windows import BUTTON, LABEL, AccessibleWindows
from quillmar_desktop import DesktopTestCase, StatusIcon, run, sub_command


class InstallationTest(DesktopTestCase):

    def setUp(self):
        super().setUp()
        built = pathlib.Path(os.environ["QUILLMAR_PROGRAM"]).parent.parent
        self.prefix = self.scratch / "prefix"
        run("cmake", "--install", str(built), "--prefix", str(self.prefix))
        self.use_program(self.prefix / "bin/quillmar")

    def first_launch(self):
        """Starts the program without settings and answers its icon and its windows."""
        program = self.start()
        return program, StatusIcon(self.bus, program), AccessibleWindows(program.process.pid)

    def files_of(self, process_id):
        """The program's own files that the process has loaded."""
        lines = pathlib.Path(f"/proc/{process_id}/maps").read_text(encoding="utf-8").splitlines()
        mapped = {pathlib.Path(line.split(maxsplit=5)[5]) for line in lines if "/" in line}
        return {path for path in mapped if "quillmar" in path.name}

    def icon_names(self, node):
        """Of the entries below a node of the menu."""
        _, properties, children = node
        own = {properties["icon-name"]} if "icon-name" in properties else set()
        return own.union(*map(self.icon_names, children))

    def test_the_first_launch_greets_with_the_starter_pack_and_an_icon(self):
        program, icon, windows = self.first_launch()
        window = windows.wait_for("Welcome to Quillmar")
        self.assertEqual(window.names(BUTTON), ["Browse Packs…", "Open Settings", "Get Started"])
        settings = json.loads((program.folder / "settings.json").read_text(encoding="utf-8"))
        self.assertGreaterEqual(sum(not item.get("isSeparator") for category in settings["categories"]
                                    for item in category["items"]), 12)
        self.assertIn("Copy", [shown.title for shown in icon.menu()])

    def test_its_icons_are_those_of_the_installation(self):
        _, icon, _ = self.first_launch()
        properties = icon.properties()
        icons = self.prefix / "share/icons"
        self.assertEqual(pathlib.Path(properties["IconThemePath"]), icons)
        self.assertEqual(len(list(icons.rglob(properties["IconName"] + ".svg"))), 1)
        self.assertTrue(properties["IconPixmap"])
        names = self.icon_names(icon.nodes())
        self.assertGreater(len(names), 5)
        self.assertEqual({name for name in names if not list(icons.rglob(name + ".svg"))}, set())

    def test_it_loads_nothing_from_the_build_folder(self):
        program, _, windows = self.first_launch()
        windows.wait_for("Welcome to Quillmar")
        files = self.files_of(program.process.pid)
        self.assertEqual({path.name for path in files},
                         {"quillmar", "libquillmar_core.so", "quillmar_qt.so"})
        self.assertEqual({path for path in files if not path.is_relative_to(self.prefix)}, set())

    def test_the_command_line_and_the_about_window_tell_one_version(self):
        version = sub_command("--version")
        self.assertEqual((version.returncode, version.stderr), (0, ""))
        number = version.stdout.split()[1]
        _, icon, windows = self.first_launch()
        icon.choose("About Quillmar")
        window = windows.wait_for("About Quillmar")
        self.assertEqual(window.names(LABEL)[:2], ["Quillmar", f"Version {number}"])

    def test_each_of_its_packs_can_be_read(self):
        packs = sorted((self.prefix / "share/quillmar/packs").glob("*.quillmarpack"))
        self.assertIn("starter", [pack.stem for pack in packs])
        for pack in packs:
            outcome = sub_command("check", str(pack))
            self.assertEqual(outcome.returncode, 0, outcome.stdout + outcome.stderr)

    def test_desktops_find_what_describes_it(self):
        share = self.prefix / "share"
        name = "com.tovenworks.quillmar"
        run("desktop-file-validate", str(share / f"applications/{name}.desktop"))
        run("appstreamcli", "validate", "--no-net", str(share / f"metainfo/{name}.metainfo.xml"))
        icons = share / "icons/hicolor/scalable"
        self.assertTrue((icons / f"apps/{name}.svg").is_file())
        self.assertTrue((icons / f"mimetypes/{name}-pack.svg").is_file())

    def test_desktops_know_the_links_and_files_that_it_opens(self):
        share = self.prefix / "share"
        variables = {**os.environ, "XDG_DATA_DIRS": f"{share}:/usr/share",
                     "PATH": f"{self.prefix}/bin:{os.environ['PATH']}"}
        for kind in ("x-scheme-handler/quillmar", "application/vnd.tovenworks.quillmar.pack+json"):
            default = run("xdg-mime", "query", "default", kind, env=variables)
            self.assertEqual(default.strip(), "com.tovenworks.quillmar.desktop")
            # Unlike xdg-mime, GLib ignores an entry whose TryExec is not a program.
            default = run("gio", "mime", kind, env=variables).splitlines()[0]
            self.assertEqual(default.split()[-1], "com.tovenworks.quillmar.desktop")
        pack = share / "quillmar/packs/starter.quillmarpack"
        info = run("gio", "info", "-a", "standard::content-type", str(pack), env=variables)
        self.assertEqual(info.split()[-1], "application/vnd.tovenworks.quillmar.pack+json")
        service = (share / "dbus-1/services/com.tovenworks.quillmar.service").read_text()
        self.assertEqual(service.splitlines()[-1], f'Exec="{self.prefix}/bin/quillmar"')


if __name__ == "__main__":
    unittest.main()
