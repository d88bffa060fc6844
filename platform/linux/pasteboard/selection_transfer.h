// Sends values that are too large for one request in pieces (the INCR mechanism of the ICCCM). The
// owner announces the size. Each time the requestor deletes the property, the owner writes the next
// piece. An empty piece ends the value. Main thread.

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

  /// Writes the value to the requestor's window at once, or begins to send it in pieces. Aborts a
  /// transfer under way to the same property.
  void send(xcb_window_t requestor, xcb_atom_t property, const SelectionValue& value);

  /// The requestor has deleted the property, so the next piece can be written.
  void propertyDeleted(xcb_window_t requestor, xcb_atom_t property);

  /// The request with that number failed because the window no longer exists: nothing more is sent
  /// to the window. Later transfers continue, because they go to another window that got the same
  /// id.
  void windowGone(xcb_window_t requestor, std::uint32_t sequence);

  std::size_t underWay() const { return transfers_.size(); }

 private:
  struct Transfer {
    xcb_window_t requestor;
    xcb_atom_t property;
    SelectionValue value;
    /// Sequence number of the first request.
    std::uint32_t firstSequence;
    std::size_t sent = 0;
  };

  /// Returns the sequence number of the request.
  std::uint32_t selectEvents(xcb_window_t requestor, std::uint32_t mask);
  /// Writes the next piece. False if it was the empty one that ends the value.
  bool sendPiece(Transfer& transfer);
  void forget(xcb_window_t requestor, xcb_atom_t property);
  bool sendsTo(xcb_window_t requestor) const;

  xcb_connection_t* xcb_;
  xcb_atom_t incr_;
  std::size_t pieceBytes_;
  std::vector<Transfer> transfers_;
};

}  // namespace quillmar
