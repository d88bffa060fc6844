// Values too large for one request go to their requestors piece by piece (the INCR mechanism of the
// window system's conventions): the owner announces the size, and each time the requestor deletes
// the property it writes the next piece, the last one being empty. Main thread.

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <xcb/xcb.h>

#include "platform/linux/pasteboard/selection_contents.h"

namespace quillmar {

class SelectionTransfers {
 public:
  /// The connection must outlive this.
  SelectionTransfers(xcb_connection_t* xcb, xcb_atom_t incr);

  /// Puts the value on the requestor's window at once, or begins to send it in pieces. A transfer
  /// under way to the same property is given up.
  void send(xcb_window_t requestor, xcb_atom_t property, const SelectionValue& value);

  /// The requestor has taken what the property held.
  void propertyDeleted(xcb_window_t requestor, xcb_atom_t property);

  /// The window did not exist, or no longer, when the server had come to the request of that
  /// number: nothing more is sent to it. Transfers begun later go to another window that has got
  /// its name.
  void windowGone(xcb_window_t requestor, std::uint32_t sequence);

  std::size_t underWay() const { return transfers_.size(); }

 private:
  struct Transfer {
    xcb_window_t requestor;
    xcb_atom_t property;
    SelectionValue value;
    /// The number of its first request.
    std::uint32_t firstSequence;
    std::size_t sent = 0;
  };

  /// Returns the request's number.
  std::uint32_t selectEvents(xcb_window_t requestor, std::uint32_t mask);
  /// Writes the next piece; false when it was the empty one that ends the value.
  bool sendPiece(Transfer& transfer);
  void forget(xcb_window_t requestor, xcb_atom_t property);
  bool sendsTo(xcb_window_t requestor) const;

  xcb_connection_t* xcb_;
  xcb_atom_t incr_;
  std::size_t pieceBytes_;
  std::vector<Transfer> transfers_;
};

}  // namespace quillmar
