// The icon in the desktop's panel, as panels read it from the session bus
// (org.kde.StatusNotifierItem), with its menu (com.canonical.dbusmenu).
//
// A panel that starts late or again finds it as well, and no panel at all is no error. Main thread;
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

/// Who the icon belongs to and where its pictures are.
struct StatusNotifierItemOptions {
  /// The application's id in reverse-DNS form.
  std::string id;
  /// The application's name as people know it.
  std::string title;
  /// A folder with icon themes that panels look into besides the system's.
  std::string iconThemePath;
  /// A folder with icons as pixels; see loadIconPixmaps.
  std::string pixmapDirectory;
  /// False when the icons are only in a folder that no desktop looks into by itself.
  bool areIconsRegistered = true;
  /// What is known about the desktop's panel.
  PanelTraits panel;
};

class StatusNotifierItem final : public StatusItem {
 public:
  static constexpr const char* objectPath = "/StatusNotifierItem";

  /// Shows itself on the connection, which must be a bus's, at once. Actions run in turns of
  /// `mainQueue`.
  StatusNotifierItem(GDBusConnection* connection, TaskQueue& mainQueue,
                     StatusNotifierItemOptions options);

  void setImage(std::optional<Image> image) override;
  void setMenu(Menu menu) override { menu_.setMenu(std::move(menu)); }

  /// Of the desktop; unknown at first. Colours what is sent as pixels.
  void setAppearance(Appearance appearance);

  /// Whether a panel shows icons of this kind; unknown at first.
  StatusNotifierHost host() const { return registration_.host(); }

  /// Opens the menu at the point, in the program's own window; runs in its own turn of the main
  /// queue. Without a point the panel did not say where.
  using OpenHandler =
      std::function<void(std::optional<ScreenPoint> position, const Activation& activation)>;

  /// Called when a panel that does not open menus itself asks for the menu. May be empty.
  void setOpenHandler(OpenHandler handler) { openHandler_ = std::move(handler); }

  /// Called when host() has changed. May be empty.
  void setHostHandler(StatusNotifierRegistration::HostHandler handler) {
    hostHandler_ = std::move(handler);
  }

 private:
  DbusMenuStyle menuStyle() const;
  /// True when the panel cannot show the menu's icons by their names, or not so that they stand
  /// out.
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
  /// What a panel has announced the next click with; empty for none.
  std::string activationToken_;
  OpenHandler openHandler_;
  StatusNotifierRegistration::HostHandler hostHandler_;
  /// What tasks that wait in the queue look back through: gone when this object is.
  std::shared_ptr<StatusNotifierItem*> self_;
  DbusMenu menu_;
  DbusObject object_;
  StatusNotifierRegistration registration_;
};

}  // namespace quillmar
