// The icon in the desktop's panel, as panels read it from the session bus
// (org.kde.StatusNotifierItem), with its menu (com.canonical.dbusmenu).
//
// Panels that start late or restart find it as well. Without a panel nothing fails. Main thread;
// nothing here blocks.

#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <gio/gio.h>

#include "platform/linux/appearance/appearance.h"
#include "platform/linux/bus/dbus_object.h"
#include "platform/linux/icons/symbol_pictures.h"
#include "platform/linux/status_item/dbus_menu.h"
#include "platform/linux/status_item/panel_traits.h"
#include "platform/linux/status_item/status_notifier_registration.h"
#include "platform/status_item.h"
#include "platform/task_queue.h"
#include "platform/window_system.h"

namespace quillmar {

/// Identifies the icon's program and the location of its pictures.
struct StatusNotifierItemOptions {
  /// The application's id in reverse-DNS form.
  std::string id;
  /// The application's name as shown to users.
  std::string title;
  /// Folder with icon themes that panels search besides the system's.
  std::string iconThemePath;
  /// Folder with icons as pixels; see loadIconPixmaps.
  std::string pixmapDirectory;
  /// False if the icons are only in a folder that desktops do not search by themselves.
  bool areIconsRegistered = true;
  /// Traits of the desktop's panel.
  PanelTraits panel;
};

class StatusNotifierItem final : public StatusItem {
 public:
  static constexpr const char* objectPath = "/StatusNotifierItem";

  /// Exports the item at once on the connection, which must be a bus's. Actions run as tasks of
  /// `mainQueue`.
  StatusNotifierItem(GDBusConnection* connection, TaskQueue& mainQueue,
                     StatusNotifierItemOptions options);

  void setImage(std::optional<Image> image) override;
  void setMenu(Menu menu) override { menu_.setMenu(std::move(menu)); }

  /// Appearance of the desktop; unknown at first. Determines the colour of icons sent as pixels.
  void setAppearance(Appearance appearance);

  /// Whether a panel shows icons of this kind; unknown at first.
  StatusNotifierHost host() const { return registration_.host(); }

  /// Opens the menu at the point, in a window of this program; runs as a task of the main queue.
  /// Absent if the panel did not report the point.
  using OpenHandler =
      std::function<void(std::optional<ScreenPoint> position, const Activation& activation)>;

  /// Called when a panel that does not open menus itself requests the menu. May be empty.
  void setOpenHandler(OpenHandler handler) { openHandler_ = std::move(handler); }

  /// Called when host() has changed. May be empty.
  void setHostHandler(StatusNotifierRegistration::HostHandler handler) {
    hostHandler_ = std::move(handler);
  }

 private:
  DbusMenuStyle menuStyle() const;
  /// True if the panel cannot show the menu's icons by name, or not with enough contrast.
  bool sendsPictures() const;
  void answer(const char* method, GVariant* arguments, GDBusMethodInvocation* invocation);
  GVariant* property(const char* name) const;
  void openLater(ScreenPoint position);
  void runLater(const ActionEntry& entry, std::uint32_t timestamp);

  TaskQueue& mainQueue_;
  StatusNotifierItemOptions options_;
  /// Name of the icon; empty for none.
  std::string iconName_;
  Appearance appearance_ = Appearance::unknown;
  SymbolPictures pictures_;
  /// The activation token that a panel sent for the next click; empty for none.
  std::string activationToken_;
  OpenHandler openHandler_;
  StatusNotifierRegistration::HostHandler hostHandler_;
  /// Tells queued tasks whether this object still exists.
  std::shared_ptr<StatusNotifierItem*> self_;
  DbusMenu menu_;
  DbusObject object_;
  StatusNotifierRegistration registration_;
};

}  // namespace quillmar
