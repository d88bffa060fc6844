// The toolkit's own file dialog, as the panels set it up.

#include "platform/widgets/file_panel.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTreeView>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/conformance/widgets_fixture.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

class FilePanelTest : public WidgetsFixture<QtUser> {
 protected:
  FilePanelTest() {
    std::filesystem::create_directories(folder / "sub.pack");
    for (const char* const name : {"a.pack", "B.PACK", "c.json", "d.txt"}) {
      std::ofstream(folder / name).put('{');
    }
  }
  ~FilePanelTest() override { std::filesystem::remove_all(folder); }

  void beginOpenPanel() {
    const OpenPanel panel{.title = "Choose", .types = {{"Packs", {"pack", "json"}}}};
    ASSERT_TRUE(window->beginOpenPanel(panel, [this](auto& path) { chosen.push_back(path); }).ok());
    harness.settle();
  }
  void beginSavePanel() {
    const SavePanel panel{
        .title = "Save", .proposedName = "new.json", .type = {"JSON files", {"json"}}};
    ASSERT_TRUE(window->beginSavePanel(panel, [this](auto& path) { chosen.push_back(path); }).ok());
    harness.settle();
  }
  std::vector<std::string> namesShown() {
    const auto& tree = *panelOf(*window)->findChild<QTreeView*>();
    std::vector<std::string> names;
    for (int row = 0; row < tree.model()->rowCount(tree.rootIndex()); ++row) {
      names.push_back(
          tree.model()->index(row, 0, tree.rootIndex()).data().toString().toStdString());
    }
    return names;
  }
  std::string pathOf(const std::string& name) const { return (folder / name).string(); }

  std::filesystem::path folder = std::filesystem::temp_directory_path() /
                                 ("quillmar-file-panel-" + std::to_string(::getpid()));
  std::vector<std::string> chosen;
};

TEST_F(FilePanelTest, ShowsFilesOfTheTypesWhateverTheirCase) {
  show();
  beginOpenPanel();
  QFileDialog& panel = *panelOf(*window);
  panel.setDirectory(QString::fromStdString(folder.string()));
  handleEventsUntil([this] { return namesShown().size() == 4; });
  EXPECT_THAT(namesShown(),
              testing::UnorderedElementsAre("sub.pack", "a.pack", "B.PACK", "c.json"));
  EXPECT_EQ(panel.nameFilters(), QStringList("Packs (*.[pP][aA][cC][kK] *.[jJ][sS][oO][nN])"));
}

TEST_F(FilePanelTest, AFolderOrAMissingFileIsNotChosen) {
  show();
  beginOpenPanel();
  harness.chooseInPanel(*window, folder.string());
  EXPECT_THAT(chosen, testing::IsEmpty());
  EXPECT_FALSE(window->takesInput());
}

TEST_F(FilePanelTest, ANameWithoutAnExtensionGetsOne) {
  show();
  beginSavePanel();
  EXPECT_THAT(
      panelOf(*window)->selectedFiles(),
      testing::Contains(testing::Property(&QString::toStdString, testing::EndsWith("/new.json"))));
  harness.chooseInPanel(*window, pathOf("mine"));
  EXPECT_THAT(chosen, testing::ElementsAre(pathOf("mine.json")));
}

TEST_F(FilePanelTest, BeforeAFileIsReplacedTheUserIsAsked) {
  show();
  for (const QMessageBox::StandardButton answer : {QMessageBox::No, QMessageBox::Yes}) {
    beginSavePanel();
    QTimer::singleShot(0, [&] {
      auto* const question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(question, nullptr);
      EXPECT_THAT(question->text().toStdString(), testing::HasSubstr("c.json"));
      QTest::mouseClick(question->button(answer), Qt::LeftButton);
    });
    harness.chooseInPanel(*window, pathOf("c.json"));
    if (answer == QMessageBox::No) {
      EXPECT_THAT(chosen, testing::IsEmpty());
      harness.cancelPanel(*window);
    }
  }
  EXPECT_THAT(chosen, testing::ElementsAre(pathOf("c.json")));
}

TEST_F(FilePanelTest, TheUserIsAskedAboutTheNameWithItsExtension) {
  show();
  beginSavePanel();
  const auto answer = [this](QMessageBox::StandardButton button) {
    harness.chooseInPanel(*window, pathOf("c"));
    EXPECT_EQ(panelOf(*window), nullptr);
    EXPECT_FALSE(window->takesInput());
    auto* const question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(question, nullptr);
    EXPECT_EQ(question->text().toStdString(),
              "“c.json” already exists. Do you want to replace it?");
    QTest::mouseClick(question->button(button), Qt::LeftButton);
    harness.settle();
  };
  answer(QMessageBox::No);
  EXPECT_NE(panelOf(*window), nullptr);
  answer(QMessageBox::Yes);
  EXPECT_THAT(chosen, testing::ElementsAre(pathOf("c.json")));
}

TEST_F(FilePanelTest, TheWindowMayCloseWhileTheUserIsAsked) {
  show();
  beginSavePanel();
  bool isAsked = false;
  QTimer::singleShot(0, [&] {
    isAsked = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()) != nullptr;
    window.reset();
  });
  harness.chooseInPanel(*window, pathOf("c.json"));
  EXPECT_TRUE(isAsked);
  EXPECT_THAT(chosen, testing::IsEmpty());
}

TEST_F(FilePanelTest, AWindowThatGetsTheFocusBelowItsPanelKeepsItsFirstResponder) {
  Button& button = addButton("Import…");
  show();
  window->makeFirstResponder(&button);
  beginOpenPanel();
  QFocusEvent event(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
  qApp->notify(&widgetOf(button), &event);
  harness.cancelPanel(*window);
  EXPECT_EQ(harness.focusedOnScreen(*window), &button);
}

TEST_F(FilePanelTest, TheNextPanelShowsTheFolderOfTheLastChoice) {
  show();
  beginOpenPanel();
  harness.chooseInPanel(*window, pathOf("a.pack"));
  beginSavePanel();
  EXPECT_EQ(panelOf(*window)->directory().path().toStdString(), folder.string());
}

}  // namespace
}  // namespace quillmar
