#include "config/settings_manager.h"

#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config/document_decoder.h"
#include "platform/memory/memory_file_system.h"
#include "platform/memory/memory_user_directories.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

constexpr char settingsPath[] = "/home/user/.config/Quillmar/settings.json";

MenuCategory folder(std::string id, std::int64_t sortOrder, std::vector<std::string> itemIds = {}) {
  MenuCategory category;
  category.id = std::move(id);
  category.name = "Folder " + category.id;
  category.sortOrder = sortOrder;
  for (std::string& itemId : itemIds) {
    MenuItem item;
    item.id = std::move(itemId);
    item.title = "Item " + item.id;
    category.items.push_back(item);
  }
  return category;
}

class SettingsManagerTest : public testing::Test {
 protected:
  SettingsManager makeManager() {
    return SettingsManager({environment, directories, files, center,
                            [this](std::string_view line) { log.emplace_back(line); }});
  }

  void store(const QuillmarConfig& config) {
    files.addFile(settingsPath, SettingsManager::encode(config));
  }

  QuillmarConfig onDisk() const {
    const auto bytes = files.contents(settingsPath);
    if (!bytes) {
      ADD_FAILURE() << "There is no settings file.";
      return {};
    }
    return decodeDocument(*bytes).value();
  }

  static std::vector<std::string> itemIds(const MenuCategory& category) {
    std::vector<std::string> ids;
    for (const MenuItem& item : category.items) ids.push_back(item.id);
    return ids;
  }

  static std::vector<std::pair<std::string, std::int64_t>> orders(const QuillmarConfig& config) {
    std::vector<std::pair<std::string, std::int64_t>> result;
    for (const MenuCategory& category : config.categories) {
      result.emplace_back(category.id, category.sortOrder);
    }
    return result;
  }

  using Order = std::pair<std::string, std::int64_t>;

  Environment environment;
  MemoryUserDirectories directories;
  MemoryFileSystem files;
  NotificationCenter center;
  std::vector<std::string> log;
  int posts = 0;
  NotificationCenter::Observation observation =
      center.addObserver(menuItemSettingsChanged, [this] { ++posts; });
};

// Location.

TEST_F(SettingsManagerTest, MissingIdsComeFromTheGivenGenerator) {
  files.addFile(settingsPath, R"({"categories":[{"items":[{"id":"own"},{}]}]})");
  const SettingsManager manager({.environment = environment,
                                 .userDirectories = directories,
                                 .files = files,
                                 .makeIdentifier = [] { return std::string("made"); }});
  const MenuCategory& folder = manager.config.categories[0];
  EXPECT_EQ(folder.id, "made");
  EXPECT_THAT(itemIds(folder), ElementsAre("own", "made"));
}

TEST_F(SettingsManagerTest, WithoutTheVariableTheFileLiesInTheApplicationSupportDirectory) {
  EXPECT_EQ(makeManager().settingsFileURL(), settingsPath);
  EXPECT_TRUE(files.exists("/home/user/.config/Quillmar"));
}

TEST_F(SettingsManagerTest, AnEmptyDirectoryVariableCountsAsNotSet) {
  environment.variables["QUILLMAR_SETTINGS_DIR"] = "";
  EXPECT_EQ(makeManager().settingsFileURL(), settingsPath);
}

TEST_F(SettingsManagerTest, ADirectoryNamedByTheVariableIsCreatedAndHoldsTheFile) {
  environment.variables["QUILLMAR_SETTINGS_DIR"] = "/not/there/yet";
  SettingsManager manager = makeManager();
  EXPECT_EQ(manager.settingsFileURL(), "/not/there/yet/settings.json");
  EXPECT_TRUE(files.exists("/not/there/yet"));
  manager.save();
  EXPECT_TRUE(files.contents("/not/there/yet/settings.json"));
}

TEST_F(SettingsManagerTest, TheLocationIsWorkedOutAnewOnEveryUse) {
  SettingsManager manager = makeManager();
  environment.variables["QUILLMAR_SETTINGS_DIR"] = "/elsewhere/";
  EXPECT_EQ(manager.settingsFileURL(), "/elsewhere/settings.json");
}

