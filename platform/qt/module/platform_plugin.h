// The toolkit's platform plugins.

#pragma once

#include <optional>
#include <string>

namespace quillmar {

/// Why the plugin of that name cannot be used, as the end of a sentence; absent if it can. A usable
/// plugin is loaded and stays loaded.
std::optional<std::string> problemWithPlugin(const std::string& name);

}  // namespace quillmar
