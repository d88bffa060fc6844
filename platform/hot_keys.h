// Hot keys: key combinations that work while any program has the keyboard. Main thread.

#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include "platform/application.h"
#include "platform/result.h"

namespace quillmar {

/// Bits of a hot key's modifiers. They differ from those of key presses (quillmar::modifiers).
/// `option` is the Alt key, `command` the Super key.
namespace hot_key_modifiers {
inline constexpr std::uint32_t command = 0x0100;
inline constexpr std::uint32_t shift = 0x0200;
inline constexpr std::uint32_t option = 0x0800;
inline constexpr std::uint32_t control = 0x1000;
}  // namespace hot_key_modifiers

/// Identifies a registered hot key in events. The application chooses both halves.
struct HotKeyID {
  std::uint32_t signature = 0;
  std::uint32_t id = 0;

  bool operator==(const HotKeyID&) const = default;
};

/// Identifies a registered hot key to the service that registered it.
enum class HotKeyReference : std::uint64_t {};

/// Why a hot key is not registered. Positive values are X11 error codes (X11/X.h); a service other
/// than an X server uses `keyTaken` for the same meaning.
enum class HotKeyStatus : std::int32_t {
  /// Another program or another hot key has the combination (BadAccess).
  keyTaken = 10,
  /// The keyboard has no such key, or the desktop cannot use it for hot keys.
  noSuchKey = -1,
  /// The session has no service for hot keys.
  noService = -2,
  /// The desktop or the user refused the combination.
  notGranted = -3,
  /// The service failed or does not answer.
  serviceFailed = -4,
};

struct HotKeyRequest {
  /// Virtual key code (platform/virtual_key_codes.h).
  std::uint32_t keyCode = 0;
  /// Bits of hot_key_modifiers.
  std::uint32_t modifiers = 0;
  HotKeyID id;
  /// What the key does, for settings windows of the desktop that list hot keys. UTF-8.
  std::string description;
};

class HotKeys {
 public:
  struct EventHandlers {
    /// A hot key was pressed. A key that is held down is reported once. `activation` allows the
    /// program to show a window in response.
    std::function<void(HotKeyID id, const Activation& activation)> pressed;
    /// A registered hot key does not work, as the desktop reported later. The service has already
    /// unregistered it.
    std::function<void(HotKeyReference reference, HotKeyStatus status)> refused;
    /// The desktop would grant a hot key that was refused later. It works once it is registered
    /// again.
    std::function<void()> refusalWithdrawn;
  };

  virtual ~HotKeys() = default;

  /// Registers the combination until unregisterHotKey(). Two hot keys cannot have the same one.
  /// A service that has to ask the desktop returns a reference and may report `refused` later.
  virtual Result<HotKeyReference, HotKeyStatus> registerHotKey(const HotKeyRequest& request) = 0;

  /// Frees the combination for other programs. Does nothing if the reference is not registered.
  virtual void unregisterHotKey(HotKeyReference reference) = 0;

  /// Events are reported to these handlers, never during a call of this interface. Events that
  /// arrive without handlers are lost.
  void installEventHandlers(EventHandlers handlers) { handlers_ = std::move(handlers); }

 protected:
  void reportPressed(HotKeyID id, const Activation& activation) const {
    if (handlers_.pressed) handlers_.pressed(id, activation);
  }
  void reportRefused(HotKeyReference reference, HotKeyStatus status) const {
    if (handlers_.refused) handlers_.refused(reference, status);
  }
  void reportRefusalWithdrawn() const {
    if (handlers_.refusalWithdrawn) handlers_.refusalWithdrawn();
  }

 private:
  EventHandlers handlers_;
};

}  // namespace quillmar
