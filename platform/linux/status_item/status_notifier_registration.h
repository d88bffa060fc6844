// Keeps this program's status icon registered with whatever collects them on the session bus.
//
// Panels come and go, and some claim the collector's name before they can show anything: every new
// owner of the name is told, and told again when it first reports a host. Nothing here blocks. Main
// thread.

#pragma once

#include <functional>
#include <optional>
#include <string>

#include <gio/gio.h>

#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {

class StatusNotifierRegistration {
 public:
  /// Called when hasHost() has changed.
  using HostHandler = std::function<void(bool hasHost)>;

  /// Registers the connection's unique name, which must show an object /StatusNotifierItem already.
  StatusNotifierRegistration(GDBusConnection* connection, HostHandler hostChanged);
  StatusNotifierRegistration(const StatusNotifierRegistration&) = delete;
  StatusNotifierRegistration& operator=(const StatusNotifierRegistration&) = delete;
  ~StatusNotifierRegistration();

  /// True while something shows icons, as far as is known: false until it has said so.
  bool hasHost() const { return hasHost_.value_or(false); }

 private:
  static void watcherAppeared(GDBusConnection*, const char*, const char* owner, gpointer self);
  static void watcherVanished(GDBusConnection*, const char*, gpointer self);
  static void signalArrived(GDBusConnection*, const char*, const char*, const char*,
                            const char* signal, GVariant* parameters, gpointer self);
  static void registered(GObject* connection, GAsyncResult* result, gpointer self);
  static void hostRead(GObject* connection, GAsyncResult* result, gpointer self);

  void registerItem();
  void readHost();
  void hostAnnounced(bool hasHost);
  /// Absent for an owner that has not been heard.
  void setHasHost(std::optional<bool> hasHost);

  GObjectPtr<GDBusConnection> connection_;
  HostHandler hostChanged_;
  GObjectPtr<GCancellable> cancellable_;
  /// Unique name of the watcher's owner; empty when there is none.
  std::string owner_;
  /// Absent until this owner has been heard.
  std::optional<bool> hasHost_;
  guint nameWatch_ = 0;
  guint watcherSignals_ = 0;
  guint propertySignals_ = 0;
};

}  // namespace quillmar
