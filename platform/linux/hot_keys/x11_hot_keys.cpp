#include "platform/linux/hot_keys/x11_hot_keys.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "platform/virtual_key_codes.h"

namespace quillmar {

namespace {

/// X key codes are those of evdev plus this.
constexpr std::uint32_t evdevOffset = 8;

}  // namespace

X11HotKeys::X11HotKeys(std::string display) : display_(std::move(display)) {}

X11HotKeys::~X11HotKeys() {
  if (cancelRemoval_) cancelRemoval_();
}

Result<HotKeyReference, HotKeyStatus> X11HotKeys::registerHotKey(const HotKeyRequest& request) {
  if (!connect()) return HotKeyStatus::serviceFailed;
  const HotKey hotKey{request.id, keysOf(request.keyCode), request.modifiers};
  if (hotKey.keys.empty() || !modifierMap_.bitsFor(hotKey.modifiers)) {
    return HotKeyStatus::noSuchKey;
  }
  // The server would let this client grab the same combination twice.
  for (const auto& [reference, other] : hotKeys_) {
    if (other.keys == hotKey.keys && other.modifiers == hotKey.modifiers) {
      return HotKeyStatus::keyTaken;
    }
  }
  if (!takeOver(hotKey)) {
    if (const auto failure = finishGrabs(hotKey, requestGrabs(hotKey))) return *failure;
  }
  const HotKeyReference reference{++lastReference_};
  hotKeys_.emplace(reference, hotKey);
  return reference;
}

void X11HotKeys::unregisterHotKey(HotKeyReference reference) {
  const auto found = hotKeys_.find(reference);
  if (found == hotKeys_.end()) return;
  unregistered_.push_back(std::move(found->second));
  hotKeys_.erase(found);
  if (cancelRemoval_) return;
  cancelRemoval_ = MainLoopTaskQueue::asyncAfter({}, [this] {
    cancelRemoval_ = {};
    removeUnregistered();
  });
}

bool X11HotKeys::takeOver(const HotKey& hotKey) {
  const auto bits = modifierMap_.bitsFor(hotKey.modifiers);
  for (auto other = unregistered_.begin(); other != unregistered_.end();) {
    if (other->keys == hotKey.keys && other->modifiers == hotKey.modifiers) {
      unregistered_.erase(other);
      return true;
    }
    const bool sharesGrab =
        modifierMap_.bitsFor(other->modifiers) == bits &&
        std::ranges::find_first_of(other->keys, hotKey.keys) != other->keys.end();
    if (sharesGrab) removeGrabs(*other);
    other = sharesGrab ? unregistered_.erase(other) : std::next(other);
  }
  return false;
}

void X11HotKeys::removeUnregistered() {
  for (const HotKey& hotKey : std::exchange(unregistered_, {})) removeGrabs(hotKey);
  if (connection_) xcb_flush(connection_->xcb());
}

bool X11HotKeys::connect() {
  if (connection_) return true;
  auto connection = X11Connection::open(
      display_, {.event = [this](const xcb_generic_event_t& event) { handle(event); },
                 .closed = [this] { connectionClosed(); }});
  if (!connection) return false;
  connection_ = std::move(connection).value();
  lastRelease_.reset();
  // The start and the end of each grab are changes of the root window's focus.
  const std::uint32_t events = XCB_EVENT_MASK_FOCUS_CHANGE;
  xcb_change_window_attributes(connection_->xcb(), connection_->root(), XCB_CW_EVENT_MASK, &events);
  modifierMap_ = X11ModifierMap::ofKeyboard(connection_->xcb());
  return true;
}

void X11HotKeys::connectionClosed() {
  connection_.reset();
  unregistered_.clear();
  for (const auto& [reference, hotKey] : std::exchange(hotKeys_, {})) {
    reportRefused(reference, HotKeyStatus::serviceFailed);
  }
}

void X11HotKeys::handle(const xcb_generic_event_t& event) {
  const auto released = std::exchange(lastRelease_, std::nullopt);
  switch (eventKind(event)) {
    case XCB_KEY_RELEASE:
      lastRelease_ = as<xcb_key_release_event_t>(event);
      break;
    case XCB_KEY_PRESS: {
      // A key that is held down is repeated as a release and a press with the same time. If the
      // user is that fast, the end of the grab comes between them.
      const auto& press = as<xcb_key_press_event_t>(event);
      const bool isRepeated =
          released && released->detail == press.detail && released->time == press.time;
      if (!isRepeated) handlePress(press);
      break;
    }
    case XCB_MAPPING_NOTIFY:
      if (as<xcb_mapping_notify_event_t>(event).request != XCB_MAPPING_POINTER) {
        handleKeyboardChange();
      }
      break;
    default:
      break;
  }
}

void X11HotKeys::handlePress(const xcb_key_press_event_t& press) {
  // The server has compared all modifiers, except for a key that is pressed while another is held.
  const std::uint16_t bits = press.state & modifierMap_.hotKeyBits();
  const auto found = std::find_if(hotKeys_.begin(), hotKeys_.end(), [&](const auto& entry) {
    const HotKey& hotKey = entry.second;
    return modifierMap_.bitsFor(hotKey.modifiers) == bits &&
           std::count(hotKey.keys.begin(), hotKey.keys.end(), press.detail) != 0;
  });
  if (found != hotKeys_.end()) reportPressed(found->second.id, {.timestamp = press.time});
}

void X11HotKeys::handleKeyboardChange() {
  const X11ModifierMap map = X11ModifierMap::ofKeyboard(connection_->xcb());
  if (map == modifierMap_) return;
  removeUnregistered();
  for (const auto& [reference, hotKey] : hotKeys_) removeGrabs(hotKey);
  modifierMap_ = map;
  std::vector<Cookies> cookies;
  cookies.reserve(hotKeys_.size());
  for (const auto& [reference, hotKey] : hotKeys_) cookies.push_back(requestGrabs(hotKey));
  std::vector<std::pair<HotKeyReference, HotKeyStatus>> failures;
  auto next = cookies.begin();
  for (const auto& [reference, hotKey] : hotKeys_) {
    if (const auto failure = finishGrabs(hotKey, *next++)) {
      failures.emplace_back(reference, *failure);
    }
  }
  for (const auto& [reference, failure] : failures) hotKeys_.erase(reference);
  for (const auto& [reference, failure] : failures) reportRefused(reference, failure);
}

std::vector<xcb_keycode_t> X11HotKeys::keysOf(std::uint32_t keyCode) const {
  const auto* setup = xcb_get_setup(connection_->xcb());
  std::vector<xcb_keycode_t> keys;
  for (const VirtualKey& key : virtualKeys()) {
    const std::uint32_t code = key.evdevCode + evdevOffset;
    if (key.code == keyCode && code >= setup->min_keycode && code <= setup->max_keycode) {
      keys.push_back(static_cast<xcb_keycode_t>(code));
    }
  }
  return keys;
}

X11HotKeys::Cookies X11HotKeys::requestGrabs(const HotKey& hotKey) {
  Cookies cookies;
  const auto bits = modifierMap_.bitsFor(hotKey.modifiers);
  if (!bits) return cookies;
  for (const xcb_keycode_t key : hotKey.keys) {
    for (const std::uint16_t locks : modifierMap_.lockCombinations()) {
      cookies.push_back(xcb_grab_key_checked(connection_->xcb(), false, connection_->root(),
                                             *bits | locks, key, XCB_GRAB_MODE_ASYNC,
                                             XCB_GRAB_MODE_ASYNC));
    }
  }
  return cookies;
}

std::optional<HotKeyStatus> X11HotKeys::finishGrabs(const HotKey& hotKey, const Cookies& cookies) {
  std::optional<HotKeyStatus> failure;
  // The first check waits for all requests.
  for (const auto cookie : cookies) {
    const XcbPointer<xcb_generic_error_t> error(xcb_request_check(connection_->xcb(), cookie));
    if (error) failure = static_cast<HotKeyStatus>(error->error_code);
  }
  if (xcb_connection_has_error(connection_->xcb())) return HotKeyStatus::serviceFailed;
  if (failure) {
    removeGrabs(hotKey);
    xcb_flush(connection_->xcb());
  }
  return failure;
}

void X11HotKeys::removeGrabs(const HotKey& hotKey) {
  const auto bits = modifierMap_.bitsFor(hotKey.modifiers);
  if (!bits) return;
  for (const xcb_keycode_t key : hotKey.keys) {
    for (const std::uint16_t locks : modifierMap_.lockCombinations()) {
      xcb_ungrab_key(connection_->xcb(), key, connection_->root(), *bits | locks);
    }
  }
}

}  // namespace quillmar
