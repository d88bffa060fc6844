// The menu behind the icon, as panels read it from the bus (com.canonical.dbusmenu).
//
// The whole menu is present before a panel asks for it: a panel that finds an empty menu shows its
// own instead. Only properties that differ from the protocol's defaults are sent. Main thread.

#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include <gio/gio.h>

#include "platform/linux/bus/dbus_object.h"
#include "platform/linux/status_item/dbus_menu_tree.h"
#include "platform/linux/status_item/dbus_menu_writer.h"
#include "platform/linux/status_item/key_equivalent_shortcut.h"
#include "platform/menu.h"

namespace quillmar {

class DbusMenu {
 public:
  static constexpr const char* objectPath = "/MenuBar";

  /// Called for a clicked entry, during the panel's call but after the reply has been sent.
  /// `timestamp` is the click's as the panel reports it, 0 for none.
  using ClickHandler = std::function<void(const ActionEntry& entry, std::uint32_t timestamp)>;

  struct Options {
    /// Folder with icon themes that panels search for the entries' icons, besides the system's.
    std::string iconThemePath;
    DbusMenuStyle style;
  };

  /// Exports an empty menu at /MenuBar.
  DbusMenu(GDBusConnection* connection, const Options& options, ClickHandler onClick);

  /// Replaces the menu. Panels are notified, with one LayoutUpdated, only if it differs from the
  /// current one.
  void setMenu(Menu menu);

  /// Makes panels read the menu again after the pictures of its icons have changed.
  void picturesChanged();

 private:
  void answer(const char* method, GVariant* arguments, GDBusMethodInvocation* invocation);
  void getLayout(GVariant* arguments, GDBusMethodInvocation* invocation) const;
  void getGroupProperties(GVariant* arguments, GDBusMethodInvocation* invocation) const;
  void getProperty(GVariant* arguments, GDBusMethodInvocation* invocation) const;
  void event(GVariant* arguments, GDBusMethodInvocation* invocation) const;
  void eventGroup(GVariant* arguments, GDBusMethodInvocation* invocation) const;
  void aboutToShow(GVariant* arguments, GDBusMethodInvocation* invocation) const;
  void aboutToShowGroup(GVariant* arguments, GDBusMethodInvocation* invocation) const;
  GVariant* property(const char* name) const;

  /// An event that a panel reports for an entry.
  struct Event {
    DbusMenuTree::Id id = DbusMenuTree::rootId;
    std::string name;
    std::uint32_t timestamp = 0;
  };

  /// Null unless the event is a click on an enabled action entry.
  const ActionEntry* clickedEntry(const Event& event) const;

  std::string iconThemePath_;
  DbusMenuStyle style_;
  ClickHandler onClick_;
  DbusMenuTree tree_;
  DbusObject object_;
};

}  // namespace quillmar
