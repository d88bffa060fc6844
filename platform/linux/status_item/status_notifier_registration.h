// Keeps this program's status icon registered with the StatusNotifierWatcher on the session bus.
//
// Panels start and stop, and some own the watcher's name before they can show anything. So the item
// is registered with every new owner of the name, and again when that owner first reports a host.
// Nothing here blocks. Main thread.

#pragma once

#include <functional>
#include <string>

#include <gio/gio.h>

#include "platform/linux/bus/glib_pointers.h"
#include "platform/linux/status_item/status_notifier_host.h"

namespace quillmar {

class StatusNotifierRegistration {
 public:
  /// Called after host() changes.
  using HostHandler = std::function<void(StatusNotifierHost host)>;

  /// Registers the connection's unique name, which must already export an object
  /// /StatusNotifierItem.
  StatusNotifierRegistration(GDBusConnection* connection, HostHandler hostChanged);
  StatusNotifierRegistration(const StatusNotifierRegistration&) = delete;
  StatusNotifierRegistration& operator=(const StatusNotifierRegistration&) = delete;
  ~StatusNotifierRegistration();

  /// Unknown at first, and for a watcher that has not replied.
  StatusNotifierHost host() const { return host_; }

 private:
  static void watcherAppeared(GDBusConnection*, const char*, const char* owner, gpointer self);
  static void watcherVanished(GDBusConnection*, const char*, gpointer self);
  static void signalArrived(GDBusConnection*, const char*, const char*, const char*,
                            const char* signal, GVariant* parameters, gpointer self);
  static void registered(GObject* connection, GAsyncResult* result, gpointer self);
  static void hostRead(GObject* connection, GAsyncResult* result, gpointer self);

  void setOwner(std::string owner);
  void registerItem();
  void readHost();
  void hostAnnounced(StatusNotifierHost host);
  void setHost(StatusNotifierHost host);

  GObjectPtr<GDBusConnection> connection_;
  HostHandler hostChanged_;
  /// Pending calls to this owner.
  GObjectPtr<GCancellable> cancellable_;
  /// Unique name of the watcher's owner; empty when there is none.
  std::string owner_;
  StatusNotifierHost host_ = StatusNotifierHost::unknown;
  guint nameWatch_ = 0;
  guint watcherSignals_ = 0;
  guint propertySignals_ = 0;
};

}  // namespace quillmar
