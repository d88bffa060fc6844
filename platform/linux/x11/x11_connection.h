// A connection to an X server. Its events arrive on the default main context. If the server goes
// away, the connection breaks but the program continues. Main thread.

#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <glib.h>
#include <xcb/xcb.h>

#include "platform/result.h"
#include "platform/xcb/xcb_pointers.h"

namespace quillmar {

/// Compares timestamps of the server, or sequence numbers of requests. Both wrap around.
inline bool comesBefore(std::uint32_t a, std::uint32_t b) {
  return static_cast<std::int32_t>(a - b) < 0;
}

/// The event's code without the SendEvent flag.
inline std::uint8_t eventKind(const xcb_generic_event_t& event) {
  return event.response_type & 0x7F;
}

/// Code of request errors, which arrive in the event queue.
inline constexpr std::uint8_t errorEventKind = 0;

/// The event, cast to the type of its code.
template <class Event>
const Event& as(const xcb_generic_event_t& event) {
  return reinterpret_cast<const Event&>(event);
}

class X11Connection {
 public:
  struct Handlers {
    /// Called for each event and each request error. Must not destroy the connection.
    std::function<void(const xcb_generic_event_t&)> event;
    /// Called once when the connection breaks. May destroy the connection.
    std::function<void()> closed;
  };

  /// Connects to the display, named as in the variable DISPLAY. Waits at most `timeout` for the
  /// server; a server that timed out before is not waited for again. The error is a sentence
  /// without its full stop, such as "the X display “:0” cannot be reached".
  static Result<std::unique_ptr<X11Connection>> open(
      const std::string& display, Handlers handlers,
      std::chrono::milliseconds timeout = std::chrono::seconds(3));

  ~X11Connection();
  X11Connection(const X11Connection&) = delete;
  X11Connection& operator=(const X11Connection&) = delete;

  xcb_connection_t* xcb() const { return xcb_.get(); }
  xcb_window_t root() const { return root_; }
  int screenNumber() const { return screenNumber_; }

  /// The atoms of the names, in the same order; XCB_ATOM_NONE if the server did not reply.
  std::vector<xcb_atom_t> internAtoms(const std::vector<std::string_view>& names);

  /// Owner of the selection; XCB_WINDOW_NONE if there is none or the server does not reply.
  xcb_window_t selectionOwner(xcb_atom_t selection);

  /// Selects the structure events of the window, such as DestroyNotify, and no others. Waits for
  /// the server. False if the window no longer exists; true if the connection is broken.
  bool selectStructureEvents(xcb_window_t window);

  /// Creates a window that is never mapped, to own selections and hold properties. Its
  /// PropertyNotify events are selected.
  xcb_window_t createHiddenWindow();

  /// Handles events without the main loop until `done` returns true. False if the deadline passes
  /// first or the connection breaks; a broken connection may have been destroyed.
  bool handleEventsUntil(const std::function<bool()>& done,
                         std::chrono::steady_clock::time_point deadline);

 private:
  X11Connection(XcbConnectionPointer xcb, Handlers handlers);

  /// True when handlePending() has something to do without reading from the server.
  bool hasPending();
  XcbPointer<xcb_generic_event_t> nextEvent();
  /// Handles all queued events and flushes the resulting requests. False if the connection breaks;
  /// it may then have been destroyed.
  bool handlePending();

  struct Source;
  static gboolean prepareSource(GSource* source, gint* timeout);
  static gboolean checkSource(GSource* source);
  static gboolean dispatchSource(GSource* source, GSourceFunc callback, gpointer data);
  static GSourceFuncs sourceFunctions;

  XcbConnectionPointer xcb_;
  Handlers handlers_;
  xcb_window_t root_ = XCB_WINDOW_NONE;
  int screenNumber_ = 0;
  Source* source_ = nullptr;
  // Events that xcb read while it waited for a reply.
  std::deque<XcbPointer<xcb_generic_event_t>> queued_;
};

}  // namespace quillmar
