// A connection to an X server whose events arrive on the default main context. A server that goes
// away ends the connection, but not the program. Main thread.

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

/// The event's code, without the flag for events that a program sent.
inline std::uint8_t eventKind(const xcb_generic_event_t& event) {
  return event.response_type & 0x7F;
}

/// The code of "events" that are errors of requests.
inline constexpr std::uint8_t errorEventKind = 0;

/// The event as the type of its code.
template <class Event>
const Event& as(const xcb_generic_event_t& event) {
  return reinterpret_cast<const Event&>(event);
}

class X11Connection {
 public:
  struct Handlers {
    /// Gets each event and each error of a request. Must not destroy the connection.
    std::function<void(const xcb_generic_event_t&)> event;
    /// Called once when the connection has broken; may destroy it.
    std::function<void()> closed;
  };

  /// Connects to the display, as the variable DISPLAY names it, and waits for the server, at most
  /// for `timeout`; a server that timed out before is not waited for again. The error is a sentence
  /// without its full stop: "the X display “:0” cannot be reached", for example.
  static Result<std::unique_ptr<X11Connection>> open(
      const std::string& display, Handlers handlers,
      std::chrono::milliseconds timeout = std::chrono::seconds(3));

  ~X11Connection();
  X11Connection(const X11Connection&) = delete;
  X11Connection& operator=(const X11Connection&) = delete;

  xcb_connection_t* xcb() const { return xcb_.get(); }
  xcb_window_t root() const { return root_; }
  int screenNumber() const { return screenNumber_; }

  /// The atoms of the names, in their order; XCB_ATOM_NONE where the server did not reply.
  std::vector<xcb_atom_t> internAtoms(const std::vector<std::string_view>& names);

  /// The selection's owner; XCB_WINDOW_NONE if there is none or the server does not reply.
  xcb_window_t selectionOwner(xcb_atom_t selection);

  /// Asks for the events about the window's own changes, its end among them, and for none else.
  /// Waits for the server; false when there is no such window any more, though not when the
  /// connection has broken.
  bool selectStructureEvents(xcb_window_t window);

  /// A new window that is never shown, to own selections and hold properties. Its PropertyNotify
  /// events are selected.
  xcb_window_t createHiddenWindow();

  /// Handles events, without the main loop, until `done` says true. False when the deadline passed
  /// first or the connection broke, in which case it may have been destroyed.
  bool handleEventsUntil(const std::function<bool()>& done,
                         std::chrono::steady_clock::time_point deadline);

 private:
  X11Connection(XcbConnectionPointer xcb, Handlers handlers);

  /// True when handlePending() has something to do without reading from the server.
  bool hasPending();
  XcbPointer<xcb_generic_event_t> nextEvent();
  /// Handles all events that are there and sends the requests that came of them. False when the
  /// connection broke, in which case it may have been destroyed.
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
  // Events that xcb had read while it waited for a reply.
  std::deque<XcbPointer<xcb_generic_event_t>> queued_;
};

}  // namespace quillmar
