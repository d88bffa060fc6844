// A clipboard manager for tests: it owns CLIPBOARD_MANAGER, and when it is asked to save the
// clipboard it copies its UTF8_STRING and becomes the clipboard's owner itself. Its argument says
// how: "save" does just that, "hang" never answers, "vanish" exits instead of answering.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include <unistd.h>
#include <xcb/xcb.h>

namespace {

xcb_connection_t* connection = nullptr;
xcb_window_t window = XCB_WINDOW_NONE;
std::string text;

xcb_atom_t atom(const char* name) {
  const auto cookie =
      xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
  auto* reply = xcb_intern_atom_reply(connection, cookie, nullptr);
  const xcb_atom_t value = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
  std::free(reply);
  return value;
}

/// The bytes of our property, which is deleted; `type` gets its type.
std::string takeProperty(xcb_atom_t property, xcb_atom_t& type) {
  const auto cookie =
      xcb_get_property(connection, 1, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, 0x1FFFFFFF);
  auto* reply = xcb_get_property_reply(connection, cookie, nullptr);
  type = reply->type;
  std::string bytes(static_cast<const char*>(xcb_get_property_value(reply)),
                    xcb_get_property_value_length(reply));
  std::free(reply);
  return bytes;
}

void answer(const xcb_selection_request_event_t& request, bool answered) {
  xcb_selection_notify_event_t notify{};
  notify.response_type = XCB_SELECTION_NOTIFY;
  notify.time = request.time;
  notify.requestor = request.requestor;
  notify.selection = request.selection;
  notify.target = request.target;
  notify.property = answered ? request.property : xcb_atom_t{XCB_ATOM_NONE};
  char wire[32] = {};
  std::memcpy(wire, &notify, sizeof notify);
  xcb_send_event(connection, 0, request.requestor, 0, wire);
  xcb_flush(connection);
}

/// Waits for the next event of the kind; others are lost, which does for one client at a time.
template <class Event>
Event awaitEvent(std::uint8_t kind) {
  while (xcb_generic_event_t* event = xcb_wait_for_event(connection)) {
    const bool found = (event->response_type & 0x7F) == kind;
    Event copy{};
    if (found) std::memcpy(&copy, event, sizeof copy);
    std::free(event);
    if (found) return copy;
  }
  std::exit(1);
}

std::string copyClipboard(xcb_timestamp_t time) {
  const xcb_atom_t property = atom("COPIED");
  xcb_convert_selection(connection, window, atom("CLIPBOARD"), atom("UTF8_STRING"), property, time);
  xcb_flush(connection);
  awaitEvent<xcb_selection_notify_event_t>(XCB_SELECTION_NOTIFY);
  xcb_atom_t type = XCB_ATOM_NONE;
  std::string copied = takeProperty(property, type);
  if (type != atom("INCR")) return copied;
  copied.clear();
  while (true) {
    const auto event = awaitEvent<xcb_property_notify_event_t>(XCB_PROPERTY_NOTIFY);
    if (event.atom != property || event.state != XCB_PROPERTY_NEW_VALUE) continue;
    const std::string piece = takeProperty(property, type);
    if (piece.empty() && type == atom("INCR")) continue;
    if (piece.empty()) return copied;
    copied += piece;
  }
}

void serve(const xcb_selection_request_event_t& request) {
  const bool isText = request.target == atom("UTF8_STRING");
  if (isText) {
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                        request.target, 8, static_cast<std::uint32_t>(text.size()), text.data());
  }
  answer(request, isText);
}

}  // namespace

int main(int, char** arguments) {
  const std::string behaviour = arguments[1];
  connection = xcb_connect(nullptr, nullptr);
  if (xcb_connection_has_error(connection)) return 1;
  window = xcb_generate_id(connection);
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(connection, 0, window,
                    xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root, 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  xcb_set_selection_owner(connection, window, atom("CLIPBOARD_MANAGER"), XCB_CURRENT_TIME);
  // A reply means that the server has come so far.
  const xcb_atom_t saveTargets = atom("SAVE_TARGETS");
  if (write(3, "ready\n", 6) != 6) return 1;

  while (true) {
    const auto request = awaitEvent<xcb_selection_request_event_t>(XCB_SELECTION_REQUEST);
    if (request.target != saveTargets) {
      serve(request);
      continue;
    }
    if (behaviour == "vanish") return 0;
    if (behaviour == "hang") continue;
    text = copyClipboard(request.time);
    xcb_set_selection_owner(connection, window, atom("CLIPBOARD"), XCB_CURRENT_TIME);
    answer(request, true);
  }
}
