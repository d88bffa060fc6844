// Hot keys of an X11 session: passive grabs of keys on the root window. Main thread.
//
// A hot key stays on its physical key in every layout. Each combination of lock modifiers needs a
// grab of its own. The server removes all grabs when the connection closes, so none outlives the
// process. A hot key that is unregistered and, before the next iteration of the main loop,
// registered again keeps its grabs: after a change of the document most hot keys are, and no press
// is lost in between. Under Xwayland grabs do not see keys that are typed into Wayland windows; use
// another service there.

#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <xcb/xcb.h>

#include "platform/hot_keys.h"
#include "platform/linux/hot_keys/x11_modifier_map.h"
#include "platform/linux/processes/main_loop_task_queue.h"
#include "platform/linux/x11/x11_connection.h"
#include "platform/result.h"

namespace quillmar {

class X11HotKeys final : public HotKeys {
 public:
  /// `display` is named as in the variable DISPLAY. Connects on the first registration and stays
  /// connected. If the server goes away, all hot keys are refused; the next registration connects
  /// again.
  explicit X11HotKeys(std::string display);
  ~X11HotKeys() override;

  X11HotKeys(const X11HotKeys&) = delete;
  X11HotKeys& operator=(const X11HotKeys&) = delete;

  /// Waits for the server, unless the hot key has just been unregistered.
  Result<HotKeyReference, HotKeyStatus> registerHotKey(const HotKeyRequest& request) override;
  /// Removes the grabs in the next iteration of the main loop.
  void unregisterHotKey(HotKeyReference reference) override;

 private:
  struct HotKey {
    HotKeyID id;
    std::vector<xcb_keycode_t> keys;
    /// Bits of hot_key_modifiers.
    std::uint32_t modifiers = 0;
  };
  using Cookies = std::vector<xcb_void_cookie_t>;

  bool connect();
  void connectionClosed();
  void handle(const xcb_generic_event_t& event);
  void handlePress(const xcb_key_press_event_t& press);
  void handleKeyboardChange();

  /// The X key codes of a virtual key code, without those that this keyboard cannot have.
  std::vector<xcb_keycode_t> keysOf(std::uint32_t keyCode) const;

  /// Requests the grabs of the hot key: none if the keyboard lacks one of the modifiers.
  Cookies requestGrabs(const HotKey& hotKey);
  /// Waits for the results. If a grab failed, removes all grabs of the hot key.
  std::optional<HotKeyStatus> finishGrabs(const HotKey& hotKey, const Cookies& cookies);
  void removeGrabs(const HotKey& hotKey);

  /// Takes the grabs of an unregistered hot key with the same combination. False if there is none;
  /// then none of the unregistered hot keys has a grab in common with this one.
  bool takeOver(const HotKey& hotKey);
  void removeUnregistered();

  std::string display_;
  /// Null while not connected.
  std::unique_ptr<X11Connection> connection_;
  X11ModifierMap modifierMap_;
  std::map<HotKeyReference, HotKey> hotKeys_;
  /// Those that are unregistered but still have their grabs.
  std::vector<HotKey> unregistered_;
  MainLoopTaskQueue::Cancel cancelRemoval_;
  std::uint64_t lastReference_ = 0;
  /// The release of a key, if that was the last event.
  std::optional<xcb_key_release_event_t> lastRelease_;
};

}  // namespace quillmar
