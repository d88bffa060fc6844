#include "platform/memory/memory_login_item.h"

#include <gtest/gtest.h>

#include "tests/conformance/login_item_conformance.h"

namespace quillmar {
namespace {

class MemoryLoginItemFixture {
 public:
  LoginItem& item() { return item_; }
  void writeAsSomeoneElse() { item_.writeAsSomeoneElse(); }
  void switchOff() { item_.switchOff(); }
  void removeProgram() { item_.removeProgram(); }

 private:
  MemoryLoginItem item_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, LoginItemConformance, MemoryLoginItemFixture);

TEST(MemoryLoginItem, FailsWithTheGivenError) {
  MemoryLoginItem item;
  item.error = Error{"The folder is read-only."};
  EXPECT_EQ(item.registerItem().error().description, "The folder is read-only.");
  EXPECT_EQ(item.status(), LoginItemStatus::notRegistered);
}

}  // namespace
}  // namespace quillmar
