#include "platform/linux/hot_keys/wayland_keymap.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include <glib-unix.h>
#include <sys/mman.h>
#include <wayland-client.h>

#include "platform/file_descriptor.h"

namespace quillmar {

namespace {

WaylandKeymap* asKeymap(void* self) {
  return static_cast<WaylandKeymap*>(self);
}

/// Null if there is no compositor.
wl_display* connect(const Environment& environment) {
  const std::string name = environment.value("WAYLAND_DISPLAY").value_or("");
  const std::string folder = environment.value("XDG_RUNTIME_DIR").value_or("");
  if (name.empty()) return nullptr;
  const std::string socket = name.starts_with('/') ? name : folder + "/" + name;
  return wl_display_connect(socket.c_str());
}

}  // namespace

/// Functions that libwayland calls. This program has no surface, so it gets no key events.
struct WaylandKeymap::Listeners {
  static void global(void* self, wl_registry* registry, std::uint32_t name, const char* interface,
                     std::uint32_t) {
    if (std::string_view(interface) == wl_seat_interface.name) {
      asKeymap(self)->addSeat(registry, name);
    }
  }

  static void capabilities(void* self, wl_seat*, std::uint32_t capabilities) {
    if (capabilities & WL_SEAT_CAPABILITY_KEYBOARD) asKeymap(self)->addKeyboard();
  }

  static void keymap(void* self, wl_keyboard*, std::uint32_t format, std::int32_t descriptor,
                     std::uint32_t size) {
    const FileDescriptor file(descriptor);
    if (format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1) {
      asKeymap(self)->readKeymap(file.number(), size);
    }
  }

  static void done(void* self, wl_callback*, std::uint32_t) {
    wl_callback_destroy(std::exchange(asKeymap(self)->callback_, nullptr));
    asKeymap(self)->answered();
  }

  static constexpr wl_registry_listener registry = {global,
                                                    [](void*, wl_registry*, std::uint32_t) {}};
  static constexpr wl_seat_listener seat = {capabilities, nullptr};
  static constexpr wl_keyboard_listener keyboard = {
      keymap,
      [](void*, wl_keyboard*, std::uint32_t, wl_surface*, wl_array*) {},
      [](void*, wl_keyboard*, std::uint32_t, wl_surface*) {},
      [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t) {},
      [](void*, wl_keyboard*, std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t,
         std::uint32_t) {},
      nullptr};
  static constexpr wl_callback_listener callback = {done};
};

void WaylandKeymap::Disconnect::operator()(wl_display* display) const {
  wl_display_disconnect(display);
}

WaylandKeymap::WaylandKeymap(const Environment& environment, Handler handler)
    : handler_(std::move(handler)), display_(connect(environment)) {
  if (!display_) {
    source_ = g_idle_add(
        [](gpointer self) -> gboolean {
          asKeymap(self)->source_ = 0;
          asKeymap(self)->handler_(std::nullopt);
          return G_SOURCE_REMOVE;
        },
        this);
    return;
  }
  registry_ = wl_display_get_registry(display_.get());
  wl_registry_add_listener(registry_, &Listeners::registry, this);
  sync();
  wl_display_flush(display_.get());
  constexpr auto events = static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR);
  source_ = g_unix_fd_add(
      wl_display_get_fd(display_.get()), events,
      [](gint, GIOCondition, gpointer self) -> gboolean {
        if (asKeymap(self)->dispatch()) return G_SOURCE_CONTINUE;
        asKeymap(self)->source_ = 0;
        return G_SOURCE_REMOVE;
      },
      this);
}

WaylandKeymap::~WaylandKeymap() {
  if (source_ != 0) g_source_remove(source_);
  // The end of the connection does not free these.
  if (callback_) wl_callback_destroy(callback_);
  if (keyboard_) wl_keyboard_destroy(keyboard_);
  if (seat_) wl_seat_destroy(seat_);
  if (registry_) wl_registry_destroy(registry_);
}

bool WaylandKeymap::dispatch() {
  // Does not wait, because the descriptor is readable.
  if (wl_display_dispatch(display_.get()) >= 0 && wl_display_flush(display_.get()) >= 0) {
    return true;
  }
  if (!std::exchange(isReported_, true)) handler_(std::nullopt);
  return false;
}

void WaylandKeymap::sync() {
  callback_ = wl_display_sync(display_.get());
  wl_callback_add_listener(callback_, &Listeners::callback, this);
}

void WaylandKeymap::answered() {
  if (--pendingRoundTrips_ > 0) return sync();
  if (!std::exchange(isReported_, true)) handler_(std::nullopt);
}

void WaylandKeymap::addSeat(wl_registry* registry, std::uint32_t name) {
  if (seat_) return;
  constexpr std::uint32_t version = 1;
  seat_ = static_cast<wl_seat*>(wl_registry_bind(registry, name, &wl_seat_interface, version));
  wl_seat_add_listener(seat_, &Listeners::seat, this);
}

void WaylandKeymap::addKeyboard() {
  if (keyboard_) return;
  keyboard_ = wl_seat_get_keyboard(seat_);
  wl_keyboard_add_listener(keyboard_, &Listeners::keyboard, this);
}

void WaylandKeymap::readKeymap(int descriptor, std::size_t size) {
  void* const memory = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
  if (memory == MAP_FAILED) return;
  const auto* const text = static_cast<const char*>(memory);
  // Ends with a null byte.
  std::string keymap(text, strnlen(text, size));
  munmap(memory, size);
  isReported_ = true;
  handler_(std::move(keymap));
}

}  // namespace quillmar
