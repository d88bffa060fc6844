#include "platform/linux/files/password_database.h"

#include <fstream>
#include <sstream>

#include <gtest/gtest.h>
#include <unistd.h>

namespace quillmar {
namespace {

/// A field of the real user's line in /etc/passwd, counted from 0.
std::optional<std::string> fieldInFile(int index) {
  std::ifstream file("/etc/passwd");
  for (std::string line; std::getline(file, line);) {
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, ':');) fields.push_back(field);
    if (fields.size() == 7 && fields[2] == std::to_string(getuid())) {
      return fields[static_cast<std::size_t>(index)];
    }
  }
  return std::nullopt;
}

TEST(PasswordDatabase, KnowsTheRealUsersShellAndHome) {
  EXPECT_EQ(PasswordDatabase().loginShell(), fieldInFile(6));
  EXPECT_EQ(PasswordDatabase().homeDirectory(), fieldInFile(5));
}

}  // namespace
}  // namespace quillmar