TEST_F(SettingsManagerTest, ADirectoryThatCannotExistIsAFirstLaunchWhoseSaveFails) {
  files.addFile("/blocked", "a file");
  environment.variables["QUILLMAR_SETTINGS_DIR"] = "/blocked/settings";
  SettingsManager manager = makeManager();
  EXPECT_TRUE(manager.isFirstLaunch());
  EXPECT_THAT(log, IsEmpty());
  manager.save();
  EXPECT_THAT(log,
              ElementsAre("Failed to save settings: The file “/blocked/settings/settings.json” "
                          "could not be written: Not a directory."));
  EXPECT_EQ(posts, 1);
}

using SettingsManagerDeathTest = SettingsManagerTest;

TEST_F(SettingsManagerDeathTest, WithoutAnyApplicationSupportDirectoryTheProgramStops) {
  directories.applicationSupport.clear();
  EXPECT_DEATH(makeManager(), "there is no folder for application data");
}

// Loading.

TEST_F(SettingsManagerTest, AFirstStartIsEmptyAndWritesNothingUntilTheFirstSave) {
  SettingsManager manager = makeManager();
  EXPECT_TRUE(manager.isFirstLaunch());
  EXPECT_EQ(manager.config, QuillmarConfig{});
  EXPECT_EQ(manager.config.version, 2);
  EXPECT_FALSE(files.exists(settingsPath));
  EXPECT_THAT(log, IsEmpty());
  EXPECT_EQ(posts, 0);

  manager.save();
  EXPECT_EQ(onDisk(), QuillmarConfig{});
}

TEST_F(SettingsManagerTest, AnExistingFileIsLoaded) {
  QuillmarConfig config;
  config.name = "Mine";
  config.categories = {folder("A", 0, {"1"})};
  store(config);
  SettingsManager manager = makeManager();
  EXPECT_FALSE(manager.isFirstLaunch());
  EXPECT_EQ(manager.config, config);
  EXPECT_FALSE(manager.loadError());
}

TEST_F(SettingsManagerTest, ACorruptFileGivesAnEmptyDocumentAndIsReplacedAtTheFirstSave) {
  files.addFile(settingsPath, "{\"version\": ");
  SettingsManager manager = makeManager();
  EXPECT_FALSE(manager.isFirstLaunch());
  EXPECT_EQ(manager.config, QuillmarConfig{});
  EXPECT_THAT(log, ElementsAre(StartsWith("Failed to load settings: “" + std::string(settingsPath) +
                                          "” is not a valid document. ")));
  EXPECT_EQ(files.contents(settingsPath), "{\"version\": ");

  manager.save();
  EXPECT_EQ(onDisk(), QuillmarConfig{});
}

TEST_F(SettingsManagerTest, AFileInAnUnreadableFolderIsReportedAndNotAFirstLaunch) {
  files.addFile(settingsPath, "{}");
  files.addFolder("/home/user/.config/Quillmar", 0000);
  const SettingsManager manager = makeManager();
  EXPECT_FALSE(manager.isFirstLaunch());
  EXPECT_THAT(log, ElementsAre("Failed to load settings: The file “" + std::string(settingsPath) +
                               "” could not be read: Permission denied."));
}

TEST_F(SettingsManagerTest, ALogLineEscapesLineFeedsAndControlCharactersInAPath) {
  environment.variables["QUILLMAR_SETTINGS_DIR"] = "/a\nFailed\x1b[2J";
  files.addFile("/a\nFailed\x1b[2J/settings.json", "{}", 0000);
  SettingsManager manager = makeManager();
  files.addFile("/a\nFailed\x1b[2J/settings.json", "not JSON");
  manager.loadFromFile();
  const std::string escaped = "“/a\\nFailed\\u001b[2J/settings.json”";
  EXPECT_THAT(
      log,
      ElementsAre(
          "Failed to load settings: The file " + escaped + " could not be read: Permission denied.",
          StartsWith("Failed to load settings: " + escaped + " is not a valid document. ")));
}

TEST_F(SettingsManagerTest, AnEmptyFileIsReportedAsEmpty) {
  files.addFile(settingsPath, " \n");
  const SettingsManager manager = makeManager();
  EXPECT_THAT(
      log, ElementsAre("Failed to load settings: “" + std::string(settingsPath) + "” is empty."));
}

TEST_F(SettingsManagerTest, AnEditByAnotherProgramIsKeptAndLoggedOnce) {
  SettingsManager manager = makeManager();
  manager.save();
  files.addFile(settingsPath, "edited");
  manager.save();
  manager.save();
  EXPECT_THAT(log, ElementsAre(StartsWith("The settings file “" + std::string(settingsPath) +
                                          "” was changed while Quillmar was running.")));
}

