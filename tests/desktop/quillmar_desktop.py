"""What a test on the desktop needs: the running program, its status icon as the panel's bus sees it,
the notifications, the clipboard and the screen.

The tests run inside scripts/virtual-desktop, one desktop for each. QUILLMAR_PROGRAM names the
executable. Nothing sleeps for a fixed time: wait_until() runs the main loop until a condition holds,
and fails after a deadline that only a broken program reaches.
"""

import collections
import contextlib
import json
import os
import pathlib
import shlex
import subprocess
import tempfile
import time
import unittest
import unittest.mock

import dbus
from dbus.lowlevel import MESSAGE_TYPE_METHOD_RETURN as METHOD_RETURN
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import Gio, GLib

DEADLINE_SECONDS = 60

WATCHER = "org.kde.StatusNotifierWatcher"
ITEM_INTERFACE = "org.kde.StatusNotifierItem"
MENU_INTERFACE = "com.canonical.dbusmenu"


def wait_until(condition, what):
    """Runs the main loop until condition() is true, and answers what it gave."""
    context = GLib.MainContext.default()
    tick = GLib.timeout_add(10, lambda: True)
    deadline = time.monotonic() + DEADLINE_SECONDS
    try:
        while not (result := condition()):
            if time.monotonic() > deadline:
                raise AssertionError(f"Not so after {DEADLINE_SECONDS} seconds: {what}")
            context.iteration(True)
        return result
    finally:
        GLib.source_remove(tick)


def run(*command, **keywords):
    """Runs another program and answers its standard output."""
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True,
                          timeout=DEADLINE_SECONDS, **keywords).stdout


class Bus:
    """The session bus, as a client of its own."""

    def __init__(self):
        self.connection = Gio.DBusConnection.new_for_address_sync(
            os.environ["DBUS_SESSION_BUS_ADDRESS"],
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION, None, None)

    def call(self, name, path, method, arguments=None):
        """Calls "interface.Method" and answers the reply's values."""
        interface, member = method.rsplit(".", 1)
        return self.connection.call_sync(name, path, interface, member, arguments, None,
                                         Gio.DBusCallFlags.NONE, DEADLINE_SECONDS * 1000,
                                         None).unpack()

    def daemon(self, member, *names):
        signature = f"({'s' * len(names)})"
        return self.call("org.freedesktop.DBus", "/org/freedesktop/DBus",
                         f"org.freedesktop.DBus.{member}", GLib.Variant(signature, names))[0]

    def properties(self, name, path, interface):
        return self.call(name, path, "org.freedesktop.DBus.Properties.GetAll",
                         GLib.Variant("(s)", (interface,)))[0]

    def property(self, name, path, interface, member):
        return self.call(name, path, "org.freedesktop.DBus.Properties.Get",
                         GLib.Variant("(ss)", (interface, member)))[0]

    def registered_items(self):
        """The status icons that the panel knows, as (bus name, path); none without a panel."""
        if not self.daemon("NameHasOwner", WATCHER):
            return []
        try:
            registered = self.property(WATCHER, "/StatusNotifierWatcher", WATCHER,
                                       "RegisteredStatusNotifierItems")
        except GLib.Error:  # the panel went away in between
            return []
        items = []
        for item in registered:
            name, slash, path = item.partition("/")
            items.append((name, slash + path if slash else "/StatusNotifierItem"))
        return items

    def process_of(self, name):
        """The process id behind a bus name; 0 when nobody has it."""
        try:
            return self.daemon("GetConnectionUnixProcessID", name)
        except GLib.Error:
            return 0


def sub_command(*words, environment=None):
    """Runs "quillmar WORD..." in a process of its own and answers how that went."""
    return subprocess.run([os.environ["QUILLMAR_PROGRAM"], *words], env=environment,
                          stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False,
                          timeout=DEADLINE_SECONDS)


