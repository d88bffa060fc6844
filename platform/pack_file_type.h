// The type of pack files. `resources/com.tovenworks.quillmar.xml` registers it with the desktop.

#pragma once

#include <string_view>

namespace quillmar::pack_file_type {

/// Uniform type identifier.
inline constexpr std::string_view identifier = "com.tovenworks.quillmar.pack";
/// In lower case; files may have it in capitals.
inline constexpr std::string_view extension = "quillmarpack";

}  // namespace quillmar::pack_file_type
