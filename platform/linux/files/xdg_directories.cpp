#include "platform/linux/files/xdg_directories.h"

#include <optional>

namespace quillmar {

namespace {

std::optional<std::string> absolutePathIn(const Environment& environment, const char* variable) {
  std::optional<std::string> path = environment.value(variable);
  if (!path || !path->starts_with('/')) return std::nullopt;
  return path;
}

}  // namespace

XdgDirectories::XdgDirectories(const Environment& environment, const PasswordDatabase& database) {
  std::optional<std::string> home = absolutePathIn(environment, "HOME");
  if (!home) home = database.homeDirectory();
  home_ = home.value_or("/");
  config_ = absolutePathIn(environment, "XDG_CONFIG_HOME")
                .value_or(home_ + (home_.ends_with('/') ? "" : "/") + ".config");
}

}  // namespace quillmar
