#include "platform/qt/widgets/extent.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

namespace quillmar {

namespace {

int total(const std::vector<int>& lengths) {
  return std::accumulate(lengths.begin(), lengths.end(), 0);
}

std::vector<int> lengthsOf(const std::vector<Extent>& extents, int Extent::*length) {
  std::vector<int> lengths;
  lengths.reserve(extents.size());
  for (const Extent& extent : extents) lengths.push_back(extent.*length);
  return lengths;
}

/// Adds `spare` to the lengths, each in proportion to what it may still gain; to the last pixel
/// unless all together may gain less.
void hand(std::vector<int>& lengths, const std::vector<int>& gains, int spare) {
  std::int64_t open = 0;
  for (const int gain : gains) open += gain;
  for (std::size_t i = 0; i < lengths.size() && open > 0; ++i) {
    const auto part =
        static_cast<int>(std::min<std::int64_t>(gains[i], std::int64_t{spare} * gains[i] / open));
    lengths[i] += part;
    spare -= part;
    open -= gains[i];
  }
}

std::vector<int> differences(const std::vector<int>& from, const std::vector<int>& to) {
  std::vector<int> gains;
  gains.reserve(from.size());
  for (std::size_t i = 0; i < from.size(); ++i) gains.push_back(std::max(0, to[i] - from[i]));
  return gains;
}

}  // namespace

Extent limited(Extent extent, int maximum) {
  for (int Extent::*length :
       {&Extent::minimum, &Extent::unclipped, &Extent::preferred, &Extent::maximum}) {
    extent.*length = std::min(extent.*length, maximum);
  }
  return extent;
}

Extent sumOf(const std::vector<Extent>& extents) {
  Extent sum;
  for (const Extent& extent : extents) {
    sum.minimum += extent.minimum;
    sum.unclipped += extent.unclipped;
    sum.preferred += extent.preferred;
    sum.maximum = std::min(Extent::unlimited, sum.maximum + extent.maximum);
  }
  return sum;
}

Extent widestOf(const std::vector<Extent>& extents) {
  Extent widest;
  for (const Extent& extent : extents) {
    widest.minimum = std::max(widest.minimum, extent.minimum);
    widest.unclipped = std::max(widest.unclipped, extent.unclipped);
    widest.preferred = std::max(widest.preferred, extent.preferred);
    widest.maximum = std::max(widest.maximum, extent.maximum);
  }
  return widest;
}

std::vector<int> distribute(const std::vector<Extent>& extents, int available) {
  const std::vector<int> minimum = lengthsOf(extents, &Extent::minimum);
  const std::vector<int> unclipped = lengthsOf(extents, &Extent::unclipped);
  const std::vector<int> preferred = lengthsOf(extents, &Extent::preferred);
  if (total(unclipped) >= available) {
    std::vector<int> lengths = minimum;
    hand(lengths, differences(minimum, unclipped), std::max(0, available - total(minimum)));
    return lengths;
  }
  if (total(preferred) >= available) {
    std::vector<int> lengths = unclipped;
    hand(lengths, differences(unclipped, preferred), available - total(unclipped));
    return lengths;
  }
  std::vector<int> lengths = preferred;
  std::vector<int> atMaximum = lengths;
  std::vector<int> without(lengths.size(), 0);
  for (std::size_t i = 0; i < extents.size(); ++i) {
    if (extents[i].maximum < Extent::unlimited) {
      atMaximum[i] = extents[i].maximum;
    } else {
      without[i] = 1;
    }
  }
  hand(lengths, differences(preferred, atMaximum), available - total(lengths));
  const int spare = available - total(lengths);
  for (int& gain : without) gain *= std::max(0, spare);
  hand(lengths, without, spare);
  return lengths;
}

}  // namespace quillmar
