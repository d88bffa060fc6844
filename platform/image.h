// Images by name. The core uses only names; the code that shows a menu or window loads and draws
// them.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/font.h"

namespace quillmar {

/// An image that the platform can load by its name.
struct Image {
  std::string name;
  /// Drawn in the text colour, so that it is visible on light and dark backgrounds.
  bool isTemplate = false;
  /// For symbols: the size of the text beside it, in points, and the stroke weight.
  std::optional<double> pointSize;
  std::optional<FontWeight> weight;

  bool operator==(const Image&) const = default;
};

class Images {
 public:
  virtual ~Images() = default;

  /// An image of the application's resources ("applicationIcon", "statusIcon"); absent if it is
  /// missing.
  virtual std::optional<Image> named(const std::string& name) = 0;

  /// The system symbol of that name ("bolt.fill", "terminal"); absent if there is none. Called for
  /// every menu entry, so implementations cache the results.
  virtual std::optional<Image> symbol(const std::string& name) = 0;

  /// Names of symbols to offer to the user, sorted and without duplicates. Each has an image, but
  /// symbol() may know more names. Computed by each call.
  virtual std::vector<std::string> symbolNames() const = 0;
};

}  // namespace quillmar
