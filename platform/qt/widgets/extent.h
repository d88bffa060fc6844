// How much room views want along one axis, and how they share what there is. In device-independent
// pixels.

#pragma once

#include <vector>

namespace quillmar {

struct Extent {
  /// As much as there is.
  static constexpr int unlimited = (1 << 24) - 1;

  /// Below this it is of no use, texts are cut already.
  int least = 0;
  /// Nothing is cut, but there is something to scroll or a text takes more lines.
  int tight = 0;
  /// Without need.
  int preferred = 0;
  /// More is no gain.
  int most = 0;

  static Extent fixed(int length) { return {length, length, length, length}; }

  bool operator==(const Extent&) const = default;
};

/// The extents one after another.
Extent sumOf(const std::vector<Extent>& extents);

/// The extents side by side.
Extent widestOf(const std::vector<Extent>& extents);

/// A length for each of the extents. They fill `available` where they can: what is spare goes to
/// those that can use it, those with a limit first; what is missing is taken from those that can
/// scroll or wrap, and only then from the others. The sum is larger when even the least is.
std::vector<int> share(const std::vector<Extent>& extents, int available);

}  // namespace quillmar
