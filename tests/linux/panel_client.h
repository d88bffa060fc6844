// A panel in C++: collects status items as org.kde.StatusNotifierWatcher does, and reads the one
// that it is told of, with its menu.

#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gio/gio.h>

#include "platform/linux/bus/dbus_object.h"
#include "platform/linux/bus/glib_pointers.h"
#include "tests/linux/bus_client.h"
#include "tests/linux/private_bus.h"

namespace quillmar {

/// Owns the watcher's name while it lives.
class FakeWatcher {
 public:
  /// One that is silent answers no calls, as one that is stopped.
  FakeWatcher(const PrivateBus& bus, bool hasHost, bool isSilent = false);
  ~FakeWatcher();

  /// The names that were registered, in order, repetitions included.
  const std::vector<std::string>& registrations() const { return registrations_; }

  /// Says that it has a host from now on.
  void announceHost();

 private:
  GObjectPtr<GDBusConnection> connection_;
  bool hasHost_;
  std::vector<std::string> registrations_;
  std::unique_ptr<DbusObject> object_;
};

/// An entry as the menu protocol gives it. Properties are in GVariant's text form.
struct PanelEntry {
  std::int32_t id = 0;
  std::map<std::string, std::string> properties;
  std::vector<PanelEntry> children;
};

/// Reads the item and the menu of another connection.
class PanelClient {
 public:
  PanelClient(const PrivateBus& bus, GDBusConnection* program);
  ~PanelClient();
  PanelClient(const PanelClient&) = delete;
  PanelClient& operator=(const PanelClient&) = delete;

  GVariantPtr itemProperty(const char* name);
  /// In GVariant's text form; empty after an error.
  std::string itemPropertyText(const char* name);
  std::string menuPropertyText(const char* name);

  BusReply callItem(const char* method, GVariant* arguments);
  BusReply callMenu(const char* method, GVariant* arguments);

  /// The whole menu.
  PanelEntry layout();
  BusReply event(std::int32_t id, const char* name, std::uint32_t timestamp = 0);
  /// Announces the click that comes next.
  BusReply provideActivationToken(const std::string& token);

  /// The revisions that LayoutUpdated has announced, in order.
  const std::vector<std::uint32_t>& layoutUpdates() const { return layoutUpdates_; }
  int newIconCount() const { return newIconCount_; }

  /// Returns when every signal that the program has sent so far is counted.
  void settleSignals();

 private:
  static void signalArrived(GDBusConnection*, const char*, const char*, const char*,
                            const char* signal, GVariant* parameters, gpointer self);

  GObjectPtr<GDBusConnection> connection_;
  BusAddress item_;
  BusAddress menu_;
  guint subscription_;
  std::vector<std::uint32_t> layoutUpdates_;
  int newIconCount_ = 0;
};

/// The `(ia{sv}av)` of the menu protocol.
PanelEntry panelEntry(GVariant* layout);

/// GVariant's text form, without type annotations.
std::string printed(GVariant* value);

}  // namespace quillmar
