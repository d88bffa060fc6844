#include "platform/linux/status_item/icon_pixmaps.h"

#include <array>
#include <cstddef>
#include <fstream>
#include <iterator>

namespace quillmar {

namespace {

constexpr std::array<int, 5> sizes = {16, 22, 24, 32, 48};
constexpr std::size_t bytesPerPixel = 4;

std::string readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

GVariant* loadIconPixmaps(const std::string& directory, const std::string& iconName) {
  GVariantBuilder builder;
  g_variant_builder_init(&builder, G_VARIANT_TYPE("a(iiay)"));
  const std::string stem = directory + "/" + iconName + "-";
  for (const int size : sizes) {
    const std::string pixels = readFile(stem + std::to_string(size) + ".argb32");
    const auto side = static_cast<std::size_t>(size);
    if (pixels.size() != side * side * bytesPerPixel) continue;
    g_variant_builder_add(
        &builder, "(ii@ay)", size, size,
        g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, pixels.data(), pixels.size(), 1));
  }
  return g_variant_builder_end(&builder);
}

}  // namespace quillmar
