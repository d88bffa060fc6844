#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config/document_decoder.h"
#include "platform/environment.h"
#include "platform/linux/files/bundle_directory.h"
#include "platform/linux/files/posix_file_system.h"
#include "platform/linux/icons/icon_theme_images.h"

namespace quillmar {
namespace {

/// A pack as the program finds it beside itself.
class ShippedPacks : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    const auto path = bundle.pathForResource(GetParam(), "quillmarpack", "packs");
    ASSERT_TRUE(path);
    const auto bytes = PosixFileSystem().read(*path);
    ASSERT_TRUE(bytes);
    const auto decoded = decodeDocument(bytes.value());
    ASSERT_TRUE(decoded) << decoded.error().description;
    pack = decoded.value();
  }

  BundleDirectory bundle = BundleDirectory::ofThisProgram();
  QuillmarConfig pack;
};

INSTANTIATE_TEST_SUITE_P(, ShippedPacks,
                         testing::Values("audio", "clipboard", "networking", "screenshots",
                                         "starter"),
                         [](const auto& pack) { return std::string(pack.param); });

TEST_P(ShippedPacks, NameSymbolsThatShipWithTheApplication) {
  const Environment noThemes{.variables = {{"XDG_DATA_DIRS", "/nowhere"}}};
  IconThemeImages images(bundle.iconThemePath(), IconThemes::ofUser(noThemes, "/nowhere"));
  for (const MenuCategory& folder : pack.categories) {
    EXPECT_TRUE(images.symbol(folder.iconSymbolName.value_or(""))) << folder.name;
    for (const MenuItem& item : folder.items) {
      if (item.isSeparator) continue;
      EXPECT_TRUE(images.symbol(item.iconSymbolName.value_or(""))) << item.title;
    }
  }
}

}  // namespace
}  // namespace quillmar
