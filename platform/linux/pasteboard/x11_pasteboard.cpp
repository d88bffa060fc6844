#include "platform/linux/pasteboard/x11_pasteboard.h"

#include <cstring>
#include <utility>
#include <vector>

namespace quillmar {

namespace {

/// After this time the wait for a busy server continues in the main loop.
constexpr auto serverTimeout = std::chrono::milliseconds(250);
/// Limit on a MULTIPLE request, in elements of 32 bits.
constexpr std::uint32_t maximumMultipleElements = 2 * 256;

}  // namespace

struct X11Pasteboard::Session {
  enum class Saving { no, awaitsTime, awaitsManager, over };

  Session(std::unique_ptr<X11Connection> opened)
      : connection(std::move(opened)),
        atoms(*connection),
        transfers(connection->xcb(), atoms.incr),
        window(connection->createHiddenWindow()) {}

  xcb_connection_t* xcb() const { return connection->xcb(); }

  std::unique_ptr<X11Connection> connection;
  SelectionAtoms atoms;
  SelectionTransfers transfers;
  xcb_window_t window;

  /// The text to copy as soon as the server has reported its time.
  std::shared_ptr<const std::string> next;
  /// Sequence number of the latest request for the server's time. Earlier events of the same
  /// property reply to earlier requests, or come from another program's writes.
  std::uint32_t timeRequest = 0;
  /// The contents that we offer while we own the selection.
  std::optional<SelectionContents> contents;
  /// Sequence number of the request that made us the owner. Earlier events are about a previous
  /// ownership.
  std::uint32_t ownedSince = 0;

  Saving saving = Saving::no;
  xcb_window_t manager = XCB_WINDOW_NONE;
};

X11Pasteboard::X11Pasteboard(std::string display, LogLine log)
    : display_(std::move(display)), log_(std::move(log)) {}

X11Pasteboard::~X11Pasteboard() = default;

void X11Pasteboard::setString(std::string text) {
  const auto shared = std::make_shared<const std::string>(std::move(text));
  // A broken connection is noticed only on use; the text then goes to a new one.
  for (int attempt = 0; attempt < 2; ++attempt) {
    if (const Result<void> connected = connect(); !connected) {
      log_("The text was not copied to the clipboard: " + connected.error().description + ".");
      return;
    }
    session_->next = shared;
    askForTime();
    session_->connection->handleEventsUntil([this] { return !session_->next; },
                                            std::chrono::steady_clock::now() + serverTimeout);
    if (session_) return;
  }
  log_("The text was not copied to the clipboard: the connection to the X display “" + display_ +
       "” was lost repeatedly.");
}

Result<void> X11Pasteboard::connect() {
  // The server may have gone away since the main loop last ran.
  if (session_ && !xcb_connection_has_error(session_->xcb())) return {};
  session_.reset();
  auto connection = X11Connection::open(
      display_,
      {[this](const xcb_generic_event_t& event) { handle(event); }, [this] { serverGone(); }});
  if (!connection) return connection.error();
  session_ = std::make_unique<Session>(std::move(connection).value());
  return {};
}

void X11Pasteboard::serverGone() {
  session_.reset();
}

void X11Pasteboard::handle(const xcb_generic_event_t& event) {
  switch (eventKind(event)) {
    case errorEventKind:
      // Only requests about another program's window can fail: the window is gone.
      windowGone(as<xcb_generic_error_t>(event).resource_id, event.full_sequence);
      break;
    case XCB_PROPERTY_NOTIFY:
      handleProperty(as<xcb_property_notify_event_t>(event), event.full_sequence);
      break;
    case XCB_SELECTION_REQUEST:
      handleRequest(as<xcb_selection_request_event_t>(event));
      break;
    case XCB_SELECTION_CLEAR:
      if (!comesBefore(event.full_sequence, session_->ownedSince)) session_->contents.reset();
      break;
    case XCB_SELECTION_NOTIFY:
      if (as<xcb_selection_notify_event_t>(event).selection == session_->atoms.clipboardManager) {
        session_->saving = Session::Saving::over;
      }
      break;
    case XCB_DESTROY_NOTIFY:
      windowGone(as<xcb_destroy_notify_event_t>(event).window, event.full_sequence);
      break;
    default:
      break;
  }
}

void X11Pasteboard::windowGone(xcb_window_t window, std::uint32_t sequence) {
  session_->transfers.windowGone(window, sequence);
  if (window == session_->manager) session_->saving = Session::Saving::over;
}

void X11Pasteboard::handleProperty(const xcb_property_notify_event_t& event,
                                   std::uint32_t sequence) {
  if (event.window != session_->window) {
    if (event.state == XCB_PROPERTY_DELETE) {
      session_->transfers.propertyDeleted(event.window, event.atom);
    }
  } else if (event.atom == session_->atoms.ownTimestamp && event.state == XCB_PROPERTY_NEW_VALUE) {
    if (!comesBefore(sequence, session_->timeRequest)) handleTime(event.time);
  }
}

void X11Pasteboard::askForTime() {
  // Appending nothing leaves the property unchanged, but the server reports a change with its time.
  const auto cookie =
      xcb_change_property(session_->xcb(), XCB_PROP_MODE_APPEND, session_->window,
                          session_->atoms.ownTimestamp, XCB_ATOM_INTEGER, 32, 0, nullptr);
  session_->timeRequest = cookie.sequence;
  xcb_flush(session_->xcb());
}

void X11Pasteboard::handleTime(xcb_timestamp_t time) {
  if (session_->next) takeOwnership(time);
  if (session_->saving == Session::Saving::awaitsTime) {
    xcb_convert_selection(session_->xcb(), session_->window, session_->atoms.clipboardManager,
                          session_->atoms.saveTargets, session_->atoms.ownSaveTargets, time);
    session_->saving = Session::Saving::awaitsManager;
  }
}

void X11Pasteboard::takeOwnership(xcb_timestamp_t time) {
  session_->contents.emplace(session_->atoms, std::exchange(session_->next, nullptr), time);
  const auto cookie =
      xcb_set_selection_owner(session_->xcb(), session_->window, session_->atoms.clipboard, time);
  session_->ownedSince = cookie.sequence;
  // A program that took the selection at a later time keeps it.
  if (!ownsSelection()) session_->contents.reset();
}

bool X11Pasteboard::ownsSelection() const {
  return session_->connection->selectionOwner(session_->atoms.clipboard) == session_->window;
}

void X11Pasteboard::handleRequest(const xcb_selection_request_event_t& request) {
  // Obsolete requestors leave the choice of the property to the owner.
  const xcb_atom_t property = request.property == XCB_ATOM_NONE ? request.target : request.property;
  const bool answered =
      mayAnswer(request) && (request.target == session_->atoms.multiple
                                 ? convertMultiple(request.requestor, request.property)
                                 : convert(request.requestor, request.target, property));
  xcb_selection_notify_event_t answer{};
  answer.response_type = XCB_SELECTION_NOTIFY;
  answer.time = request.time;
  answer.requestor = request.requestor;
  answer.selection = request.selection;
  answer.target = request.target;
  answer.property = answered ? property : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
  // The wire's events are 32 bytes long, whatever their kind uses.
  char wire[32] = {};
  static_assert(sizeof answer <= sizeof wire);
  std::memcpy(wire, &answer, sizeof answer);
  xcb_send_event(session_->xcb(), false, request.requestor, XCB_EVENT_MASK_NO_EVENT, wire);
}

bool X11Pasteboard::mayAnswer(const xcb_selection_request_event_t& request) const {
  return session_->contents && request.selection == session_->atoms.clipboard &&
         (request.time == XCB_CURRENT_TIME ||
          !comesBefore(request.time, session_->contents->since()));
}

bool X11Pasteboard::convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property) {
  const auto value = session_->contents->value(target);
  if (!value) return false;
  session_->transfers.send(requestor, property, *value);
  return true;
}

