#include "platform/linux/application/process_environment.h"

#include <string_view>

#include <unistd.h>

namespace quillmar {

Environment snapshotProcessEnvironment() {
  Environment environment;
  for (char** entry = environ; entry && *entry; ++entry) {
    const std::string_view text = *entry;
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || equals == 0) continue;
    environment.variables.emplace(text.substr(0, equals), text.substr(equals + 1));
  }
  return environment;
}

}  // namespace quillmar
