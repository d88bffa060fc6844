#include "settings_ui/drop_target_view.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DropTargetViewTest : public testing::Test {
 protected:
  DropTargetViewTest() {
    view.onDrop = [this](const std::string& path) { dropped.push_back(path); };
  }

  DropTargetView view;
  std::vector<std::string> dropped;
};

TEST_F(DropTargetViewTest, APackAndASettingsFileAreTakenWhateverTheCaseOfTheirExtension) {
  for (const char* const path : {"/a/b.json", "/a/b.quillmarpack", "/a/b.JSON",
                                 "/a/b.x.QuillmarPack", "/a/.b.json", "/a/ü ü..json"}) {
    EXPECT_TRUE(view.draggingEntered({path})) << path;
    EXPECT_TRUE(view.performDragOperation({path})) << path;
    EXPECT_EQ(dropped.back(), path);
  }
}

TEST_F(DropTargetViewTest, FoldersOtherFilesAndNothingAreRefused) {
  for (const std::vector<std::string>& files :
       std::vector<std::vector<std::string>>{{"/a/folder"},
                                             {"/a/notes.txt"},
                                             {"/a/json"},
                                             {"/a/.json"},
                                             {"/a/b.json/"},
                                             {"/a/b.json5"},
                                             {"/a/b."},
                                             {"/a/b.json "},
                                             {"/a.json/b"},
                                             {}}) {
    EXPECT_FALSE(view.draggingEntered(files));
    EXPECT_FALSE(view.performDragOperation(files));
  }
  EXPECT_THAT(dropped, IsEmpty());
}

TEST_F(DropTargetViewTest, OfSeveralFilesOnlyTheFirstAcceptableOneIsTaken) {
  EXPECT_TRUE(view.performDragOperation(
      {"/a/folder", "/a/notes.txt", "/a/z.quillmarpack", "/a/a.json", "/a/b.json"}));
  EXPECT_THAT(dropped, ElementsAre("/a/z.quillmarpack"));
}

TEST_F(DropTargetViewTest, DraggingDropsNothing) {
  EXPECT_TRUE(view.draggingEntered({"/a/b.json"}));
  EXPECT_THAT(dropped, IsEmpty());
}

TEST_F(DropTargetViewTest, ADropWithoutAHandlerIsTaken) {
  view.onDrop = nullptr;
  EXPECT_TRUE(view.performDragOperation({"/a/b.json"}));
}

}  // namespace
}  // namespace quillmar
