#include "platform/linux/files/bundle_directory.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "tests/linux/temporary_folder.h"

namespace quillmar {
namespace {

TEST(BundleDirectory, FindsResourcesBesideThisProgram) {
  const BundleDirectory bundle = BundleDirectory::ofThisProgram();
  const auto path =
      bundle.pathForResource("com.tovenworks.quillmar-statusIcon-symbolic-16", "alpha", "pixmaps");
  ASSERT_TRUE(path);
  EXPECT_TRUE(std::filesystem::is_regular_file(*path));
  EXPECT_TRUE(std::filesystem::is_directory(bundle.iconThemePath() + "/hicolor"));
}

TEST(BundleDirectory, HasNoMissingResources) {
  const BundleDirectory bundle = BundleDirectory::ofThisProgram();
  EXPECT_FALSE(bundle.pathForResource("missing", "alpha", "pixmaps"));
  EXPECT_FALSE(bundle.pathForResource("pixmaps", "", ""));
  EXPECT_FALSE(BundleDirectory("/nowhere").pathForResource("starter", "quillmarpack", "packs"));
}

TEST(BundleDirectory, KnowsTheVersionAndTheAddressesOfThisBuild) {
  const BundleDirectory bundle = BundleDirectory::ofThisProgram();
  EXPECT_EQ(bundle.informationString(information_key::version), QUILLMAR_VERSION);
  EXPECT_EQ(bundle.informationString(information_key::siteURL), QUILLMAR_SITE_URL);
  EXPECT_EQ(bundle.informationString(information_key::packsURL), QUILLMAR_PACKS_URL);
  EXPECT_EQ(bundle.informationString(information_key::supportAddress), QUILLMAR_SUPPORT_ADDRESS);
  EXPECT_TRUE(bundle.informationString(information_key::copyright).value_or("").starts_with("Cop"));
}

TEST(BundleDirectory, LeavesWhatIsNotConfiguredOutOfItsInformation) {
  const BundleDirectory bundle = BundleDirectory::ofThisProgram();
  const auto isConfigured = [](std::string_view value) { return !value.empty(); };
  EXPECT_EQ(bundle.informationString(information_key::feedURL).has_value(),
            isConfigured(QUILLMAR_FEED_URL));
  EXPECT_EQ(bundle.informationString(information_key::publicEDKey).has_value(),
            isConfigured(QUILLMAR_PUBLIC_ED_KEY));
}

class BundleInformationFile : public testing::Test {
 protected:
  void write(std::string_view json) {
    std::filesystem::create_directory(folder.path() + "/quillmar");
    std::ofstream(folder.path() + "/quillmar/information.json") << json;
  }

  TemporaryFolder folder;
  BundleDirectory bundle{folder.path()};
};

TEST_F(BundleInformationFile, IsReadOnceAndWhenItIsFirstAskedFor) {
  write(R"({"CFBundleShortVersionString": "1.2"})");
  EXPECT_EQ(bundle.informationString(information_key::version), "1.2");
  write(R"({"CFBundleShortVersionString": "1.3"})");
  EXPECT_EQ(bundle.informationString(information_key::version), "1.2");
}

TEST_F(BundleInformationFile, CountsAsEmptyWhenItIsMissing) {
  EXPECT_EQ(bundle.informationString(information_key::version), std::nullopt);
}

TEST_F(BundleInformationFile, CountsAsEmptyWhenItIsBroken) {
  write(R"({"CFBundleShortVersionString": "1.2")");
  EXPECT_EQ(bundle.informationString(information_key::version), std::nullopt);
}

}  // namespace
}  // namespace quillmar
