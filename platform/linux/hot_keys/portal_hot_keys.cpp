#include "platform/linux/hot_keys/portal_hot_keys.h"

#include <algorithm>
#include <utility>

#include "platform/linux/bus/session_bus.h"

namespace quillmar {

namespace {

constexpr std::uint32_t knownModifiers = hot_key_modifiers::command | hot_key_modifiers::shift |
                                         hot_key_modifiers::option | hot_key_modifiers::control;

KeyCombination combinationOf(const HotKeyRequest& request) {
  return {request.keyCode, request.modifiers & knownModifiers};
}

}  // namespace

PortalHotKeys::Timing PortalHotKeys::standardTiming() {
  using std::chrono::seconds;
  return {.recoveryDelays = {seconds(0), seconds(1), seconds(5), seconds(25)},
          .stableAfter = seconds(60),
          .responseTimeout = seconds(25),
          .now = std::chrono::steady_clock::now};
}

PortalHotKeys::PortalHotKeys(const Environment& environment, Timing timing)
    : environment_(environment),
      busAddress_(sessionBusAddress(environment)),
      timing_(std::move(timing)) {}

PortalHotKeys::~PortalHotKeys() {
  if (cancelUpdate_) cancelUpdate_();
  if (cancelRecovery_) cancelRecovery_();
}

Result<HotKeyReference, HotKeyStatus> PortalHotKeys::registerHotKey(const HotKeyRequest& request) {
  if (!busAddress_) return HotKeyStatus::noService;
  const KeyCombination keys = combinationOf(request);
  // Before the keymap is known, keys that the keyboard lacks are refused later.
  if (!(symbols_ ? symbols_->contains(keys.keyCode) : isShortcutKey(keys.keyCode))) {
    return HotKeyStatus::noSuchKey;
  }
  forgetRefusedKeys();
  const HotKeyReference reference{++lastReference_};
  if (!registrations_.try_emplace(keys, Registration{reference, request.id, request.description})
           .second) {
    return HotKeyStatus::keyTaken;
  }
  updateLater();
  return reference;
}

void PortalHotKeys::unregisterHotKey(HotKeyReference reference) {
  forgetRefusedKeys();
  const auto erased = std::erase_if(
      registrations_, [&](const auto& entry) { return entry.second.reference == reference; });
  if (erased > 0) updateLater();
}

void PortalHotKeys::keymapChanged(const std::optional<std::string>& keymap) {
  KeySymbolTable symbols = keymap ? keySymbolsOfKeymap(*keymap) : KeySymbolTable();
  if (symbols.empty()) symbols = keySymbolsOfLayout("us");
  if (symbols == symbols_) return;
  symbols_ = std::move(symbols);
  updateLater();
}

bool PortalHotKeys::isSettled() const {
  const bool waitsForKeymap = !symbols_ && !registrations_.empty();
  return !waitsForKeymap && !cancelUpdate_ && !cancelRecovery_ && !isClosing_ &&
         (!session_ || isStarted_);
}

void PortalHotKeys::updateLater() {
  if (cancelUpdate_) return;
  cancelUpdate_ = MainLoopTaskQueue::asyncAfter({}, [this] {
    cancelUpdate_ = nullptr;
    update();
  });
}

void PortalHotKeys::update() {
  if (!keymap_ && !registrations_.empty()) {
    keymap_ = std::make_unique<WaylandKeymap>(
        environment_, [this](const std::optional<std::string>& keymap) { keymapChanged(keymap); });
  }
  // What follows these takes the current registrations.
  if (!symbols_ || isClosing_ || cancelRecovery_) return;
  if (!session_) {
    const bool hasHotKey = std::ranges::any_of(
        registrations_, [](const auto& entry) { return !entry.second.isRefused; });
    if (hasHotKey) startSession();
  } else if (registeredKeys() != sent_) {
    replaceSession();
  } else if (isStarted_) {
    repeatRefusals();
  }
}

void PortalHotKeys::repeatRefusals() {
  const auto mayBeGrantedNow = [&](const auto& refusal) {
    // The other program may have freed the key.
    return (refusal.second == HotKeyStatus::keyTaken && session_->isSilent()) ||
           refusal.second == HotKeyStatus::serviceFailed;
  };
  if (std::ranges::any_of(refused_, mayBeGrantedNow)) return replaceSession();
  refuse(refused_);
}

void PortalHotKeys::replaceSession() {
  isClosing_ = true;
  session_->close([this] {
    isClosing_ = false;
    startSession();
  });
}

void PortalHotKeys::startSession() {
  sent_ = registeredKeys();
  refused_.clear();
  held_.clear();
  isStarted_ = false;
  PortalSession::Shortcuts shortcuts;
  for (const auto& [keys, registration] : registrations_) {
    shortcuts[keys] = {registration.description, sent_[keys]};
  }
  session_ = std::make_unique<PortalSession>(
      *busAddress_, std::move(shortcuts), timing_.responseTimeout,
      PortalSession::Handlers{
          .started =
              [this](PortalSession::Refusals refused) { sessionStarted(std::move(refused)); },
          .ended = [this] { sessionEnded(); },
          .activated = [this](const KeyCombination& keys,
                              const Activation& activation) { pressed(keys, activation); },
          .deactivated = [this](const KeyCombination& keys) { held_.release(keys, timing_.now()); },
          .refusalsChanged =
              [this](PortalSession::Refusals refused) {
                refused_ = std::move(refused);
                refuse(refused_);
              },
      });
}

void PortalHotKeys::sessionStarted(PortalSession::Refusals refused) {
  if (sent_.empty()) {
    session_.reset();
    return;
  }
  isStarted_ = true;
  startedAt_ = timing_.now();
  refused_ = std::move(refused);
  refuse(refused_);
}

void PortalHotKeys::sessionEnded() {
  const auto now = timing_.now();
  const bool wasStable = isStarted_ && now - *startedAt_ >= timing_.stableAfter;
  session_.reset();
  isStarted_ = false;
  if (wasStable) attempts_ = 0;
  if (attempts_ == timing_.recoveryDelays.size()) {
    return refuseAll(startedAt_ ? HotKeyStatus::serviceFailed : HotKeyStatus::noService);
  }
  cancelRecovery_ = MainLoopTaskQueue::asyncAfter(timing_.recoveryDelays[attempts_++], [this] {
    cancelRecovery_ = nullptr;
    update();
  });
}

void PortalHotKeys::pressed(const KeyCombination& keys, const Activation& activation) {
  const bool isNewPress = held_.press(keys, timing_.now());
  const auto found = registrations_.find(keys);
  if (!isNewPress || found == registrations_.end() || found->second.isRefused) return;
  reportPressed(found->second.id, activation);
}

void PortalHotKeys::refuseAll(HotKeyStatus status) {
  PortalSession::Refusals refused;
  for (const auto& [keys, registration] : registrations_) refused[keys] = status;
  refuse(refused);
}

void PortalHotKeys::refuse(const PortalSession::Refusals& refused) {
  // In the order of their registration.
  std::map<HotKeyReference, HotKeyStatus> references;
  bool isWithdrawn = false;
  for (auto& [keys, registration] : registrations_) {
    const bool wasRefused = registration.isRefused;
    const auto refusal = refused.find(keys);
    if (refusal == refused.end()) {
      isWithdrawn = isWithdrawn || wasRefused;
    } else if (!wasRefused) {
      registration.isRefused = true;
      references[registration.reference] = refusal->second;
    }
  }
  for (const auto& [reference, status] : references) reportRefused(reference, status);
  if (isWithdrawn) reportRefusalWithdrawn();
}

void PortalHotKeys::forgetRefusedKeys() {
  std::erase_if(registrations_, [](const auto& entry) { return entry.second.isRefused; });
}

PortalHotKeys::SymbolsOfKeys PortalHotKeys::registeredKeys() const {
  SymbolsOfKeys registered;
  for (const auto& [keys, registration] : registrations_) {
    const auto symbols = symbols_->find(keys.keyCode);
    registered[keys] = symbols == symbols_->end() ? KeySymbols{} : symbols->second;
  }
  return registered;
}

}  // namespace quillmar
