// The application's resource files and information about its build.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/bundle_information.h"

namespace quillmar {

class Bundle {
 public:
  virtual ~Bundle() = default;

  /// Path of the resource `name`.`extension` in the subfolder (empty for the top folder); absent if
  /// there is no such file. Any thread.
  virtual std::optional<std::string> pathForResource(const std::string& name,
                                                     const std::string& extension,
                                                     const std::string& subfolder) const = 0;

  /// The string for a key of the information dictionary (see information_key); absent if there is
  /// none. Main thread.
  std::optional<std::string> informationString(std::string_view key) const;

 private:
  /// Returns the same dictionary at every call; empty if the bundle has none. Main thread.
  virtual const BundleInformation& informationDictionary() const = 0;
};

}  // namespace quillmar