class Program:
    """Quillmar, started on a settings document of the test's own. Its output goes to a log file, its
    standard output to `stdout` if that is given."""

    def __init__(self, document=None, environment=None, settings_directory=None,
                 stdin=subprocess.DEVNULL, stdout=None):
        self.folder = pathlib.Path(settings_directory or tempfile.mkdtemp(prefix="settings-"))
        if document is not None:
            (self.folder / "settings.json").write_text(json.dumps(document), encoding="utf-8")
        self.log = self.folder / "output.log"
        with open(self.log, "ab") as output:
            self.process = subprocess.Popen(
                [os.environ["QUILLMAR_PROGRAM"]], env=self.variables(environment),
                stdin=stdin, stdout=output if stdout is None else stdout, stderr=output)

    def variables(self, changes):
        return {**os.environ, "QUILLMAR_SETTINGS_DIR": str(self.folder), **(changes or {})}

    def run_item(self, name, environment=None, options=()):
        """Runs an item in a process of its own, "quillmar run", and answers how that went."""
        return sub_command("run", *options, "--", name, environment=self.variables(environment))

    def output(self):
        """All that the program has written, on standard output and error alike."""
        return self.log.read_text(encoding="utf-8")

    def is_running(self):
        return self.process.poll() is None

    def send(self, number):
        self.process.send_signal(number)

    def exit_status(self):
        """Waits for the end of the program."""
        wait_until(lambda: not self.is_running(), f"the program has ended\n{self.output()}")
        return self.process.returncode

    def end(self):
        if self.is_running():
            self.process.kill()
            self.process.wait()


class Entry(collections.namedtuple("Entry", "title shortcut has_icon entries")):
    """One entry of a menu as the user sees it. A shortcut is "Alt+Super+d", modifiers in
    alphabetical order, or empty; `entries` is a submenu's tuple, else None."""

    __slots__ = ()


SEPARATOR = Entry("---", "", False, None)


def item(title, shortcut="", icon=False):
    return Entry(title, shortcut, icon, None)


def folder(title, *entries, icon=False):
    return Entry(title, "", icon, entries)


def shown_text(label):
    """What a panel shows for a label: "__" is an underscore, "_" alone marks a mnemonic."""
    return "_".join(part.replace("_", "") for part in label.split("__"))


def shortcut_text(keys):
    return "+".join(sorted(keys[:-1]) + keys[-1:])


class StatusIcon:
    """The program's icon and its menu, reached as a panel reaches them."""

    def __init__(self, bus, program):
        self.bus = bus
        self.program = program
        self.name, self.path = wait_until(self.find, "the icon is registered at the panel")
        self.menu_path = bus.property(self.name, self.path, ITEM_INTERFACE, "Menu")

    def find(self):
        if not self.program.is_running():
            raise AssertionError(f"The program has ended.\n{self.program.output()}")
        for name, path in self.bus.registered_items():
            if self.bus.process_of(name) == self.program.process.pid:
                return name, path
        return None

    def of_next_start(self):
        """The icon of the program once it has started again in its process."""
        wait_until(lambda: (self.find() or (self.name,))[0] != self.name,
                   "the icon of a new start is in the panel")
        return StatusIcon(self.bus, self.program)

    def properties(self):
        return self.bus.properties(self.name, self.path, ITEM_INTERFACE)

    def nodes(self):
        """The menu's root node as (id, properties, children)."""
        _, root = self.bus.call(self.name, self.menu_path, f"{MENU_INTERFACE}.GetLayout",
                                GLib.Variant("(iias)", (0, -1, [])))
        return root

    def menu(self):
        """The whole menu as a tuple of entries."""
        return tuple(self.entry(node) for node in self.nodes()[2])

    def entry(self, node):
        _, properties, children = node
        if properties.get("type") == "separator":
            return SEPARATOR
        shortcuts = properties.get("shortcut", [])
        is_submenu = properties.get("children-display") == "submenu"
        return Entry(
            shown_text(properties.get("label", "")),
            shortcut_text(shortcuts[0]) if shortcuts else "",
            bool(properties.get("icon-name") or properties.get("icon-data")),
            tuple(self.entry(child) for child in children) if is_submenu else None)

    def choose(self, *titles):
        """Clicks the entry at the end of the titles' path: choose("Tools", "Say hello")."""
        node = self.nodes()
        for title in titles:
            matching = [child for child in node[2]
                        if shown_text(child[1].get("label", "")) == title]
            if len(matching) != 1:
                raise AssertionError(f"{len(matching)} entries are titled “{title}”.")
            node = matching[0]
        self.bus.call(self.name, self.menu_path, f"{MENU_INTERFACE}.Event",
                      GLib.Variant("(isvu)", (node[0], "clicked", GLib.Variant("s", ""), 0)))