bool X11Pasteboard::convertMultiple(xcb_window_t requestor, xcb_atom_t property) {
  if (property == XCB_ATOM_NONE) return false;
  const auto cookie = xcb_get_property(session_->xcb(), false, requestor, property,
                                       XCB_GET_PROPERTY_TYPE_ANY, 0, maximumMultipleElements);
  const XcbPointer<xcb_get_property_reply_t> reply(
      xcb_get_property_reply(session_->xcb(), cookie, nullptr));
  if (!reply || reply->format != 32 || reply->bytes_after > 0) return false;
  const auto* elements = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
  std::vector<xcb_atom_t> pairs(elements, elements + reply->value_len);
  if (pairs.empty() || pairs.size() % 2 != 0) return false;
  for (std::size_t i = 0; i < pairs.size(); i += 2) {
    xcb_atom_t& answerTo = pairs[i + 1];
    const bool answered =
        answerTo != XCB_ATOM_NONE && answerTo != property && convert(requestor, pairs[i], answerTo);
    if (!answered) answerTo = XCB_ATOM_NONE;
  }
  xcb_change_property(session_->xcb(), XCB_PROP_MODE_REPLACE, requestor, property,
                      session_->atoms.atomPair, 32, static_cast<std::uint32_t>(pairs.size()),
                      pairs.data());
  return true;
}

void X11Pasteboard::saveForQuit(std::chrono::milliseconds timeout) {
  if (!session_ || (!session_->next && !session_->contents)) return;
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  auto& connection = *session_->connection;
  if (!connection.handleEventsUntil([this] { return !session_->next; }, deadline)) return;
  if (!session_->contents) return;

  const xcb_window_t manager = connection.selectionOwner(session_->atoms.clipboardManager);
  if (manager == XCB_WINDOW_NONE) return;
  // Its end ends the wait. A transfer to the same window may be under way.
  session_->manager = manager;
  const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(session_->xcb(), session_->manager, XCB_CW_EVENT_MASK, &events);

  const auto wanted = atomList(session_->contents->textTargets());
  xcb_change_property(session_->xcb(), XCB_PROP_MODE_REPLACE, session_->window,
                      session_->atoms.ownSaveTargets, wanted.type, wanted.format,
                      wanted.elementCount(), wanted.bytes->data());
  session_->saving = Session::Saving::awaitsTime;
  askForTime();
  const bool saved = connection.handleEventsUntil(
      [this] { return session_->saving == Session::Saving::over || !session_->contents; },
      deadline);
  if (!saved || !session_) return;
  session_->saving = Session::Saving::no;
  session_->manager = XCB_WINDOW_NONE;
}

}  // namespace quillmar
