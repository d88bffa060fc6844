#include "platform/linux/files/bundle_directory.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace quillmar {
namespace {

TEST(BundleDirectory, FindsResourcesBesideThisProgram) {
  const BundleDirectory bundle = BundleDirectory::ofThisProgram();
  const auto path =
      bundle.pathForResource("com.tovenworks.quillmar-statusIcon-symbolic-16", "argb32", "pixmaps");
  ASSERT_TRUE(path);
  EXPECT_TRUE(std::filesystem::is_regular_file(*path));
  EXPECT_TRUE(std::filesystem::is_directory(bundle.iconThemePath() + "/hicolor"));
}

TEST(BundleDirectory, HasNoMissingResources) {
  const BundleDirectory bundle = BundleDirectory::ofThisProgram();
  EXPECT_FALSE(bundle.pathForResource("missing", "argb32", "pixmaps"));
  EXPECT_FALSE(bundle.pathForResource("pixmaps", "", ""));
  EXPECT_FALSE(BundleDirectory("/nowhere").pathForResource("starter", "quillmarpack", "packs"));
}

}  // namespace
}  // namespace quillmar