Notification = collections.namedtuple("Notification", "application summary body hints accepted")


class Notifications:
    """Overhears what is sent to the notification service and whether the service took it."""

    RULES = ["type='method_call',interface='org.freedesktop.Notifications',member='Notify'",
             "type='method_return',sender='org.freedesktop.Notifications'"]

    def __init__(self):
        self.calls = {}  # by the sender and the serial of the call
        self.taken = set()
        bus = dbus.SessionBus(private=True, mainloop=DBusGMainLoop())
        bus.call_blocking("org.freedesktop.DBus", "/org/freedesktop/DBus",
                          "org.freedesktop.DBus.Monitoring", "BecomeMonitor", "asu",
                          (self.RULES, 0))
        bus.add_message_filter(self.overhear)
        self.bus = bus

    def overhear(self, _connection, message):
        if message.get_member() == "Notify":
            self.calls[message.get_sender(), message.get_serial()] = message.get_args_list()
        elif message.get_type() == METHOD_RETURN:
            self.taken.add((message.get_destination(), message.get_reply_serial()))

    def all(self):
        return [Notification(call[0], call[3], call[4], call[6], key in self.taken)
                for key, call in list(self.calls.items())]

    def wait_for(self, summary):
        """The first notification with this summary, once the service has taken it."""
        def find():
            return next((notification for notification in self.all()
                         if notification.summary == summary and notification.accepted), None)
        return wait_until(find, f"a notification “{summary}” is shown; sent: {self.all()}")


def clipboard_text():
    """The clipboard's text as another program reads it; None when there is none."""
    reader = subprocess.run(["xclip", "-selection", "clipboard", "-out"], capture_output=True,
                            check=False, timeout=DEADLINE_SECONDS)
    return reader.stdout.decode() if reader.returncode == 0 else None


