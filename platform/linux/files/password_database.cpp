#include "platform/linux/files/password_database.h"

#include <cerrno>
#include <cstddef>
#include <vector>

#include <pwd.h>
#include <unistd.h>

namespace quillmar {

namespace {

constexpr std::size_t firstBufferSize = 1 << 10;
constexpr std::size_t lastBufferSize = 1 << 20;

std::optional<std::string> fieldOfRealUser(char* passwd::*field) {
  for (std::size_t size = firstBufferSize; size <= lastBufferSize; size *= 2) {
    std::vector<char> buffer(size);
    passwd entry{};
    passwd* found = nullptr;
    int error = 0;
    do {
      error = getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found);
    } while (error == EINTR);
    if (error == ERANGE) continue;
    if (!found || !(entry.*field) || *(entry.*field) == '\0') return std::nullopt;
    return entry.*field;
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> PasswordDatabase::loginShell() const {
  return fieldOfRealUser(&passwd::pw_shell);
}

std::optional<std::string> PasswordDatabase::homeDirectory() const {
  return fieldOfRealUser(&passwd::pw_dir);
}

}  // namespace quillmar
