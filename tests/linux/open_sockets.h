// The sockets of the test program, to see whether something is connected.

#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <system_error>

namespace quillmar {

inline std::size_t openSockets() {
  std::size_t count = 0;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code closedMeanwhile;
    const auto target = std::filesystem::read_symlink(entry.path(), closedMeanwhile);
    if (target.string().starts_with("socket:")) ++count;
  }
  return count;
}

}  // namespace quillmar
