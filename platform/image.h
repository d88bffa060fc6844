// Images by name. The core only names them; whoever shows a menu or a window loads and draws them.

#pragma once

#include <optional>
#include <string>

#include "platform/font.h"

namespace quillmar {

/// An image that exists under a name known to the platform.
struct Image {
  std::string name;
  /// Drawn in the colour of its surroundings, so that it shows on light and dark alike.
  bool isTemplate = false;
  /// For symbols: the text size that the symbol goes with, in points, and its stroke weight.
  std::optional<double> pointSize;
  std::optional<FontWeight> weight;

  bool operator==(const Image&) const = default;
};

class Images {
 public:
  virtual ~Images() = default;

  /// An image of the application's resources ("applicationIcon", "statusIcon"); absent when it is
  /// missing.
  virtual std::optional<Image> named(const std::string& name) = 0;

  /// The system symbol of that name ("bolt.fill", "terminal"); absent when there is none. Called
  /// for every entry of every menu, so answers are remembered.
  virtual std::optional<Image> symbol(const std::string& name) = 0;
};

}  // namespace quillmar
