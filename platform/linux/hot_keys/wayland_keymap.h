// The keymap of a Wayland compositor, and its changes. Main thread. Only the connection to the
// compositor's socket is made synchronously.

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <glib.h>

#include "platform/environment.h"

struct wl_callback;
struct wl_display;
struct wl_keyboard;
struct wl_registry;
struct wl_seat;

namespace quillmar {

class WaylandKeymap {
 public:
  /// Receives the keymap in the text format of XKB; nothing if there is no compositor or it has no
  /// keyboard.
  using Handler = std::function<void(std::optional<std::string> keymap)>;

  /// Calls the handler from the main loop: once, and again after each change.
  WaylandKeymap(const Environment& environment, Handler handler);
  ~WaylandKeymap();
  WaylandKeymap(const WaylandKeymap&) = delete;
  WaylandKeymap& operator=(const WaylandKeymap&) = delete;

 private:
  struct Listeners;
  struct Disconnect {
    void operator()(wl_display* display) const;
  };

  void sync();
  void addSeat(wl_registry* registry, std::uint32_t name);
  void addKeyboard();
  void readKeymap(int descriptor, std::size_t size);
  void answered();
  bool dispatch();

  Handler handler_;
  std::unique_ptr<wl_display, Disconnect> display_;
  wl_registry* registry_ = nullptr;
  /// Pending round trip.
  wl_callback* callback_ = nullptr;
  wl_seat* seat_ = nullptr;
  wl_keyboard* keyboard_ = nullptr;
  guint source_ = 0;
  /// Remaining round trips before a missing keymap is reported: one each for the seat, its keyboard
  /// and the keymap.
  int pendingRoundTrips_ = 3;
  bool isReported_ = false;
};

}  // namespace quillmar