TEST_F(SettingsManagerTest, AnUnreadableFileIsReportedAndNotAFirstLaunch) {
  files.addFile(settingsPath, "{}", 0000);
  const SettingsManager manager = makeManager();
  EXPECT_FALSE(manager.isFirstLaunch());
  EXPECT_TRUE(manager.loadError());
  EXPECT_THAT(log, ElementsAre(StartsWith("Failed to load settings: ")));
}

// Saving.

TEST_F(SettingsManagerTest, TheChangeIsPostedOnceAfterTheFileIsWritten) {
  SettingsManager manager = makeManager();
  std::optional<std::string> seen;
  const auto watching =
      center.addObserver(menuItemSettingsChanged, [&] { seen = files.contents(settingsPath); });
  manager.config.name = "New";
  manager.save();
  EXPECT_EQ(posts, 1);
  EXPECT_EQ(seen, SettingsManager::encode(manager.config));
}

TEST_F(SettingsManagerTest, AFailedSaveIsLoggedAndStillPosted) {
  files.addFile(settingsPath, "{}", 0444);
  SettingsManager manager = makeManager();
  manager.addCategory("Kept in memory", std::nullopt, false);
  EXPECT_THAT(log, ElementsAre(StartsWith("Failed to save settings: ")));
  EXPECT_EQ(posts, 1);
  EXPECT_THAT(manager.config.categories, SizeIs(1));
  EXPECT_EQ(files.contents(settingsPath), "{}");
}

// Queries.

TEST_F(SettingsManagerTest, FoldersAreInStableSortOrder) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", 3), folder("B", 1), folder("C", 3), folder("D", -5)};
  std::vector<std::string> ids;
  for (const MenuCategory& category : manager.categories()) ids.push_back(category.id);
  EXPECT_THAT(ids, ElementsAre("D", "B", "A", "C"));
}

TEST_F(SettingsManagerTest, LookupsTakeTheFirstMatchInDocumentOrder) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", 9, {"1", "2"}), folder("B", 0, {"2"}),
                               folder("A", 1, {})};
  EXPECT_EQ(manager.getCategory("A")->sortOrder, 9);
  EXPECT_EQ(manager.getCategory("a"), std::nullopt);
  EXPECT_EQ(manager.getItem("2")->categoryId, "A");
  EXPECT_EQ(manager.getItem("2")->item.title, "Item 2");
  EXPECT_EQ(manager.getItem("3"), std::nullopt);
}

TEST_F(SettingsManagerTest, RunnableItemsLeaveOutSeparatorsAndDisabledItems) {
  SettingsManager manager = makeManager();
  MenuCategory second = folder("second", 2, {"on", "off"});
  second.items[1].isEnabled = false;
  second.items.push_back(MenuItem::separator());
  MenuCategory line = folder("line", 1, {"in a separator"});
  line.isSeparator = true;
  manager.config.categories = {second, line, folder("first", 0, {"one"})};

  const auto runnable = manager.allRunnableItems();
  ASSERT_THAT(runnable, SizeIs(2));
  EXPECT_EQ(runnable[0].item.id, "one");
  EXPECT_EQ(runnable[0].categoryId, "first");
  EXPECT_EQ(runnable[1].item.id, "on");
  EXPECT_EQ(runnable[1].categoryId, "second");
}

// Folders.

TEST_F(SettingsManagerTest, TheFirstFolderHasSortOrderZero) {
  SettingsManager manager = makeManager();
  const MenuCategory added = manager.addCategory("Tools", "hammer", true);
  EXPECT_EQ(added.sortOrder, 0);
  EXPECT_THAT(added.id, SizeIs(36));
  EXPECT_EQ(added.name, "Tools");
  EXPECT_EQ(added.iconSymbolName, "hammer");
  EXPECT_TRUE(added.showAtTopLevel);
  EXPECT_FALSE(added.isSeparator);
  EXPECT_THAT(onDisk().categories, ElementsAre(added));
  EXPECT_EQ(posts, 1);
}

TEST_F(SettingsManagerTest, ANewFolderTakesTheLargestSortOrderPlusOne) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", 0), folder("B", 5), folder("C", 2)};
  EXPECT_EQ(manager.addCategory("D", std::nullopt, false).sortOrder, 6);
}

