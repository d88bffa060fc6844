// The files that ship with the application.

#pragma once

#include <optional>
#include <string>

namespace quillmar {

class Bundle {
 public:
  virtual ~Bundle() = default;

  /// Path of the resource `name`.`extension` in the subfolder (empty for the top one); absent when
  /// there is no such file.
  virtual std::optional<std::string> pathForResource(const std::string& name,
                                                     const std::string& extension,
                                                     const std::string& subfolder) const = 0;
};

}  // namespace quillmar
