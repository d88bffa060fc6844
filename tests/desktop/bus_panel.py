"""A panel that shows icons by way of the session bus and has nothing on the screen. It knows the
icons that register themselves, and nobody else is disturbed by it; a template of dbusmock."""

import dbus

BUS_NAME = "org.kde.StatusNotifierWatcher"
MAIN_OBJ = "/StatusNotifierWatcher"
MAIN_IFACE = BUS_NAME
SYSTEM_BUS = False

REGISTER = f"""\
items = self.Get("{MAIN_IFACE}", "RegisteredStatusNotifierItems")
self.UpdateProperties("{MAIN_IFACE}", dict(
    RegisteredStatusNotifierItems=dbus.Array([*items, args[0]], signature="s")))
"""


def load(mock, _parameters):
    mock.AddProperties(MAIN_IFACE, {
        "IsStatusNotifierHostRegistered": True,
        "RegisteredStatusNotifierItems": dbus.Array([], signature="s"),
    })
    mock.AddMethod(MAIN_IFACE, "RegisterStatusNotifierItem", "s", "", REGISTER)
