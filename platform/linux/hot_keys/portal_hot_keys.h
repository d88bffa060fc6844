// Hot keys of a Wayland session, through the portal org.freedesktop.portal.GlobalShortcuts.
//
// The portal takes a whole set of shortcuts at once. Registrations and unregistrations of one turn
// of the main loop are collected, and nothing is sent if the set of combinations stays the same. A
// combination that the desktop does not grant is reported later. All calls are asynchronous, and
// nothing is sent while no hot key is registered.
//
// The portal knows keys by what they type. A hot key stays on its physical key: if the keyboard
// layout changes, the set is sent again.

#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/environment.h"
#include "platform/hot_keys.h"
#include "platform/linux/hot_keys/held_keys.h"
#include "platform/linux/hot_keys/key_symbols.h"
#include "platform/linux/hot_keys/portal_session.h"
#include "platform/linux/hot_keys/wayland_keymap.h"
#include "platform/linux/processes/main_loop_task_queue.h"

namespace quillmar {

class PortalHotKeys final : public HotKeys {
 public:
  struct Timing {
    /// Delays before each further attempt to start a session, when one could not be started or has
    /// ended. After the last one the hot keys are refused.
    std::vector<std::chrono::milliseconds> recoveryDelays;
    /// After a session has worked this long, all attempts are available again.
    std::chrono::milliseconds stableAfter;
    /// Time for the portal to respond to a request that asks the user nothing.
    std::chrono::milliseconds responseTimeout;
    std::function<std::chrono::steady_clock::time_point()> now;
  };

  static Timing standardTiming();

  explicit PortalHotKeys(const Environment& environment, Timing timing = standardTiming());
  ~PortalHotKeys() override;
  PortalHotKeys(const PortalHotKeys&) = delete;
  PortalHotKeys& operator=(const PortalHotKeys&) = delete;

  Result<HotKeyReference, HotKeyStatus> registerHotKey(const HotKeyRequest& request) override;
  void unregisterHotKey(HotKeyReference reference) override;

  /// True if the desktop has answered to all registrations and unregistrations.
  bool isSettled() const;

 private:
  /// The symbols are empty if the keyboard does not have the key.
  using SymbolsOfKeys = std::map<KeyCombination, KeySymbols>;

  struct Registration {
    HotKeyReference reference;
    HotKeyID id;
    std::string description;
    /// The owner has been told. The combination stays in the session until the owner registers or
    /// unregisters hot keys: a session with another set would ask the user again, and KDE would
    /// forget that the user has removed the key.
    bool isRefused = false;
  };

  void keymapChanged(const std::optional<std::string>& keymap);
  void updateLater();
  void update();
  void startSession();
  void replaceSession();
  void sessionStarted(PortalSession::Refusals refused);
  void sessionEnded();
  void pressed(const KeyCombination& keys, const Activation& activation);
  void repeatRefusals();
  void refuse(const PortalSession::Refusals& refused);
  void refuseAll(HotKeyStatus status);
  void forgetRefusedKeys();
  SymbolsOfKeys registeredKeys() const;

  Environment environment_;
  std::optional<std::string> busAddress_;
  Timing timing_;
  std::map<KeyCombination, Registration> registrations_;
  std::uint64_t lastReference_ = 0;
  MainLoopTaskQueue::Cancel cancelUpdate_;

  /// Created with the first hot key.
  std::unique_ptr<WaylandKeymap> keymap_;
  /// Absent until the compositor has sent its keymap.
  std::optional<KeySymbolTable> symbols_;

  std::unique_ptr<PortalSession> session_;
  /// The combinations of the session.
  SymbolsOfKeys sent_;
  PortalSession::Refusals refused_;
  HeldKeys<KeyCombination> held_;
  bool isStarted_ = false;
  bool isClosing_ = false;

  /// Pending attempt to start a session again.
  MainLoopTaskQueue::Cancel cancelRecovery_;
  std::size_t attempts_ = 0;
  /// When the last session started; absent if none ever did.
  std::optional<std::chrono::steady_clock::time_point> startedAt_;
};

}  // namespace quillmar
