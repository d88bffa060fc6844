#include "platform/memory/memory_pasteboard.h"

#include <gtest/gtest.h>

#include "tests/conformance/pasteboard_conformance.h"

namespace quillmar {
namespace {

class MemoryPasteboardBackend {
 public:
  Pasteboard& pasteboard() { return pasteboard_; }
  std::optional<std::string> paste() { return pasteboard_.string(); }

 private:
  MemoryPasteboard pasteboard_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, PasteboardConformance, MemoryPasteboardBackend);

TEST(MemoryPasteboard, RemembersEveryText) {
  MemoryPasteboard pasteboard;
  pasteboard.setString("first");
  pasteboard.setString("second");
  EXPECT_EQ(pasteboard.history(), (std::vector<std::string>{"first", "second"}));
}

}  // namespace
}  // namespace quillmar
