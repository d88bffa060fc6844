// The menu behind the icon, as panels read it from the bus (com.canonical.dbusmenu).
//
// It is filled eagerly: a panel that finds an empty menu shows one of its own instead. Only
// properties that differ from the protocol's defaults are sent. Main thread.

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

  /// Called for a clicked entry, inside the panel's call but after its answer has been sent off.
  /// `timestamp` is the click's as the panel gives it, 0 for none.
  using ClickHandler = std::function<void(const ActionEntry& entry, std::uint32_t timestamp)>;

  struct Options {
    /// A folder with icon themes that panels look for the entries' icons in, besides the system's.
    std::string iconThemePath;
    DbusMenuStyle style;
  };

  /// An empty menu at /MenuBar.
  DbusMenu(GDBusConnection* connection, const Options& options, ClickHandler onClick);

  /// Shows the menu. Panels are told of it, with one LayoutUpdated, only if it differs from the
  /// current one.
  void setMenu(Menu menu);

  /// Has panels read the menu again, whose icons have other pictures now.
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

  /// What a panel reports about an entry.
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
