// Hot keys in memory. Tests press combinations as a user would, and let other programs take them.
// Main thread.

#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "platform/hot_keys.h"
#include "platform/task_queue.h"

namespace quillmar {

class MemoryHotKeys final : public HotKeys {
 public:
  /// Events are reported in tasks of `mainQueue`, which must outlive this object.
  explicit MemoryHotKeys(TaskQueue& mainQueue);

  Result<HotKeyReference, HotKeyStatus> registerHotKey(const HotKeyRequest& request) override;
  void unregisterHotKey(HotKeyReference reference) override;

  // Behaviour of the service.

  /// If set, later registrations fail with this status.
  void setError(std::optional<HotKeyStatus> error) { error_ = error; }

  /// If true, a combination that another program holds is refused later, by an event, as by a
  /// service that must ask the desktop. If false (the default), the registration fails.
  void setRefusesLater(bool refusesLater) { refusesLater_ = refusesLater; }

  // State.

  /// What is registered, in the order of registration.
  std::vector<HotKeyRequest> registered() const;

  // Events from the user, other programs and the desktop.

  /// Presses and releases the combination. Reported if it is registered when the event arrives.
  void press(std::uint32_t keyCode, std::uint32_t modifiers, Activation activation = {});

  /// Presses the combination until it has repeated several times, and releases it.
  void hold(std::uint32_t keyCode, std::uint32_t modifiers);

  /// Another program registers the combination. Returns false if it is taken.
  bool takeByOtherProgram(std::uint32_t keyCode, std::uint32_t modifiers);

  /// All other programs unregister their combinations.
  void releaseByOtherPrograms() { otherPrograms_.clear(); }

  /// The desktop withdraws the combination, if it is registered.
  void refuse(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyStatus status);

  /// The desktop would grant a combination that it has refused.
  void withdrawRefusal();

  /// Reports a press of a hot key that may not be registered.
  void sendPressed(HotKeyID id, Activation activation = {});

 private:
  /// Key code and modifiers.
  using Combination = std::pair<std::uint32_t, std::uint32_t>;

  static Combination combinationOf(const HotKeyRequest& request);
  /// The end of the map if no hot key has the combination.
  std::map<HotKeyReference, HotKeyRequest>::const_iterator find(Combination combination) const;
  void keyDown(Combination combination, const Activation& activation);
  void refuseLater(HotKeyReference reference, HotKeyStatus status);
  /// Runs the task on the main queue unless this object has been destroyed.
  void later(std::function<void()> task);

  TaskQueue& mainQueue_;
  std::optional<HotKeyStatus> error_;
  bool refusesLater_ = false;
  std::uint64_t lastReference_ = 0;
  /// References ascend in the order of registration.
  std::map<HotKeyReference, HotKeyRequest> registered_;
  std::set<Combination> otherPrograms_;
  /// The combination whose key is down.
  std::optional<Combination> held_;
  /// Lets queued tasks detect that this object was destroyed.
  std::shared_ptr<MemoryHotKeys*> self_;
};

}  // namespace quillmar
