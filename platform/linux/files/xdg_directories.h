// The user's folders after the XDG base directory rules, by which a path that is not absolute
// counts as not set. Decided once, when the object is made. Any thread.

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
