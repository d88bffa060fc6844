// A Wayland compositor that has nothing but a keyboard. It runs in the test's main loop.

#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <glib.h>

#include "platform/environment.h"

struct wl_client;
struct wl_display;
struct wl_resource;

namespace quillmar {

class WaylandSeat {
 public:
  /// Names an XKB layout, such as "us". Without one the seat has no keyboard.
  explicit WaylandSeat(const std::string& layout);
  ~WaylandSeat();
  WaylandSeat(const WaylandSeat&) = delete;
  WaylandSeat& operator=(const WaylandSeat&) = delete;

  /// What a client needs to connect.
  Environment environment() const;

  /// Changes the layout, or connects the first keyboard.
  void setLayout(const std::string& layout);

  void disconnectClients();

 private:
  static void bind(wl_client* client, void* self, std::uint32_t version, std::uint32_t id);
  static void addKeyboard(wl_client* client, wl_resource* seat, std::uint32_t id);

  void sendCapabilities(wl_resource* seat) const;
  void sendKeymap(wl_resource* keyboard) const;

  std::string folder_;
  std::string layout_;
  wl_display* display_;
  std::string socket_;
  guint source_ = 0;
  std::vector<wl_resource*> seats_;
  std::vector<wl_resource*> keyboards_;
};

}  // namespace quillmar
