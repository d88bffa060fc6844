// Makes the global shortcuts of items work in all programs. Registers them as hot keys and passes
// the id of the item whose hot key was pressed to a handler. Main thread.

#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "config/settings_manager.h"
#include "platform/application.h"
#include "platform/hot_keys.h"
#include "platform/log.h"
#include "platform/platform.h"
#include "platform/task_queue.h"
#include "shortcuts/unregistered_hot_key.h"

namespace quillmar {

/// The bytes of the characters, the first one in the most significant byte.
constexpr std::uint32_t fourCharacterCode(std::string_view characters) {
  std::uint32_t code = 0;
  for (const char character : characters) {
    code = (code << 8) + static_cast<unsigned char>(character);
  }
  return code;
}

class HotKeyManager {
 public:
  /// Not owned; all must outlive the manager. Tasks on the main queue refer to the manager.
  struct Collaborators {
    const SettingsManager& settings = SettingsManager::shared();
    HotKeys& hotKeys = Platform::shared().hotKeys;
    Application& application = Platform::shared().application;
    TaskQueue& mainQueue = Platform::shared().queues.mainQueue();
    LogLine log = logToStandardOutput;
  };

  struct Registration {
    HotKeyReference reference{};
    std::string itemId;
    std::string itemTitle;

    bool operator==(const Registration&) const = default;
  };

  /// Registers nothing yet.
  explicit HotKeyManager(Collaborators collaborators);
  /// Unregisters everything.
  ~HotKeyManager();

  HotKeyManager(const HotKeyManager&) = delete;
  HotKeyManager& operator=(const HotKeyManager&) = delete;

  /// The process-wide manager, created on first use from the installed platform.
  static HotKeyManager& shared();

  /// Identifies the hot keys of this application.
  static constexpr std::uint32_t signature = fourCharacterCode("QmRk");

  /// Maps the modifiers of a stored shortcut (quillmar::modifiers) to bits of
  /// quillmar::hot_key_modifiers. Ignores other bits.
  static std::uint32_t hotKeyModifiersFor(std::uint64_t mask);

  /// Called with the id of the item whose hot key was pressed, in a task of the main queue. The
  /// application's activation is that of the key press. May be empty.
  std::function<void(const std::string& itemId)> handler;

  /// Unregisters all hot keys, then registers those of the current document.
  void reloadFromSettings();

  void unregisterAll();

  /// What is registered, by hot-key id. Ids are never used again.
  const std::map<std::uint32_t, Registration>& registrations() const { return registrations_; }

  /// The id of the next registration.
  std::uint32_t nextId() const { return nextId_; }

  /// The items of the last reload whose hot key is not registered, in the order in which the
  /// registrations failed.
  const std::vector<UnregisteredHotKey>& unregisteredHotKeys() const {
    return unregisteredHotKeys_;
  }

 private:
  void installHandlerIfNeeded();
  void registerHotKey(const KeyboardShortcut& shortcut, const MenuItem& item);
  /// Runs the handler for the registration; does nothing if there is none with this id.
  void fire(std::uint32_t id, const Activation& activation);
  /// The desktop refused a hot key after it was registered.
  void refused(HotKeyReference reference, HotKeyStatus status);
  void reportFailure(UnregisteredHotKey failure);

  Collaborators collaborators_;
  std::map<std::uint32_t, Registration> registrations_;
  std::uint32_t nextId_ = 1;
  bool isHandlerInstalled_ = false;
  std::vector<UnregisteredHotKey> unregisteredHotKeys_;
};

}  // namespace quillmar
