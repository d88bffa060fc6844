// The user's folders according to the XDG base directory rules: a path that is not absolute is
// ignored. Determined once, by the constructor. Any thread.

#pragma once

#include <string>
#include <vector>

#include "platform/environment.h"
#include "platform/linux/files/password_database.h"
#include "platform/user_directories.h"

namespace quillmar {

class XdgDirectories final : public UserDirectories {
 public:
  XdgDirectories(const Environment& environment, const PasswordDatabase& database);

  std::string homeDirectory() const override { return home_; }
  std::vector<std::string> applicationSupportDirectories() const override { return {config_}; }

 private:
  std::string home_;
  std::string config_;
};

}  // namespace quillmar
