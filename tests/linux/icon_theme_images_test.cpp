#include "platform/linux/icons/icon_theme_images.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include "platform/linux/files/bundle_directory.h"
#include "platform/linux/icons/symbol_name_table.h"
#include "platform/linux/icons/symbol_names.h"

namespace quillmar {
namespace {

namespace fs = std::filesystem;

class IconThemeImagesTest : public testing::Test {
 protected:
  IconThemeImagesTest() { home_ = mkdtemp(home_.data()); }
  ~IconThemeImagesTest() override { fs::remove_all(home_); }

  void write(const std::string& path, const std::string& text) const {
    fs::create_directories(fs::path(home_ + path).parent_path());
    std::ofstream(home_ + path) << text;
  }

  Environment environment() const {
    return {.variables = {{"XDG_DATA_DIRS", home_ + "/data"}, {"XDG_CONFIG_HOME", ""}}};
  }

  IconThemeImages images() const {
    return {BundleDirectory::ofThisProgram().iconThemePath(),
            IconThemes::ofUser(environment(), home_)};
  }

  std::string symbol(const std::string& name) const {
    const auto image = images().symbol(name);
    return image ? image->name : "none";
  }

 private:
  std::string home_ = (fs::temp_directory_path() / "quillmar-XXXXXX").string();
};

TEST_F(IconThemeImagesTest, HasTheStatusIconAndTheApplicationsIcon) {
  IconThemeImages found = images();
  ASSERT_TRUE(found.named("statusIcon"));
  EXPECT_EQ(found.named("statusIcon")->name, "com.tovenworks.quillmar-statusIcon-symbolic");
  ASSERT_TRUE(found.named("applicationIcon"));
  EXPECT_EQ(found.named("applicationIcon")->name, "com.tovenworks.quillmar");
  EXPECT_FALSE(found.named("otherIcon"));
  EXPECT_FALSE(found.named(""));
}

TEST_F(IconThemeImagesTest, FindsSymbolsByRuleAndByTable) {
  EXPECT_EQ(symbol("terminal"), "quillmar-terminal-symbolic");
  EXPECT_EQ(symbol("folder.fill"), "quillmar-folder-symbolic");
  EXPECT_EQ(symbol("play.circle.fill"), "quillmar-play-circle-symbolic");
  EXPECT_EQ(symbol("bolt"), "quillmar-lightning-symbolic");
  EXPECT_EQ(symbol("bolt.fill"), "quillmar-lightning-symbolic");
  EXPECT_EQ(symbol("magnifyingglass"), "quillmar-search-symbolic");
  EXPECT_EQ(symbol("network"), "quillmar-diagram-3-symbolic");
  EXPECT_EQ(symbol("square.and.arrow.up"), "quillmar-box-arrow-up-symbolic");
  EXPECT_EQ(symbol("doc.on.clipboard"), "quillmar-clipboard-symbolic");
  EXPECT_EQ(symbol("gearshape.fill"), "quillmar-gear-symbolic");
  EXPECT_EQ(symbol("trash"), "quillmar-trash-symbolic");
}

TEST_F(IconThemeImagesTest, DropsVariantsThatTheSetLacks) {
  EXPECT_EQ(symbol("bolt.circle.fill"), "quillmar-lightning-symbolic");
  EXPECT_EQ(symbol("wifi.circle"), "quillmar-wifi-symbolic");
  EXPECT_EQ(symbol("person.crop.circle.fill"), "quillmar-person-circle-symbolic");
  EXPECT_EQ(symbol("folder.badge.gearshape"), "quillmar-folder-symbolic");
  EXPECT_EQ(symbol("folder.badge.plus"), "quillmar-folder-plus-symbolic");
}

TEST_F(IconThemeImagesTest, HasNoImageForAnUnknownName) {
  EXPECT_EQ(symbol("no.such.symbol"), "none");
  EXPECT_EQ(symbol("folder.nonsense"), "none");
  EXPECT_EQ(symbol(""), "none");
  EXPECT_EQ(symbol("."), "none");
  EXPECT_EQ(symbol("../actions/quillmar-terminal-symbolic"), "none");
  EXPECT_EQ(symbol("terminal\n"), "none");
}

TEST_F(IconThemeImagesTest, EveryIconOfTheTableShips) {
  std::size_t rows = 0;
  std::string_view rest = symbolNameTable;
  rest.remove_prefix(1);
  while (!rest.empty()) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(line.size() + 1);
    const std::string_view name = line.substr(0, line.find(' '));
    const std::string icon(line.substr(name.size() + 1));
    EXPECT_EQ(symbol(std::string(name)), "quillmar-" + icon + "-symbolic");
    ++rows;
  }
  EXPECT_GE(rows, 250u);
}

TEST_F(IconThemeImagesTest, EveryNameThatItOffersIsASymbol) {
  IconThemeImages found = images();
  const std::vector<std::string> names = found.symbolNames();
  EXPECT_GE(names.size(), 2000u);
  EXPECT_TRUE(std::ranges::is_sorted(names));
  EXPECT_EQ(std::ranges::adjacent_find(names), names.end());
  for (const std::string& name : names) {
    const auto image = found.symbol(name);
    EXPECT_TRUE(image && image->isTemplate) << name;
  }
}

TEST_F(IconThemeImagesTest, OffersTheUsualNamesWithTheirSolidForms) {
  EXPECT_THAT(images().symbolNames(),
              testing::IsSupersetOf({"arrow.clockwise", "bolt", "bolt.fill", "doc.on.clipboard",
                                     "folder", "folder.fill", "folder.badge.plus", "gearshape.fill",
                                     "play.circle", "play.circle.fill", "terminal"}));
}

TEST_F(IconThemeImagesTest, OffersNothingWithoutItsIcons) {
  const IconThemeImages found("/no/such/folder", IconThemes({}, {}));
  EXPECT_THAT(found.symbolNames(), testing::IsEmpty());
}

TEST_F(IconThemeImagesTest, HonoursIconsOfTheUsersTheme) {
  write("/.config/gtk-3.0/settings.ini", "[Settings]\ngtk-icon-theme-name=Mine\n");
  write("/.icons/Mine/index.theme",
        "[Icon Theme]\nName=Mine\nInherits=Parent\nDirectories=16x16/apps,scalable/gone\n");
  write("/.icons/Mine/16x16/apps/utilities-thing.png", "");
  write("/data/icons/Parent/index.theme", "[Icon Theme]\nName=Parent\nDirectories=apps\n");
  write("/data/icons/Parent/apps/org.example.Inherited.svg", "");
  EXPECT_EQ(symbol("utilities-thing"), "utilities-thing");
  EXPECT_EQ(symbol("org.example.Inherited"), "org.example.Inherited");
  EXPECT_EQ(symbol("utilities-other"), "none");
}

TEST_F(IconThemeImagesTest, RemembersItsAnswers) {
  write("/data/icons/hicolor/index.theme", "[Icon Theme]\nName=hicolor\nDirectories=apps\n");
  write("/data/icons/hicolor/apps/present.svg", "");
  IconThemeImages found = images();
  EXPECT_TRUE(found.symbol("present"));
  EXPECT_FALSE(found.symbol("absent"));
  write("/data/icons/hicolor/apps/absent.svg", "");
  EXPECT_TRUE(found.symbol("present"));
  EXPECT_FALSE(found.symbol("absent"));
}

TEST(SymbolNames, OffersTheTableFirstThenTheRuleThenFewerVariants) {
  EXPECT_THAT(iconNamesForSymbol("bolt.circle.fill"),
              testing::ElementsAre("bolt-circle-fill", "bolt-circle", "lightning-circle-fill",
                                   "lightning-fill", "lightning-circle", "lightning", "bolt-fill",
                                   "bolt-circle", "bolt"));
}

TEST(SymbolNames, OffersTheNamesOfIconsAndTheirNamesInTheTable) {
  EXPECT_THAT(symbolNamesForIcons({"x-lg", "lightning", "slash-circle"}),
              testing::ElementsAre("bolt", "bolt.fill", "lightning", "lightning.fill",
                                   "slash.circle", "slash.circle.fill", "x.lg", "xmark"));
}

TEST(SymbolNames, OffersASolidFormOnceAndNotAfterABadge) {
  EXPECT_THAT(symbolNamesForIcons({"calendar-plus"}),
              testing::ElementsAre("calendar.badge.plus", "calendar.plus", "calendar.plus.fill"));
  EXPECT_THAT(
      symbolNamesForIcons({"node-plus", "shield-lock"}),
      testing::ElementsAre("app.connected.to.app.below.fill", "lock.shield", "lock.shield.fill",
                           "network.badge.shield.half.filled", "node.plus", "node.plus.fill",
                           "shield.lock", "shield.lock.fill"));
}

TEST(SymbolNames, ANameLongerThanAFileNameStandsForNothing) {
  const std::string longest = "a." + std::string(253, 'b');
  EXPECT_FALSE(iconNamesForSymbol(longest).empty());
  EXPECT_TRUE(iconNamesForSymbol(longest + "b").empty());
}

}  // namespace
}  // namespace quillmar
