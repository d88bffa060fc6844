#include "platform/qt/windows/keyboard_layout.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QKeyEvent>

#include <xkbcommon/xkbcommon-x11.h>

#include "platform/qt/windows/wayland_keyboard.h"
#include "platform/qt/windows/x11_requests.h"
#include "platform/qt/windows/xkb_pointers.h"

namespace quillmar {

namespace {

/// The keymap of the X server. It is read when it is needed, and again after it has changed.
class X11Keymap final : public QAbstractNativeEventFilter {
 public:
  explicit X11Keymap(xcb_connection_t* connection)
      : connection_(connection), context_(xkb_context_new(XKB_CONTEXT_NO_FLAGS)) {
    xkb_x11_setup_xkb_extension(connection_, XKB_X11_MIN_MAJOR_XKB_VERSION,
                                XKB_X11_MIN_MINOR_XKB_VERSION, XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS,
                                nullptr, nullptr, &firstEvent_, nullptr);
    QCoreApplication::instance()->installNativeEventFilter(this);
  }

  /// Null if the server does not answer.
  xkb_keymap* keymap() {
    if (!keymap_) {
      keymap_.reset(xkb_x11_keymap_new_from_device(context_.get(), connection_,
                                                   xkb_x11_get_core_keyboard_device_id(connection_),
                                                   XKB_KEYMAP_COMPILE_NO_FLAGS));
    }
    return keymap_.get();
  }

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/) override {
    // The toolkit has selected these events.
    constexpr int newKeyboard = 0;
    constexpr int newMap = 1;
    if (eventType != "xcb_generic_event_t") return false;
    const auto& event = *static_cast<const xcb_generic_event_t*>(message);
    // The kind of an event of this extension follows the number of the extension.
    const bool isNew = event.pad0 == newKeyboard || event.pad0 == newMap;
    if (x11EventType(event) == firstEvent_ && isNew) keymap_.reset();
    return false;
  }

 private:
  xcb_connection_t* connection_;
  XkbContextPointer context_;
  XkbKeymapPointer keymap_;
  std::uint8_t firstEvent_ = 0;
};

/// Null if the toolkit's display is no X server.
X11Keymap* x11Keymap() {
  // Never destroyed: the toolkit calls it until the process ends.
  static X11Keymap* const keymap = [] {
    xcb_connection_t* const connection = x11Connection();
    return connection == nullptr ? nullptr : new X11Keymap(connection);
  }();
  return keymap;
}

/// The state of an X11 event has the number of the layout in these bits.
xkb_layout_index_t layoutOf(quint32 state) {
  return (state >> 13U) & 3U;
}

}  // namespace

void followKeyboardLayout() {
  x11Keymap();
  WaylandKeyboard::shared();
}

std::optional<xkb_keysym_t> keysymWithoutModifiers(const QKeyEvent& event) {
  xkb_keymap* keymap = nullptr;
  xkb_layout_index_t layout = 0;
  if (X11Keymap* const x11 = x11Keymap()) {
    keymap = x11->keymap();
    layout = layoutOf(event.nativeModifiers());
  } else if (const WaylandKeyboard* const wayland = WaylandKeyboard::shared()) {
    keymap = wayland->keymap();
    layout = wayland->layout();
  }
  // An event of an input method has no key.
  if (keymap == nullptr || event.nativeScanCode() == 0) return {};
  return keysymWithoutModifiers(*keymap, event.nativeScanCode(), layout);
}

xkb_keysym_t keysymWithoutModifiers(xkb_keymap& keymap, xkb_keycode_t key,
                                    xkb_layout_index_t layout) {
  const XkbStatePointer state(xkb_state_new(&keymap));
  xkb_state_update_mask(state.get(), 0, 0, 0, 0, 0, layout);
  const xkb_keysym_t keysym = xkb_state_key_get_one_sym(state.get(), key);
  const bool movesCursor = keysym >= XKB_KEY_KP_Home && keysym <= XKB_KEY_KP_Delete;
  const xkb_mod_index_t numLock = xkb_keymap_mod_get_index(&keymap, XKB_MOD_NAME_NUM);
  if (!movesCursor || numLock == XKB_MOD_INVALID) return keysym;
  xkb_state_update_mask(state.get(), 0, 0, xkb_mod_mask_t{1} << numLock, 0, 0, layout);
  return xkb_state_key_get_one_sym(state.get(), key);
}

}  // namespace quillmar
