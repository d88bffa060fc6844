// Fake images.

#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/image.h"

namespace quillmar {

/// Provides images under the names in these sets.
struct MemoryImages final : Images {
  std::set<std::string> images = {"applicationIcon", "statusIcon"};
  std::set<std::string> symbols = {"bolt.fill", "doc.on.clipboard", "folder", "star", "terminal"};

  std::optional<Image> named(const std::string& name) override { return find(images, name); }
  std::optional<Image> symbol(const std::string& name) override { return find(symbols, name); }
  std::vector<std::string> symbolNames() const override { return {symbols.begin(), symbols.end()}; }

 private:
  static std::optional<Image> find(const std::set<std::string>& names, const std::string& name) {
    if (!names.contains(name)) return std::nullopt;
    return Image{.name = name, .isTemplate = false, .pointSize = {}, .weight = {}};
  }
};

}  // namespace quillmar
