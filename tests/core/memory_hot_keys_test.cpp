#include "platform/memory/memory_hot_keys.h"

#include <cstdint>
#include <functional>

#include <gtest/gtest.h>

#include "platform/memory/memory_task_queues.h"
#include "tests/conformance/hot_keys_conformance.h"

namespace quillmar {
namespace {

/// Refuses a combination of another program when it is registered.
class RefusingAtOnce {
 public:
  HotKeys& hotKeys() { return hotKeys_; }
  void press(std::uint32_t keyCode, std::uint32_t modifiers) { hotKeys_.press(keyCode, modifiers); }
  void hold(std::uint32_t keyCode, std::uint32_t modifiers) { hotKeys_.hold(keyCode, modifiers); }
  // The combinations of this backend have no lock modifiers.
  void setLocks(bool /*capsLock*/, bool /*numLock*/) {}
  bool takeByOtherProgram(std::uint32_t keyCode, std::uint32_t modifiers) {
    return hotKeys_.takeByOtherProgram(keyCode, modifiers);
  }
  void releaseByOtherPrograms() { hotKeys_.releaseByOtherPrograms(); }
  void settle() { mainQueue_.runPending(); }
  bool runUntil(const std::function<bool()>& done) {
    mainQueue_.runPending();
    return done();
  }

 protected:
  MemoryTaskQueue mainQueue_;
  MemoryHotKeys hotKeys_{mainQueue_};
};

/// Refuses it with an event.
class RefusingLater : public RefusingAtOnce {
 public:
  RefusingLater() { hotKeys_.setRefusesLater(true); }
};

using Backends = testing::Types<RefusingAtOnce, RefusingLater>;
INSTANTIATE_TYPED_TEST_SUITE_P(MemoryHotKeys, HotKeysConformance, Backends);

}  // namespace
}  // namespace quillmar
