// A fake user database.

#pragma once

#include <optional>
#include <string>

#include "platform/user_database.h"

namespace quillmar {

struct MemoryUserDatabase final : UserDatabase {
  std::optional<std::string> shell;

  std::optional<std::string> loginShell() const override { return shell; }
};

}  // namespace quillmar
