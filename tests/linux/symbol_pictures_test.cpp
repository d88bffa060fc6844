// The colours of the icons that ship with the application, as panels draw them.

#include "platform/linux/icons/symbol_pictures.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cmake/tools/svg_surface.h"
#include "platform/linux/files/bundle_directory.h"

namespace quillmar {
namespace {

using testing::AllOf;
using testing::Each;
using testing::Ge;
using testing::IsEmpty;
using testing::Not;

constexpr int opaque = 0xff;

/// Relative luminance, as the Web Content Accessibility Guidelines define it.
double luminance(int red, int green, int blue) {
  const auto linear = [](int part) {
    const double share = part / 255.0;
    return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(red) + 0.7152 * linear(green) + 0.0722 * linear(blue);
}

/// The contrast of each opaque pixel to a background of that luminance.
std::vector<double> contrasts(cairo_surface_t* picture, double background) {
  std::vector<double> found;
  const int height = cairo_image_surface_get_height(picture);
  const int width = cairo_image_surface_get_width(picture);
  for (int y = 0; y < height; ++y) {
    const unsigned char* row =
        cairo_image_surface_get_data(picture) + y * cairo_image_surface_get_stride(picture);
    for (int x = 0; x < width; ++x) {
      std::uint32_t pixel = 0;
      std::memcpy(&pixel, row + 4 * x, sizeof pixel);
      if (pixel >> 24U != opaque) continue;
      const double own = luminance(pixel >> 16U & 0xffU, pixel >> 8U & 0xffU, pixel & 0xffU);
      const auto [darker, lighter] = std::minmax({own, background});
      found.push_back((lighter + 0.05) / (darker + 0.05));
    }
  }
  return found;
}

/// Reads from memory, for cairo.
cairo_status_t readBytes(void* rest, unsigned char* data, unsigned length) {
  auto& bytes = *static_cast<std::string_view*>(rest);
  if (bytes.size() < length) return CAIRO_STATUS_READ_ERROR;
  std::memcpy(data, bytes.data(), length);
  bytes.remove_prefix(length);
  return CAIRO_STATUS_SUCCESS;
}

Surface decoded(GBytes* png) {
  gsize size = 0;
  const auto* const data = static_cast<const char*>(g_bytes_get_data(png, &size));
  std::string_view rest(data, size);
  return Surface(cairo_image_surface_create_from_png_stream(readBytes, &rest));
}

class ShippedIconsTest : public testing::Test {
 protected:
  BundleDirectory bundle_ = BundleDirectory::ofThisProgram();
  SymbolPictures pictures_{bundle_.pixmapDirectory() + "/symbols.gresource"};
};

TEST_F(ShippedIconsTest, PicturesStandOutFromMenusAndFromSelectedEntries) {
  const double selected = luminance(0x30, 0x8c, 0xc6);
  struct Case {
    bool isMenuDark;
    double menu;
  };
  for (const Case& each :
       {Case{false, luminance(0xef, 0xef, 0xef)}, Case{true, luminance(0x31, 0x36, 0x3b)}}) {
    const GBytesPtr png = pictures_.png("quillmar-terminal-symbolic", each.isMenuDark);
    ASSERT_TRUE(png);
    const Surface picture = decoded(png.get());
    EXPECT_EQ(cairo_image_surface_get_width(picture.get()), 16);
    EXPECT_EQ(cairo_image_surface_get_height(picture.get()), 16);
    EXPECT_THAT(contrasts(picture.get(), each.menu), AllOf(Not(IsEmpty()), Each(Ge(3))));
    EXPECT_THAT(contrasts(picture.get(), selected), Each(Ge(3)));
  }
}

TEST_F(ShippedIconsTest, ThereIsNoPictureOfWhatIsNotShipped) {
  EXPECT_FALSE(pictures_.png("utilities-terminal", false));
  EXPECT_FALSE(SymbolPictures("/no/such/file").png("quillmar-terminal-symbolic", false));
}

TEST_F(ShippedIconsTest, FilesThatNobodyRecoloursStandOutFromLightAndDark) {
  for (const char* const file : {"symbolic/apps/com.tovenworks.quillmar-statusIcon-symbolic.svg",
                                 "scalable/actions/quillmar-terminal-symbolic.svg"}) {
    const Surface picture = drawSvg(bundle_.iconThemePath() + "/hicolor/" + file, 48);
    ASSERT_TRUE(picture);
    for (const int background : {0x00, 0x36, 0xe1, 0xff}) {
      EXPECT_THAT(contrasts(picture.get(), luminance(background, background, background)),
                  AllOf(Not(IsEmpty()), Each(Ge(3))))
          << file << " on " << background;
    }
  }
}

}  // namespace
}  // namespace quillmar
