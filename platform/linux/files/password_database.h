// The entry of the real user id in the system's password database. Read on each call, because it
// may change while the program runs.

#pragma once

#include <optional>
#include <string>

#include "platform/user_database.h"

namespace quillmar {

class PasswordDatabase final : public UserDatabase {
 public:
  std::optional<std::string> loginShell() const override;

  /// The home directory field; absent without an entry or when the field is empty.
  std::optional<std::string> homeDirectory() const;
};

}  // namespace quillmar
