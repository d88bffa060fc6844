// The files that ship with the application, and what it knows about its own build.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/bundle_information.h"

namespace quillmar {

class Bundle {
 public:
  virtual ~Bundle() = default;

  /// Path of the resource `name`.`extension` in the subfolder (empty for the top one); absent when
  /// there is no such file. Any thread.
  virtual std::optional<std::string> pathForResource(const std::string& name,
                                                     const std::string& extension,
                                                     const std::string& subfolder) const = 0;

  /// The information dictionary's string under the key, see information_key; absent when there is
  /// none. Main thread.
  std::optional<std::string> informationString(std::string_view key) const;

 private:
  /// The same dictionary at every call; empty when the bundle has none. Main thread.
  virtual const BundleInformation& informationDictionary() const = 0;
};

}  // namespace quillmar
