#include "platform/qt/windows/wayland_keyboard.h"

#include <QGuiApplication>
#include <cstring>
#include <string_view>

#include <qpa/qplatformnativeinterface.h>
#include <sys/mman.h>
#include <wayland-client.h>

#include "keyboard-shortcuts-inhibit-unstable-v1-client-protocol.h"
#include "platform/file_descriptor.h"

namespace quillmar {

namespace {

wl_display* toolkitDisplay() {
  if (!QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) return nullptr;
  QPlatformNativeInterface* const native = QGuiApplication::platformNativeInterface();
  return native == nullptr ? nullptr
                           : static_cast<wl_display*>(native->nativeResourceForIntegration(
                                 QByteArrayLiteral("wl_display")));
}

}  // namespace

ShortcutsInhibitor::ShortcutsInhibitor(zwp_keyboard_shortcuts_inhibitor_v1* inhibitor)
    : inhibitor_(inhibitor) {
  static const zwp_keyboard_shortcuts_inhibitor_v1_listener listener = {
      .active =
          [](void* self, zwp_keyboard_shortcuts_inhibitor_v1* /*inhibitor*/) {
            static_cast<ShortcutsInhibitor*>(self)->isGranted_ = true;
          },
      .inactive = [](void* /*self*/, zwp_keyboard_shortcuts_inhibitor_v1* /*inhibitor*/) {}};
  zwp_keyboard_shortcuts_inhibitor_v1_add_listener(inhibitor_, &listener, this);
}

ShortcutsInhibitor::~ShortcutsInhibitor() {
  zwp_keyboard_shortcuts_inhibitor_v1_destroy(inhibitor_);
}

WaylandKeyboard* WaylandKeyboard::shared() {
  // Never destroyed: the events of its objects may arrive until the process ends.
  static WaylandKeyboard* const keyboard = []() -> WaylandKeyboard* {
    wl_display* const display = toolkitDisplay();
    return display == nullptr ? nullptr : new WaylandKeyboard(wl_display_get_registry(display));
  }();
  return keyboard;
}

WaylandKeyboard::WaylandKeyboard(wl_registry* registry)
    : context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
  static const wl_registry_listener listener = {
      .global =
          [](void* self, wl_registry* all, std::uint32_t name, const char* interface,
             std::uint32_t /*version*/) {
            static_cast<WaylandKeyboard*>(self)->bind(all, name, interface);
          },
      .global_remove = [](void* /*self*/, wl_registry* /*all*/, std::uint32_t /*name*/) {}};
  wl_registry_add_listener(registry, &listener, this);
}

void WaylandKeyboard::bind(wl_registry* registry, std::uint32_t name, const char* interface) {
  const std::string_view wanted(interface);
  if (wanted == zwp_keyboard_shortcuts_inhibit_manager_v1_interface.name) {
    inhibitManager_ = static_cast<zwp_keyboard_shortcuts_inhibit_manager_v1*>(
        wl_registry_bind(registry, name, &zwp_keyboard_shortcuts_inhibit_manager_v1_interface, 1));
  } else if (wanted == wl_seat_interface.name && seat_ == nullptr) {
    static const wl_seat_listener listener = {
        .capabilities =
            [](void* self, wl_seat* /*seat*/, std::uint32_t capabilities) {
              static_cast<WaylandKeyboard*>(self)->seatChanged(
                  (capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0);
            },
        .name = nullptr};
    // The first version has everything that is needed here, and no events that come later.
    seat_ = static_cast<wl_seat*>(wl_registry_bind(registry, name, &wl_seat_interface, 1));
    wl_seat_add_listener(seat_, &listener, this);
  }
}

void WaylandKeyboard::seatChanged(bool hasKeyboard) {
  if (!hasKeyboard || keyboard_ != nullptr) return;
  static const wl_keyboard_listener listener = {
      .keymap =
          [](void* self, wl_keyboard* /*keyboard*/, std::uint32_t format, std::int32_t file,
             std::uint32_t size) {
            static_cast<WaylandKeyboard*>(self)->keymapChanged(format, file, size);
          },
      .enter = [](void* /*self*/, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/,
                  wl_surface* /*surface*/, wl_array* /*keys*/) {},
      .leave = [](void* /*self*/, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/,
                  wl_surface* /*surface*/) {},
      .key = [](void* /*self*/, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/,
                std::uint32_t /*time*/, std::uint32_t /*key*/, std::uint32_t /*state*/) {},
      .modifiers =
          [](void* self, wl_keyboard* /*keyboard*/, std::uint32_t /*serial*/,
             std::uint32_t /*depressed*/, std::uint32_t /*latched*/, std::uint32_t /*locked*/,
             std::uint32_t group) { static_cast<WaylandKeyboard*>(self)->layout_ = group; },
      .repeat_info = nullptr};
  keyboard_ = wl_seat_get_keyboard(seat_);
  wl_keyboard_add_listener(keyboard_, &listener, this);
}

void WaylandKeyboard::keymapChanged(std::uint32_t format, int file, std::uint32_t size) {
  const FileDescriptor keymapFile(file);
  if (format != WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1 || size == 0) return;
  void* const text = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
  if (text == MAP_FAILED) return;
  const auto* const characters = static_cast<const char*>(text);
  keymap_.reset(xkb_keymap_new_from_buffer(context_.get(), characters, strnlen(characters, size),
                                           XKB_KEYMAP_FORMAT_TEXT_V1, XKB_KEYMAP_COMPILE_NO_FLAGS));
  munmap(text, size);
}

std::unique_ptr<ShortcutsInhibitor> WaylandKeyboard::inhibitShortcuts(QWindow& window) const {
  QPlatformNativeInterface* const native = QGuiApplication::platformNativeInterface();
  auto* const surface = static_cast<wl_surface*>(
      native->nativeResourceForWindow(QByteArrayLiteral("surface"), &window));
  if (inhibitManager_ == nullptr || seat_ == nullptr || surface == nullptr) return nullptr;
  return std::make_unique<ShortcutsInhibitor>(
      zwp_keyboard_shortcuts_inhibit_manager_v1_inhibit_shortcuts(inhibitManager_, surface, seat_));
}

}  // namespace quillmar
