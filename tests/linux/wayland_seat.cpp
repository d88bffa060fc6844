#include "tests/linux/wayland_seat.h"

#include <cstdlib>
#include <filesystem>

#include <glib-unix.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>
#include <wayland-server-protocol.h>
#include <wayland-server.h>
#include <xkbcommon/xkbcommon.h>

#include "platform/file_descriptor.h"
#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {

namespace {

constexpr int seatVersion = 1;

std::string keymapOf(const std::string& layout) {
  xkb_context* const context = xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES);
  const xkb_rule_names names{"evdev", "pc105", layout.c_str(), "", ""};
  xkb_keymap* const keymap =
      xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS);
  char* const text = xkb_keymap_get_as_string(keymap, XKB_KEYMAP_FORMAT_TEXT_V1);
  const std::string copy = text;
  std::free(text);
  xkb_keymap_unref(keymap);
  xkb_context_unref(context);
  return copy;
}

}  // namespace

WaylandSeat::WaylandSeat(const std::string& layout)
    : folder_(GStringPtr(g_dir_make_tmp("quillmar-seat-XXXXXX", nullptr)).get()),
      layout_(layout),
      display_(wl_display_create()),
      socket_(folder_ + "/wayland") {
  // libwayland accepts an absolute path.
  EXPECT_EQ(wl_display_add_socket(display_, socket_.c_str()), 0);
  wl_global_create(display_, &wl_seat_interface, seatVersion, this, bind);
  source_ = g_unix_fd_add(
      wl_event_loop_get_fd(wl_display_get_event_loop(display_)), G_IO_IN,
      [](gint, GIOCondition, gpointer display) -> gboolean {
        wl_event_loop_dispatch(wl_display_get_event_loop(static_cast<wl_display*>(display)), 0);
        wl_display_flush_clients(static_cast<wl_display*>(display));
        return G_SOURCE_CONTINUE;
      },
      display_);
}

WaylandSeat::~WaylandSeat() {
  g_source_remove(source_);
  wl_display_destroy_clients(display_);
  wl_display_destroy(display_);
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

Environment WaylandSeat::environment() const {
  return {{{"WAYLAND_DISPLAY", "wayland"}, {"XDG_RUNTIME_DIR", folder_}}};
}

void WaylandSeat::setLayout(const std::string& layout) {
  layout_ = layout;
  for (wl_resource* seat : seats_) sendCapabilities(seat);
  for (wl_resource* keyboard : keyboards_) sendKeymap(keyboard);
  wl_display_flush_clients(display_);
}

void WaylandSeat::disconnectClients() {
  wl_display_destroy_clients(display_);
  seats_.clear();
  keyboards_.clear();
}

void WaylandSeat::bind(wl_client* client, void* self, std::uint32_t version, std::uint32_t id) {
  static constexpr struct wl_seat_interface implementation = {nullptr, addKeyboard, nullptr,
                                                              nullptr};
  wl_resource* const seat =
      wl_resource_create(client, &wl_seat_interface, static_cast<int>(version), id);
  wl_resource_set_implementation(seat, &implementation, self, nullptr);
  auto& own = *static_cast<WaylandSeat*>(self);
  own.seats_.push_back(seat);
  own.sendCapabilities(seat);
}

void WaylandSeat::addKeyboard(wl_client* client, wl_resource* seat, std::uint32_t id) {
  wl_resource* const keyboard =
      wl_resource_create(client, &wl_keyboard_interface, wl_resource_get_version(seat), id);
  auto& own = *static_cast<WaylandSeat*>(wl_resource_get_user_data(seat));
  own.keyboards_.push_back(keyboard);
  own.sendKeymap(keyboard);
}

void WaylandSeat::sendCapabilities(wl_resource* seat) const {
  wl_seat_send_capabilities(seat, layout_.empty() ? 0 : WL_SEAT_CAPABILITY_KEYBOARD);
}

void WaylandSeat::sendKeymap(wl_resource* keyboard) const {
  const std::string text = keymapOf(layout_);
  const FileDescriptor file(memfd_create("keymap", MFD_CLOEXEC));
  const std::size_t size = text.size() + 1;
  EXPECT_EQ(write(file.number(), text.c_str(), size), static_cast<ssize_t>(size));
  wl_keyboard_send_keymap(keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file.number(),
                          static_cast<std::uint32_t>(size));
}

}  // namespace quillmar
