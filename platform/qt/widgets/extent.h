// Size limits of views along one axis, and the distribution of a length to views in a row. In
// device-independent pixels.

#pragma once

#include <vector>

namespace quillmar {

struct Extent {
  /// The maximum of a view that takes whatever is left.
  static constexpr int unlimited = (1 << 24) - 1;

  /// The view is useless when it is shorter. Texts may be cut off.
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

/// A length for each of the extents. Together they fill `available` if they can. Spare length goes
/// to those below their maximum, first to those that have one; missing length is taken from those
/// that can scroll or wrap, and only then from the others. The sum is larger than `available` when
/// the sum of the minimums is.
std::vector<int> share(const std::vector<Extent>& extents, int available);

}  // namespace quillmar
