#include "shortcuts/hot_key_manager.h"

#include <algorithm>
#include <utility>

#include "config/checked_arithmetic.h"
#include "platform/key_equivalent.h"

namespace quillmar {

HotKeyManager::HotKeyManager(Collaborators collaborators)
    : collaborators_(std::move(collaborators)) {}

HotKeyManager::~HotKeyManager() {
  unregisterAll();
  if (isHandlerInstalled_) collaborators_.hotKeys.installEventHandlers({});
}

HotKeyManager& HotKeyManager::shared() {
  static auto* manager = new HotKeyManager({});
  return *manager;
}

std::uint32_t HotKeyManager::hotKeyModifiersFor(std::uint64_t mask) {
  constexpr std::pair<std::uint64_t, std::uint32_t> mapping[] = {
      {modifiers::shift, hot_key_modifiers::shift},
      {modifiers::control, hot_key_modifiers::control},
      {modifiers::option, hot_key_modifiers::option},
      {modifiers::command, hot_key_modifiers::command},
  };
  std::uint32_t mapped = 0;
  for (const auto& [flag, bit] : mapping) {
    if ((mask & flag) != 0) mapped |= bit;
  }
  return mapped;
}

void HotKeyManager::reloadFromSettings() {
  unregisterAll();
  unregisteredHotKeys_.clear();
  installHandlerIfNeeded();
  for (const ItemInCategory& runnable : collaborators_.settings.allRunnableItems()) {
    const auto& shortcut = runnable.item.shortcut;
    if (shortcut && shortcut->isGlobal) registerHotKey(*shortcut, runnable.item);
  }
}

void HotKeyManager::unregisterAll() {
  for (const auto& [id, registration] : registrations_) {
    collaborators_.hotKeys.unregisterHotKey(registration.reference);
  }
  registrations_.clear();
}

void HotKeyManager::installHandlerIfNeeded() {
  if (isHandlerInstalled_) return;
  collaborators_.hotKeys.installEventHandlers({
      .pressed = [this](HotKeyID id, const Activation& activation) { fire(id.id, activation); },
      .refused = [this](HotKeyReference reference,
                        HotKeyStatus status) { refused(reference, status); },
      .refusalWithdrawn = [this] { reloadFromSettings(); },
  });
  isHandlerInstalled_ = true;
}

void HotKeyManager::registerHotKey(const KeyboardShortcut& shortcut, const MenuItem& item) {
  const auto reference = collaborators_.hotKeys.registerHotKey({
      .keyCode = shortcut.keyCode,
      .modifiers = hotKeyModifiersFor(shortcut.modifiers),
      .id = {signature, nextId_},
      .description = item.title,
  });
  if (!reference) {
    reportFailure({item.id, item.title, reference.error()});
    return;
  }
  registrations_[nextId_] = {reference.value(), item.id, item.title};
  nextId_ = checkedNextId(nextId_);
}

void HotKeyManager::fire(std::uint32_t id, const Activation& activation) {
  const auto found = registrations_.find(id);
  if (found == registrations_.end()) return;
  collaborators_.mainQueue.async([this, itemId = found->second.itemId, activation] {
    if (!handler) return;
    collaborators_.application.setActivation(activation);
    handler(itemId);
  });
}

void HotKeyManager::refused(HotKeyReference reference, HotKeyStatus status) {
  const auto found = std::ranges::find_if(
      registrations_, [&](const auto& entry) { return entry.second.reference == reference; });
  if (found == registrations_.end()) return;
  Registration registration = std::move(found->second);
  registrations_.erase(found);
  reportFailure({registration.itemId, registration.itemTitle, status});
}

void HotKeyManager::reportFailure(UnregisteredHotKey failure) {
  collaborators_.log("Could not register hotkey for item " + failure.itemId + ": " +
                     std::to_string(static_cast<std::int32_t>(failure.status)));
  unregisteredHotKeys_.push_back(std::move(failure));
}

}  // namespace quillmar
