#include "platform/linux/pasteboard/selection_transfer.h"

#include <algorithm>

namespace quillmar {

namespace {

/// Small enough for the server to handle other clients between two pieces.
constexpr std::size_t preferredPieceBytes = 0x40000;
/// More than the fixed part of a ChangeProperty request.
constexpr std::size_t requestOverheadBytes = 64;

std::size_t pieceBytes(xcb_connection_t* xcb) {
  const std::size_t longestRequest = std::size_t{xcb_get_maximum_request_length(xcb)} * 4;
  if (longestRequest <= 2 * requestOverheadBytes) return requestOverheadBytes;
  return std::min(preferredPieceBytes, longestRequest - requestOverheadBytes);
}

}  // namespace

SelectionTransfers::SelectionTransfers(xcb_connection_t* xcb, xcb_atom_t incr)
    : xcb_(xcb), incr_(incr), pieceBytes_(pieceBytes(xcb)) {}

void SelectionTransfers::send(xcb_window_t requestor, xcb_atom_t property,
                              const SelectionValue& value) {
  forget(requestor, property);
  if (value.bytes->size() <= pieceBytes_) {
    xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, requestor, property, value.type, value.format,
                        value.elementCount(), value.bytes->data());
    return;
  }
  // Before the announcement, so that neither the property's deletion nor the window's destruction
  // is missed.
  const std::uint32_t firstSequence =
      selectEvents(requestor, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
  const auto atLeast = static_cast<std::uint32_t>(value.bytes->size());
  xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, requestor, property, incr_, 32, 1, &atLeast);
  transfers_.push_back({requestor, property, value, firstSequence});
}

void SelectionTransfers::propertyDeleted(xcb_window_t requestor, xcb_atom_t property) {
  const auto found = std::find_if(transfers_.begin(), transfers_.end(), [&](const Transfer& each) {
    return each.requestor == requestor && each.property == property;
  });
  if (found == transfers_.end() || sendPiece(*found)) return;
  transfers_.erase(found);
  if (!sendsTo(requestor)) selectEvents(requestor, XCB_EVENT_MASK_NO_EVENT);
}

void SelectionTransfers::windowGone(xcb_window_t requestor, std::uint32_t sequence) {
  std::erase_if(transfers_, [&](const Transfer& each) {
    return each.requestor == requestor && !comesBefore(sequence, each.firstSequence);
  });
}

std::uint32_t SelectionTransfers::selectEvents(xcb_window_t requestor, std::uint32_t mask) {
  return xcb_change_window_attributes(xcb_, requestor, XCB_CW_EVENT_MASK, &mask).sequence;
}

bool SelectionTransfers::sendPiece(Transfer& transfer) {
  const auto& bytes = *transfer.value.bytes;
  const std::size_t size = std::min(pieceBytes_, bytes.size() - transfer.sent);
  const auto elements = static_cast<std::uint32_t>(size / (transfer.value.format / 8));
  xcb_change_property(xcb_, XCB_PROP_MODE_REPLACE, transfer.requestor, transfer.property,
                      transfer.value.type, transfer.value.format, elements,
                      bytes.data() + transfer.sent);
  transfer.sent += size;
  return size > 0;
}

void SelectionTransfers::forget(xcb_window_t requestor, xcb_atom_t property) {
  std::erase_if(transfers_, [&](const Transfer& each) {
    return each.requestor == requestor && each.property == property;
  });
}

bool SelectionTransfers::sendsTo(xcb_window_t requestor) const {
  return std::any_of(transfers_.begin(), transfers_.end(),
                     [&](const Transfer& each) { return each.requestor == requestor; });
}

}  // namespace quillmar
