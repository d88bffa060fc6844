// A fake bundle.

#pragma once

#include <map>
#include <optional>
#include <string>

#include "platform/bundle.h"

namespace quillmar {

struct MemoryBundle final : Bundle {
  /// Paths by "subfolder/name.extension", or "name.extension" in the top folder.
  std::map<std::string, std::string> resources;

  BundleInformation information;

  std::optional<std::string> pathForResource(const std::string& name, const std::string& extension,
                                             const std::string& subfolder) const override {
    const std::string file = name + "." + extension;
    const auto found = resources.find(subfolder.empty() ? file : subfolder + "/" + file);
    if (found == resources.end()) return std::nullopt;
    return found->second;
  }

 private:
  const BundleInformation& informationDictionary() const override { return information; }
};

}  // namespace quillmar