TEST_F(SettingsManagerDeathTest, AnOverflowingSortOrderStopsTheProgram) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", std::numeric_limits<std::int64_t>::max())};
  EXPECT_DEATH(manager.addCategory("B", std::nullopt, false), "too large to add to");
}

TEST_F(SettingsManagerDeathTest, AnOverflowingOffsetStopsTheProgram) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", 0), folder("B", 1, {"1", "2"})};
  constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
  EXPECT_DEATH(manager.moveCategory("B", largest), "too large to add to");
  EXPECT_DEATH(manager.moveItem("2", "B", largest), "too large to add to");
}

TEST_F(SettingsManagerTest, UpdatingAFolderReplacesItAsAWhole) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", 4, {"1"}), folder("A", 7)};
  const MenuCategory replacement = folder("A", 1, {"2", "3"});
  manager.updateCategory(replacement);
  EXPECT_EQ(manager.config.categories[0], replacement);
  EXPECT_EQ(manager.config.categories[1].sortOrder, 7);
  EXPECT_EQ(posts, 1);
}

TEST_F(SettingsManagerTest, MovingTheFirstFolderUpOrTheLastDownChangesAndWritesNothing) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", 0), folder("B", 10)};
  const QuillmarConfig before = manager.config;
  manager.moveCategory("A", -1);
  manager.moveCategory("B", +1);
  manager.moveCategory("unknown", +1);
  EXPECT_EQ(manager.config, before);
  EXPECT_EQ(posts, 0);
  EXPECT_FALSE(files.exists(settingsPath));
}

TEST_F(SettingsManagerTest, MovingAFolderRenumbersAllFolders) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("P", 3), folder("Q", 3), folder("R", 7)};
  manager.moveCategory("R", -1);
  EXPECT_THAT(orders(manager.config), ElementsAre(Order("P", 0), Order("Q", 2), Order("R", 1)));
}

TEST_F(SettingsManagerTest, MovingAFolderNumbersAllFoldersAnewEvenIfTheyShareAnId) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("X", 5), folder("X", 5), folder("Y", 9)};
  manager.moveCategory("Y", -1);
  EXPECT_THAT(orders(manager.config), ElementsAre(Order("X", 0), Order("X", 2), Order("Y", 1)));
}

TEST_F(SettingsManagerTest, AnyOffsetSwapsJustTheTwoFolders) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", 0), folder("B", 1), folder("C", 2), folder("D", 3)};
  manager.moveCategory("A", 3);
  EXPECT_THAT(orders(manager.config),
              ElementsAre(Order("A", 3), Order("B", 1), Order("C", 2), Order("D", 0)));
}

TEST_F(SettingsManagerTest, ASeparatorBehindAnUnknownFolderComesLastAndRenumbersAllFolders) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", 8), folder("B", 2)};
  const MenuCategory separator = manager.addCategorySeparator("unknown");
  EXPECT_TRUE(separator.isSeparator);
  EXPECT_EQ(separator.name, "");
  EXPECT_THAT(separator.items, IsEmpty());
  EXPECT_EQ(separator.sortOrder, 2);
  EXPECT_THAT(orders(manager.config),
              ElementsAre(Order("A", 1), Order("B", 0), Order(separator.id, 2)));
  EXPECT_EQ(onDisk(), manager.config);
  EXPECT_EQ(posts, 1);
}

TEST_F(SettingsManagerTest, ASeparatorGoesBehindTheFolderThatIsNamed) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", 8), folder("B", 2)};
  const MenuCategory separator = manager.addCategorySeparator("B");
  EXPECT_THAT(orders(manager.config),
              ElementsAre(Order("A", 2), Order("B", 0), Order(separator.id, 1)));
}

TEST_F(SettingsManagerTest, ASeparatorNumbersAllFoldersAnewEvenIfTheyShareAnId) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("X", 8), folder("X", 2)};
  const MenuCategory separator = manager.addCategorySeparator("X");
  EXPECT_THAT(orders(manager.config),
              ElementsAre(Order("X", 2), Order("X", 0), Order(separator.id, 1)));
}

TEST_F(SettingsManagerTest, ASeparatorWithoutAPlaceComesLast) {
  SettingsManager manager = makeManager();
  EXPECT_EQ(manager.addCategorySeparator(std::nullopt).sortOrder, 0);
  EXPECT_EQ(manager.addCategorySeparator(std::nullopt).sortOrder, 1);
}

// Items.

