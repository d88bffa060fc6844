// A connection to an X server whose events arrive on the default main context. Whoever opens it
// owns it; everything happens on the main thread. A server that goes away ends the connection,
// never the program.

#pragma once

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <glib.h>
#include <xcb/xcb.h>

namespace quillmar {

struct FreeWithStdlib {
  void operator()(void* memory) const { std::free(memory); }
};

/// A reply or an event, which xcb allocates with malloc.
template <class T>
using XcbPointer = std::unique_ptr<T, FreeWithStdlib>;

/// Orders the server's times, and the numbers of requests: both wrap around.
inline bool comesBefore(std::uint32_t a, std::uint32_t b) {
  return static_cast<std::int32_t>(a - b) < 0;
}

/// What kind of event it is, whether the server or a program sent it.
inline std::uint8_t eventKind(const xcb_generic_event_t& event) {
  return event.response_type & 0x7F;
}

/// The kind of those "events" that are errors of requests.
inline constexpr std::uint8_t errorEventKind = 0;

/// The event as what its kind says.
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

  /// Connects to the display, as the variable DISPLAY names it, and waits for the server's answer,
  /// but only once for one that does not answer in time. Nothing when there is none.
  static std::unique_ptr<X11Connection> open(
      const std::string& display, Handlers handlers,
      std::chrono::milliseconds patience = std::chrono::seconds(3));

  ~X11Connection();
  X11Connection(const X11Connection&) = delete;
  X11Connection& operator=(const X11Connection&) = delete;

  xcb_connection_t* xcb() const { return xcb_; }
  xcb_window_t root() const { return root_; }
  int screenNumber() const { return screenNumber_; }

  /// The atoms of the names, in their order; XCB_ATOM_NONE for all that the server did not answer.
  std::vector<xcb_atom_t> internAtoms(const std::vector<std::string_view>& names);

  /// Who owns the selection; XCB_WINDOW_NONE for nobody, or when the server does not answer.
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
  X11Connection(xcb_connection_t* xcb, Handlers handlers);

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

  xcb_connection_t* xcb_;
  Handlers handlers_;
  xcb_window_t root_ = XCB_WINDOW_NONE;
  int screenNumber_ = 0;
  Source* source_ = nullptr;
  // Events that xcb had read while it waited for a reply.
  std::deque<XcbPointer<xcb_generic_event_t>> queued_;
};

}  // namespace quillmar
