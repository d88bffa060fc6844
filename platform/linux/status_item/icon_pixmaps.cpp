#include "platform/linux/status_item/icon_pixmaps.h"

#include <array>
#include <cstddef>
#include <fstream>
#include <iterator>

namespace quillmar {

namespace {

constexpr std::array<int, 5> sizes = {16, 22, 24, 32, 48};

/// Grey level of icons on a panel of this appearance.
char greyOn(Appearance appearance) {
  switch (appearance) {
    case Appearance::light:
      return 0x26;
    case Appearance::dark:
      return static_cast<char>(0xf2);
    case Appearance::unknown:
      break;
  }
  // As in the SVG files, for panels that do not recolour these.
  return static_cast<char>(0x80);
}

std::string coloured(const std::string& alpha, char grey) {
  std::string pixels;
  pixels.reserve(4 * alpha.size());
  for (const char opacity : alpha) pixels.append({opacity, grey, grey, grey});
  return pixels;
}

std::string readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

GVariant* loadIconPixmaps(const std::string& directory, const std::string& iconName,
                          Appearance appearance) {
  GVariantBuilder builder;
  g_variant_builder_init(&builder, G_VARIANT_TYPE("a(iiay)"));
  const std::string stem = directory + "/" + iconName + "-";
  for (const int size : sizes) {
    const std::string alpha = readFile(stem + std::to_string(size) + ".alpha");
    const auto side = static_cast<std::size_t>(size);
    if (alpha.size() != side * side) continue;
    const std::string pixels = coloured(alpha, greyOn(appearance));
    g_variant_builder_add(
        &builder, "(ii@ay)", size, size,
        g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, pixels.data(), pixels.size(), 1));
  }
  return g_variant_builder_end(&builder);
}

}  // namespace quillmar