TEST_F(SettingsManagerTest, AnItemGoesBehindTheOneThatIsNamed) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", 0, {"1", "2", "2"})};
  MenuItem item;
  item.id = "new";
  manager.addItem(item, "A", "2");
  EXPECT_THAT(itemIds(onDisk().categories[0]), ElementsAre("1", "2", "new", "2"));
}

TEST_F(SettingsManagerTest, AnItemBehindAnUnknownOneIsAppended) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", 0, {"1", "2"})};
  MenuItem item;
  item.id = "new";
  manager.addItem(item, "A", "unknown");
  EXPECT_THAT(itemIds(manager.config.categories[0]), ElementsAre("1", "2", "new"));
  item.id = "newer";
  manager.addItem(item, "A", std::nullopt);
  EXPECT_THAT(itemIds(manager.config.categories[0]), ElementsAre("1", "2", "new", "newer"));
  EXPECT_EQ(posts, 2);
}

TEST_F(SettingsManagerTest, UpdatingAnItemReplacesTheFirstWithItsId) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", 0, {"1", "1"})};
  MenuItem item = manager.config.categories[0].items[0];
  item.title = "Changed";
  manager.updateItem(item, "A");
  EXPECT_EQ(onDisk().categories[0].items[0].title, "Changed");
  EXPECT_EQ(onDisk().categories[0].items[1].title, "Item 1");
}

TEST_F(SettingsManagerTest, DeletingAFolderKeepsTheOrderAndTheSortOrdersOfTheOthers) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("B", 9), folder("X", 3, {"1"}), folder("A", 5),
                               folder("X", 3)};
  manager.deleteCategory("X");
  EXPECT_EQ(onDisk().categories, std::vector({folder("B", 9), folder("A", 5)}));
}

TEST_F(SettingsManagerTest, DeletingAnIdThatTwoItemsShareRemovesBoth) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", 0, {"1", "2", "1", "3"}), folder("B", 1, {"1"})};
  manager.deleteItem(manager.config.categories[0].items[0].id, "A");
  EXPECT_THAT(itemIds(manager.config.categories[0]), ElementsAre("2", "3"));
  EXPECT_THAT(itemIds(manager.config.categories[1]), ElementsAre("1"));
}

TEST_F(SettingsManagerTest, DeletingSavesAlsoWhenNoItemMatched) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", 0, {"1"})};
  manager.deleteItem("unknown", "A");
  EXPECT_EQ(posts, 1);
  EXPECT_EQ(onDisk(), manager.config);
}

TEST_F(SettingsManagerTest, MovingAnItemSwapsItWithItsTarget) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", 0, {"1", "2", "3", "4"})};
  manager.moveItem("1", "A", 2);
  EXPECT_THAT(itemIds(onDisk().categories[0]), ElementsAre("3", "2", "1", "4"));
}

TEST_F(SettingsManagerTest, MovingAnItemBeyondTheEndsChangesNothing) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", 0, {"1", "2"})};
  manager.moveItem("1", "A", -1);
  manager.moveItem("2", "A", 1);
  EXPECT_THAT(itemIds(manager.config.categories[0]), ElementsAre("1", "2"));
  EXPECT_EQ(posts, 0);
}

TEST_F(SettingsManagerTest, EnablingSavesAlsoWhenNothingChanged) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", 0, {"1"})};
  manager.setItemEnabled("1", "A", true);
  EXPECT_EQ(posts, 1);
  manager.setItemEnabled("1", "A", false);
  EXPECT_EQ(posts, 2);
  EXPECT_FALSE(onDisk().categories[0].items[0].isEnabled);
}

TEST_F(SettingsManagerTest, UnknownIdsChangeWriteAndPostNothing) {
  SettingsManager manager = makeManager();
  manager.config.categories = {folder("A", 0, {"1"})};
  const QuillmarConfig before = manager.config;
  manager.updateCategory(folder("X", 0));
  manager.addItem(MenuItem::separator(), "X", std::nullopt);
  manager.updateItem(before.categories[0].items[0], "X");
  manager.updateItem(MenuItem::separator(), "A");
  manager.deleteItem("1", "X");
  manager.moveItem("1", "X", 1);
  manager.moveItem("unknown", "A", 0);
  manager.setItemEnabled("1", "X", false);
  manager.setItemEnabled("unknown", "A", false);
  EXPECT_EQ(manager.config, before);
  EXPECT_EQ(posts, 0);
  EXPECT_FALSE(files.exists(settingsPath));
}

}  // namespace
}  // namespace quillmar
