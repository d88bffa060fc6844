// Another program that pastes from the clipboard of an X server, and its window. Its events arrive
// on the default main context.

#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <xcb/xcb.h>

#include "platform/linux/x11/x11_connection.h"

namespace quillmar {

/// An owner's answer to one request, read from the property that it was to be put in.
struct XAnswer {
  bool arrived = false;
  /// The property that the owner named; none when it refused.
  xcb_atom_t property = XCB_ATOM_NONE;
  xcb_atom_t type = XCB_ATOM_NONE;
  int format = 0;
  std::string bytes;
  /// It came, or is coming, in pieces.
  bool incremental = false;
  bool complete = false;

  std::vector<xcb_atom_t> atoms() const;
};

class XRequestor {
 public:
  explicit XRequestor(const std::string& display);

  xcb_atom_t atom(std::string_view name);
  xcb_connection_t* xcb() { return connection_->xcb(); }
  xcb_window_t window() const { return window_; }

  /// Asks for the clipboard as `target`. The answer is read, piece by piece if need be, while the
  /// main loop runs.
  void request(xcb_atom_t target, xcb_atom_t property, xcb_timestamp_t time = XCB_CURRENT_TIME);
  const XAnswer& answer(xcb_atom_t target) { return answers_[target]; }

  /// The same, and runs the main loop until the answer is complete.
  XAnswer paste(std::string_view target, xcb_timestamp_t time = XCB_CURRENT_TIME);

  /// Asks for the pairs of target and property in one request and runs the main loop until the
  /// owner has answered. Returns the pairs as the owner left them.
  std::vector<xcb_atom_t> pasteMultiple(const std::vector<xcb_atom_t>& pairs);

  /// Takes the value out of a property of the window.
  XAnswer takeProperty(xcb_atom_t property);

  /// Pieces stay where the owner puts them from now on.
  void stopTakingPieces() { takesPieces_ = false; }

  /// The window that owns the selection.
  xcb_window_t owner(std::string_view selection);

  /// Becomes the owner of the selection, at the server's present time.
  void own(std::string_view selection);

 private:
  void handle(const xcb_generic_event_t& event);
  void takePiece(XAnswer& answer);

  std::unique_ptr<X11Connection> connection_;
  xcb_window_t window_;
  std::map<xcb_atom_t, XAnswer> answers_;
  bool takesPieces_ = true;
};

}  // namespace quillmar
