// What the toolkit does not offer in a Wayland session: the keyboard layout, and a request to the
// compositor not to use key combinations itself.

#pragma once

#include <QWindow>
#include <cstdint>
#include <memory>
#include <optional>

#include <xkbcommon/xkbcommon.h>

#include "platform/qt/windows/xkb_pointers.h"

struct wl_keyboard;
struct wl_registry;
struct wl_seat;
struct zwp_keyboard_shortcuts_inhibit_manager_v1;
struct zwp_keyboard_shortcuts_inhibitor_v1;

namespace quillmar {

/// While it exists, the compositor is asked not to use its shortcuts.
class ShortcutsInhibitor {
 public:
  /// Owns the object.
  explicit ShortcutsInhibitor(zwp_keyboard_shortcuts_inhibitor_v1* inhibitor);
  ~ShortcutsInhibitor();
  ShortcutsInhibitor(const ShortcutsInhibitor&) = delete;
  ShortcutsInhibitor& operator=(const ShortcutsInhibitor&) = delete;

  /// True once the compositor has granted the request.
  bool isGranted() const { return isGranted_; }

 private:
  zwp_keyboard_shortcuts_inhibitor_v1* inhibitor_;
  bool isGranted_ = false;
};

/// The keyboard of the first seat that has one. Shares the toolkit's connection, which dispatches
/// the events. Main thread.
class WaylandKeyboard {
 public:
  /// Null if the toolkit's display is not a Wayland compositor. The first call subscribes to
  /// events, which arrive later.
  static WaylandKeyboard* shared();

  WaylandKeyboard(const WaylandKeyboard&) = delete;
  WaylandKeyboard& operator=(const WaylandKeyboard&) = delete;

  /// Null until the compositor has sent it.
  xkb_keymap* keymap() const { return keymap_.get(); }
  /// The active layout of the keymap.
  xkb_layout_index_t layout() const { return layout_; }

  /// Asks the compositor to deliver all key combinations to the window while it has the keyboard.
  /// The compositor may ask the user, or refuse. Null if it does not support the protocol.
  std::unique_ptr<ShortcutsInhibitor> inhibitShortcuts(QWindow& window) const;

 private:
  explicit WaylandKeyboard(wl_registry* registry);

  void bind(wl_registry* registry, std::uint32_t name, const char* interface);
  void seatChanged(bool hasKeyboard);
  void keymapChanged(std::uint32_t format, int file, std::uint32_t size);

  wl_seat* seat_ = nullptr;
  wl_keyboard* keyboard_ = nullptr;
  zwp_keyboard_shortcuts_inhibit_manager_v1* inhibitManager_ = nullptr;
  XkbContextPointer context_;
  XkbKeymapPointer keymap_;
  xkb_layout_index_t layout_ = 0;
};

}  // namespace quillmar
