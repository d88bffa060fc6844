// The toolkit's platform plugins.

#pragma once

#include <optional>
#include <string>

namespace quillmar {

/// What keeps the plugin of that name from being used, as the end of a sentence; nothing when it is
/// there. It is loaded then, and stays so.
std::optional<std::string> problemWithPlugin(const std::string& name);

}  // namespace quillmar
