// Tracks whether the desktop is light or dark. The desktop's settings portal decides; without one,
// the settings files do. Files in folders that do not exist yet are read at the next start. Nothing
// here blocks. Main thread.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include <gio/gio.h>

#include "platform/linux/appearance/appearance.h"
#include "platform/linux/bus/bus_calls.h"
#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {

class AppearanceWatch {
 public:
  /// `changed` is called after current() changes.
  AppearanceWatch(GDBusConnection* connection, AppearanceSettings settings,
                  std::function<void(Appearance appearance)> changed);
  ~AppearanceWatch();
  AppearanceWatch(const AppearanceWatch&) = delete;
  AppearanceWatch& operator=(const AppearanceWatch&) = delete;

  Appearance current() const { return current_; }

 private:
  static void portalAppeared(GDBusConnection*, const char*, const char*, gpointer self);
  static void portalVanished(GDBusConnection*, const char*, gpointer self);
  static void settingChanged(GDBusConnection*, const char*, const char*, const char*, const char*,
                             GVariant* parameters, gpointer self);
  static void fileChanged(GFileMonitor*, GFile*, GFile*, GFileMonitorEvent, gpointer self);

  void askPortal();
  void takeFromPortal(GVariant* value);
  void update();

  AppearanceSettings settings_;
  std::function<void(Appearance appearance)> changed_;
  Appearance fromPortal_ = Appearance::unknown;
  Appearance fromFiles_;
  Appearance current_;
  BusCalls calls_;
  guint subscription_ = 0;
  guint nameWatch_ = 0;
  std::vector<GObjectPtr<GFileMonitor>> monitors_;
};

}  // namespace quillmar
