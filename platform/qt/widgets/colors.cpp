#include "platform/qt/widgets/colors.h"

#include <algorithm>
#include <cmath>

namespace quillmar {

namespace {

constexpr double leastContrast = 4.5;
constexpr int steps = 20;

double linear(double part) {
  return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

/// Relative luminance, as the guidelines define it.
double luminance(const QColor& color) {
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other) {
  const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

}  // namespace

QColor mixed(const QColor& color, const QColor& other, float share) {
  const auto mix = [share](float some, float rest) { return (1 - share) * some + share * rest; };
  return QColor::fromRgbF(mix(color.redF(), other.redF()), mix(color.greenF(), other.greenF()),
                          mix(color.blueF(), other.blueF()));
}

QColor readableColor(const QColor& color, const QColor& background, const QColor& text) {
  for (int step = 0; step < steps; ++step) {
    const QColor candidate = mixed(color, text, static_cast<float>(step) / steps);
    if (contrast(candidate, background) >= leastContrast) return candidate;
  }
  return text;
}

}  // namespace quillmar
