// Size limits of views along one axis, and the distribution of a length to views in a row. In
// device-independent pixels.

#pragma once

#include <vector>

namespace quillmar {

struct Extent {
  /// The maximum of a view that takes whatever is left.
  static constexpr int unlimited = (1 << 24) - 1;

  /// Smallest usable length; text may be clipped.
  int minimum = 0;
  /// From here on nothing is cut off, but the view may scroll or wrap its text.
  int unclipped = 0;
  int preferred = 0;
  int maximum = 0;

  static Extent fixed(int length) { return {length, length, length, length}; }

  bool operator==(const Extent&) const = default;
};

/// The extent limited to a length.
Extent limited(Extent extent, int maximum);

/// The extent of views one after another.
Extent sumOf(const std::vector<Extent>& extents);

/// The extent of views side by side.
Extent widestOf(const std::vector<Extent>& extents);

/// Distributes `available` among the views. Spare length goes to views below their maximum, those
/// with a finite maximum first. Missing length is taken first from views that can scroll or wrap.
/// If the minimums exceed `available`, so does the result.
std::vector<int> distribute(const std::vector<Extent>& extents, int available);

}  // namespace quillmar
