// Fake user directories.

#pragma once

#include <string>
#include <vector>

#include "platform/user_directories.h"

namespace quillmar {

struct MemoryUserDirectories final : UserDirectories {
  std::string home = "/home/user";
  std::vector<std::string> applicationSupport = {"/home/user/.config"};

  std::string homeDirectory() const override { return home; }
  std::vector<std::string> applicationSupportDirectories() const override {
    return applicationSupport;
  }
};

}  // namespace quillmar
