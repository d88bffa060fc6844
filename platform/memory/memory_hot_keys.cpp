#include "platform/memory/memory_hot_keys.h"

#include <algorithm>
#include <utility>

namespace quillmar {

MemoryHotKeys::MemoryHotKeys(TaskQueue& mainQueue)
    : mainQueue_(mainQueue), self_(std::make_shared<MemoryHotKeys*>(this)) {}

Result<HotKeyReference, HotKeyStatus> MemoryHotKeys::registerHotKey(const HotKeyRequest& request) {
  if (error_) return *error_;
  const Combination combination = combinationOf(request);
  if (find(combination) != registered_.end()) return HotKeyStatus::keyTaken;
  const bool isTaken = otherPrograms_.contains(combination);
  if (isTaken && !refusesLater_) return HotKeyStatus::keyTaken;
  const auto reference = static_cast<HotKeyReference>(++lastReference_);
  registered_.emplace(reference, request);
  if (isTaken) refuseLater(reference, HotKeyStatus::keyTaken);
  return reference;
}

void MemoryHotKeys::unregisterHotKey(HotKeyReference reference) {
  registered_.erase(reference);
}

std::vector<HotKeyRequest> MemoryHotKeys::registered() const {
  std::vector<HotKeyRequest> requests;
  for (const auto& [reference, request] : registered_) requests.push_back(request);
  return requests;
}

void MemoryHotKeys::press(std::uint32_t keyCode, std::uint32_t modifiers, Activation activation) {
  const Combination combination{keyCode, modifiers};
  later([this, combination, activation = std::move(activation)] {
    keyDown(combination, activation);
    held_.reset();
  });
}

void MemoryHotKeys::hold(std::uint32_t keyCode, std::uint32_t modifiers) {
  constexpr int repetitions = 5;
  const Combination combination{keyCode, modifiers};
  for (int i = 0; i < repetitions; ++i) {
    later([this, combination] { keyDown(combination, {}); });
  }
  later([this] { held_.reset(); });
}

bool MemoryHotKeys::takeByOtherProgram(std::uint32_t keyCode, std::uint32_t modifiers) {
  const Combination combination{keyCode, modifiers};
  return find(combination) == registered_.end() && otherPrograms_.insert(combination).second;
}

void MemoryHotKeys::refuse(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyStatus status) {
  const auto found = find({keyCode, modifiers});
  if (found != registered_.end()) refuseLater(found->first, status);
}

void MemoryHotKeys::withdrawRefusal() {
  later([this] { reportRefusalWithdrawn(); });
}

void MemoryHotKeys::sendPressed(HotKeyID id, Activation activation) {
  later([this, id, activation = std::move(activation)] { reportPressed(id, activation); });
}

MemoryHotKeys::Combination MemoryHotKeys::combinationOf(const HotKeyRequest& request) {
  return {request.keyCode, request.modifiers};
}

std::map<HotKeyReference, HotKeyRequest>::const_iterator MemoryHotKeys::find(
    Combination combination) const {
  return std::ranges::find_if(
      registered_, [&](const auto& entry) { return combinationOf(entry.second) == combination; });
}

void MemoryHotKeys::keyDown(Combination combination, const Activation& activation) {
  if (held_ == combination) return;
  held_ = combination;
  if (otherPrograms_.contains(combination)) return;
  const auto found = find(combination);
  if (found != registered_.end()) reportPressed(HotKeyID(found->second.id), activation);
}

void MemoryHotKeys::refuseLater(HotKeyReference reference, HotKeyStatus status) {
  later([this, reference, status] {
    if (registered_.erase(reference) > 0) reportRefused(reference, status);
  });
}

void MemoryHotKeys::later(std::function<void()> task) {
  mainQueue_.async([weakSelf = std::weak_ptr(self_), task = std::move(task)] {
    if (const auto self = weakSelf.lock()) task();
  });
}

}  // namespace quillmar
