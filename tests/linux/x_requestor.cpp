#include "tests/linux/x_requestor.h"

#include <cstring>

#include <gtest/gtest.h>

#include "tests/linux/main_loop.h"

namespace quillmar {

namespace {

constexpr std::uint32_t wholeProperty = 0x1FFFFFFF;

}  // namespace

std::vector<xcb_atom_t> XAnswer::atoms() const {
  std::vector<xcb_atom_t> list(bytes.size() / sizeof(xcb_atom_t));
  std::memcpy(list.data(), bytes.data(), list.size() * sizeof(xcb_atom_t));
  return list;
}

XRequestor::XRequestor(const std::string& display)
    : connection_(
          X11Connection::open(
              display, {[this](const xcb_generic_event_t& event) { handle(event); }, nullptr})
              .value()),
      window_(connection_->createHiddenWindow()) {}

xcb_atom_t XRequestor::atom(std::string_view name) {
  return connection_->internAtoms({name})[0];
}

void XRequestor::request(xcb_atom_t target, xcb_atom_t property, xcb_timestamp_t time) {
  answers_[target] = {};
  xcb_convert_selection(xcb(), window_, atom("CLIPBOARD"), target, property, time);
  xcb_flush(xcb());
}

XAnswer XRequestor::paste(std::string_view target, xcb_timestamp_t time) {
  const xcb_atom_t asked = atom(target);
  request(asked, atom("PASTED"), time);
  EXPECT_TRUE(runMainLoopUntil([&] { return answers_[asked].complete; }));
  return answers_[asked];
}

std::vector<xcb_atom_t> XRequestor::pasteMultiple(const std::vector<xcb_atom_t>& pairs) {
  const xcb_atom_t property = atom("PAIRS");
  xcb_change_property(xcb(), XCB_PROP_MODE_REPLACE, window_, property, atom("ATOM_PAIR"), 32,
                      static_cast<std::uint32_t>(pairs.size()), pairs.data());
  const xcb_atom_t asked = atom("MULTIPLE");
  request(asked, property);
  EXPECT_TRUE(runMainLoopUntil([&] { return answers_[asked].complete; }));
  return answers_[asked].atoms();
}

XAnswer XRequestor::takeProperty(xcb_atom_t property) {
  const auto cookie =
      xcb_get_property(xcb(), true, window_, property, XCB_GET_PROPERTY_TYPE_ANY, 0, wholeProperty);
  const XcbPointer<xcb_get_property_reply_t> reply(xcb_get_property_reply(xcb(), cookie, nullptr));
  XAnswer answer;
  if (!reply) return answer;
  answer.type = reply->type;
  answer.format = reply->format;
  answer.bytes.assign(static_cast<const char*>(xcb_get_property_value(reply.get())),
                      xcb_get_property_value_length(reply.get()));
  return answer;
}

xcb_window_t XRequestor::owner(std::string_view selection) {
  return connection_->selectionOwner(atom(selection));
}

void XRequestor::own(std::string_view selection) {
  const xcb_atom_t owned = atom(selection);
  xcb_set_selection_owner(xcb(), window_, owned, XCB_CURRENT_TIME);
  xcb_flush(xcb());
}

void XRequestor::handle(const xcb_generic_event_t& event) {
  if ((event.response_type & 0x7F) == XCB_SELECTION_NOTIFY) {
    const auto& notify = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
    XAnswer answer;
    if (notify.property != XCB_ATOM_NONE) answer = takeProperty(notify.property);
    answer.arrived = true;
    answer.property = notify.property;
    answer.incremental = answer.type == atom("INCR");
    answer.complete = !answer.incremental;
    if (answer.incremental) answer.bytes.clear();
    answers_[notify.target] = std::move(answer);
  } else if ((event.response_type & 0x7F) == XCB_PROPERTY_NOTIFY) {
    const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if (notify.state != XCB_PROPERTY_NEW_VALUE || !takesPieces_) return;
    for (auto& [target, answer] : answers_) {
      if (answer.incremental && !answer.complete && answer.property == notify.atom) {
        takePiece(answer);
      }
    }
  }
}

void XRequestor::takePiece(XAnswer& answer) {
  const XAnswer piece = takeProperty(answer.property);
  answer.type = piece.type;
  answer.format = piece.format;
  answer.bytes += piece.bytes;
  answer.complete = piece.bytes.empty();
}

}  // namespace quillmar
