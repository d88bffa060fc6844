#include "platform/uuid.h"

#include <regex>
#include <set>

#include <gtest/gtest.h>

namespace quillmar {
namespace {

TEST(Uuid, IsAVersion4UuidInCanonicalUpperCase) {
  const std::regex canonical("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
  for (int i = 0; i < 1000; ++i) EXPECT_TRUE(std::regex_match(makeUuid(), canonical));
}

TEST(Uuid, IsNewEachTime) {
  std::set<std::string> seen;
  for (int i = 0; i < 10000; ++i) seen.insert(makeUuid());
  EXPECT_EQ(seen.size(), 10000u);
}

}  // namespace
}  // namespace quillmar
