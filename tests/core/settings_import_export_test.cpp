#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/file_panel.h"
#include "settings_ui/drop_target_view.h"
#include "tests/core/import_fixture.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsNull;
using testing::NotNull;
using testing::SizeIs;

/// Import, export and drops of files in the settings window.
class SettingsImportExportTest : public ImportFixture {
 protected:
  SettingsImportExportTest() {
    open({folderWith("F", 0, {itemWith("I", "Mine")})});
    memory.files.addFile("/home/user/tools.json", encodeDocument(packNamed("Tools")));
  }

  static constexpr const char* exportPath = "/home/user/quillmar-settings.json";
};

// Import.

TEST_F(SettingsImportExportTest, ImportAsksForAPackOrASettingsFile) {
  press("Import…");
  ASSERT_THAT(memory.windows.filePanels(), SizeIs(1));
  const MemoryFilePanel& panel = *memory.windows.filePanels()[0];
  EXPECT_EQ(panel.parent, &controller->window());
  ASSERT_TRUE(panel.open);
  EXPECT_EQ(panel.open->title, "Choose a Quillmar pack or settings file");
  EXPECT_THAT(
      panel.open->types,
      ElementsAre(FileType{"Quillmar packs and settings", {"quillmarpack", "json"}},
                  FileType{"Quillmar packs", {"quillmarpack"}}, FileType{"JSON files", {"json"}}));
}

TEST_F(SettingsImportExportTest, TheChosenFileIsReviewedAfterThePanelHasGone) {
  press("Import…");
  const auto end = memory.windows.filePanels().at(0)->end;
  end("/home/user/tools.json");
  EXPECT_THAT(memory.windows.filePanels(), IsEmpty());
  EXPECT_THAT(sheet(), IsNull());
  memory.queues.runAll();
  EXPECT_THAT(labelTexts(*sheet()),
              ElementsAre("Add “Tools” to Quillmar?", "From tools.json", HasSubstr("Merge adds")));
}

TEST_F(SettingsImportExportTest, ACancelledImportDoesNothing) {
  press("Import…");
  endPanel("");
  EXPECT_THAT(memory.windows.filePanels(), IsEmpty());
  EXPECT_THAT(sheet(), IsNull());
}

TEST_F(SettingsImportExportTest, AFileThatIsNotADocumentIsReportedAndChangesNothing) {
  for (const char* const content : {"not JSON", "[1]", R"({"version" : "x"})", ""}) {
    memory.files.addFile("/home/user/odd.json", content);
    press("Import…");
    endPanel("/home/user/odd.json");
    ASSERT_THAT(sheet(), NotNull());
    EXPECT_EQ(titleOfSheet(), "Could not read “odd.json”.") << content;
    pressInSheet("OK");
  }
  EXPECT_EQ(posts, 0);
}

TEST_F(SettingsImportExportTest, APanelThatCannotBeShownIsLogged) {
  memory.windows.failure = Error{"There is no display."};
  press("Import…");
  press("Export…");
  EXPECT_THAT(log, ElementsAre("Could not show the open panel: There is no display.",
                               "Could not show the save panel: There is no display."));
}

// Drops.

TEST_F(SettingsImportExportTest, AFileThatIsDroppedOnTheWindowIsReviewed) {
  View& content = *controller->window().contentView();
  ASSERT_TRUE(content.isDragDestination());
  EXPECT_TRUE(content.performDragOperation({"/home/user/x.txt", "/home/user/tools.json"}));
  EXPECT_EQ(titleOfSheet(), "Add “Tools” to Quillmar?");
}

TEST_F(SettingsImportExportTest, ADroppedFileThatIsNoDocumentIsReported) {
  memory.files.addFile("/home/user/odd.json", "odd");
  EXPECT_TRUE(controller->window().contentView()->performDragOperation({"/home/user/odd.json"}));
  EXPECT_EQ(titleOfSheet(), "Could not read “odd.json”.");
}

// Export.

TEST_F(SettingsImportExportTest, ExportAsksForAJsonFile) {
  press("Export…");
  ASSERT_THAT(memory.windows.filePanels(), SizeIs(1));
  const MemoryFilePanel& panel = *memory.windows.filePanels()[0];
  EXPECT_EQ(panel.parent, &controller->window());
  ASSERT_TRUE(panel.save);
  EXPECT_EQ(panel.save->title, "Choose where to save your Quillmar settings");
  EXPECT_EQ(panel.save->proposedName, "quillmar-settings.json");
  EXPECT_EQ(panel.save->type, (FileType{"JSON files", {"json"}}));
}

TEST_F(SettingsImportExportTest, AnExportHasEverythingButNameAndDescription) {
  settings->config.version = 5;
  settings->config.name = "Mine";
  settings->config.description = "All of it";
  settings->config.preferences.notifyOnFailure = false;
  const QuillmarConfig before = settings->config;
  press("Export…");
  endPanel(exportPath);
  QuillmarConfig expected = before;
  expected.name.reset();
  expected.description.reset();
  EXPECT_EQ(memory.files.contents(exportPath), encodeDocument(expected));
  EXPECT_EQ(settings->config, before);
  EXPECT_EQ(posts, 0);
  EXPECT_THAT(sheet(), IsNull());
  EXPECT_THAT(memory.windows.filePanels(), IsEmpty());
}

TEST_F(SettingsImportExportTest, AnExportReplacesAFileAndKeepsItsPermissions) {
  memory.files.addFile(exportPath, std::string(100'000, 'x'), 0600);
  press("Export…");
  endPanel(exportPath);
  EXPECT_EQ(memory.files.contents(exportPath), encodeDocument(settings->config));
  EXPECT_EQ(memory.files.permissions(exportPath).value(), 0600U);
}

TEST_F(SettingsImportExportTest, ACancelledExportWritesNothing) {
  const std::vector<std::string> paths = memory.files.paths();
  press("Export…");
  endPanel("");
  EXPECT_EQ(memory.files.paths(), paths);
}

TEST_F(SettingsImportExportTest, AnExportThatCannotBeWrittenIsReported) {
  memory.files.addFolder("/read-only", 0555);
  press("Export…");
  endPanel("/read-only/settings.json");
  const Result<void> failed = memory.files.replace("/read-only/settings.json", "", std::nullopt);
  expectAlert("Export Failed", "Failed to export settings: " + failed.error().description);
  pressInSheet("OK");
  EXPECT_THAT(sheet(), IsNull());
}

TEST_F(SettingsImportExportTest, AnExportedFileCanBeImportedAgain) {
  press("Export…");
  endPanel(exportPath);
  const std::vector<MenuCategory> before = settings->config.categories;
  settings->config.categories.clear();
  press("Import…");
  endPanel(exportPath);
  EXPECT_EQ(titleOfSheet(), "Add “Imported settings” to Quillmar?");
  pressInSheet("Merge");
  EXPECT_EQ(settings->config.categories, before);
}

}  // namespace
}  // namespace quillmar