class Screen:
    """The screen with the panel's windows, and the hand on the mouse."""

    Window = collections.namedtuple("Window", "id x y width height")

    def panel_windows(self):
        """The visible windows of the panel's tray: its strip of icons, and each open menu."""
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--class", "^wrapper-2.0$"],
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
                               check=False, timeout=DEADLINE_SECONDS).stdout.split()
        windows = []
        for identifier in found:
            with contextlib.suppress(subprocess.CalledProcessError):  # closed in between
                text = run("xdotool", "getwindowgeometry", "--shell", identifier)
                values = dict(line.split("=") for line in text.split())
                windows.append(self.Window(values["WINDOW"], int(values["X"]), int(values["Y"]),
                                           int(values["WIDTH"]), int(values["HEIGHT"])))
        return windows

    def tray(self):
        """The strip of icons, once there is an icon in it. It lies in the panel, at the top."""
        def find():
            return next((window for window in self.panel_windows()
                         if window.y < 10 and window.width > 16), None)
        return wait_until(find, "the panel shows an icon")

    def menus(self):
        """The open menus; they hang below the panel."""
        return [window for window in self.panel_windows() if window.y >= 10]

    def open_menu(self):
        """Clicks the icon and answers the window of the menu that opens. A panel that is still
        placing the icon lets a click fall, so it is clicked again, as anybody would."""
        patience_ends = 0

        def opened():
            nonlocal patience_ends
            menus = self.menus()
            if not menus and time.monotonic() > patience_ends:
                tray = self.tray()
                self.click(tray.x + tray.width // 2, tray.y + tray.height // 2)
                patience_ends = time.monotonic() + 5
            return menus
        return wait_until(opened, "a menu has opened")[0]

    def click(self, x, y):
        run("xdotool", "mousemove", str(x), str(y), "click", "1")

    def press(self, *keys):
        run("xdotool", "key", *keys)

    def picture(self, window):
        """The pixels inside the window's frame as they are on the screen now."""
        geometry = f"{window.width}x{window.height}+{window.x}+{window.y}"
        return subprocess.run(["import", "-silent", "-window", "root", "-crop", geometry, "rgb:-"],
                              stdout=subprocess.PIPE, check=True, timeout=DEADLINE_SECONDS).stdout

    def colours(self, window):
        """How often each colour is there inside the window's frame, by its three bytes."""
        pixels = self.picture(window)
        return collections.Counter(pixels[at:at + 3] for at in range(0, len(pixels), 3))


class Panel:
    """A panel that the test starts and kills itself (for desktops started with --no-panel)."""

    def __init__(self):
        self.process = subprocess.Popen(
            shlex.split(os.environ["QUILLMAR_DESKTOP_PANEL"]), stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def kill(self):
        self.process.kill()
        self.process.wait()


def command(value, **keywords):
    """A document's command; the other keys keep their defaults."""
    return {"value": value, **keywords}


def entry(title, value="true", **keywords):
    """A document's item, with the flags of its command among the keywords."""
    flags = {"type", "runInBackground", "showNotification", "copyToClipboard", "openInTerminal"}
    of_command = {key: keywords.pop(key) for key in flags & keywords.keys()}
    return {"title": title, "command": command(value, **of_command), **keywords}


def document(*categories, **preferences):
    """A settings document. Commands run without a login shell unless a test asks for one."""
    return {"version": 2, "categories": list(categories),
            "preferences": {"useLoginShell": False, **preferences}}


def tools(*items):
    """A document with one folder, whose items stand at the top of the menu."""
    return document({"name": "Tools", "showAtTopLevel": True, "items": list(items)})


class DesktopTestCase(unittest.TestCase):
    """A test with a bus and a scratch folder. What it starts is ended with it."""

    maxDiff = None  # a menu is shown whole

    def setUp(self):
        self.bus = Bus()
        scratch = tempfile.TemporaryDirectory(prefix="test-")
        self.addCleanup(scratch.cleanup)
        self.scratch = pathlib.Path(scratch.name)

    def use_program(self, program):
        """Another executable for this test."""
        patch = unittest.mock.patch.dict(os.environ, QUILLMAR_PROGRAM=str(program))
        patch.start()
        self.addCleanup(patch.stop)

    def use_ordinary_rights(self):
        """From now on, permissions of files apply to the program even if root runs the test."""
        if os.geteuid() != 0:
            return
        script = self.scratch / "quillmar"
        program = shlex.quote(os.environ["QUILLMAR_PROGRAM"])
        script.write_text("#!/bin/sh\n"
                          f"exec setpriv --bounding-set=-all --inh-caps=-all {program}\n")
        script.chmod(0o755)
        self.use_program(script)

    def start(self, settings=None, **keywords):
        program = Program(settings, **keywords)
        self.addCleanup(program.end)
        return program

    def start_on_bus(self, settings):
        """Starts the program and waits until others can reach it."""
        program = self.start(settings)
        wait_until(lambda: self.bus.process_of("com.tovenworks.quillmar") == program.process.pid,
                   "the program is on the bus")
        return program

    def start_with_icon(self, settings, **keywords):
        """Starts the program and waits for its icon."""
        program = self.start(settings, **keywords)
        return program, StatusIcon(self.bus, program)

    def wait_for_file(self, name, text=None):
        """Waits until a file of the scratch folder exists, with this text if one is given."""
        path = self.scratch / name
        wait_until(lambda: path.exists() and (text is None or path.read_text() == text),
                   f"{name} exists" + (f" and holds “{text}”" if text else ""))
