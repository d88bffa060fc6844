// The folder of the user's settings files.

#pragma once

#include <string>

#include "platform/environment.h"

namespace quillmar {

inline std::string settingsFolder(const Environment& environment) {
  const std::string folder = environment.value("XDG_CONFIG_HOME").value_or("");
  return folder.empty() ? environment.value("HOME").value_or("") + "/.config" : folder;
}

}  // namespace quillmar
