// Conformance tests of window systems: panels in which the user chooses a file.

#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/widgets/button.h"
#include "platform/widgets/file_panel.h"
#include "platform/widgets/window.h"
#include "tests/conformance/widgets_fixture.h"

namespace quillmar {

template <class Harness>
class PanelsConformance : public WidgetsFixture<Harness> {
 protected:
  PanelsConformance()
      : folder(std::filesystem::temp_directory_path() /
               ("quillmar-panels-" + std::to_string(::getpid()))) {
    std::filesystem::create_directory(folder);
    std::ofstream(folder / "a b.pack").put('{');
    std::ofstream(folder / "größer.PACK").put('{');
  }
  ~PanelsConformance() override { std::filesystem::remove_all(folder); }

  std::string pathOf(const std::string& name) const { return (folder / name).string(); }
  void beginOpenPanel() {
    const OpenPanel panel{.title = "Choose a pack",
                          .types = {{.name = "Packs", .extensions = {"pack", "json"}}}};
    ASSERT_TRUE(
        this->window
            ->beginOpenPanel(panel, [this](const std::string& path) { chosen.push_back(path); })
            .ok());
    this->harness.settle();
  }
  void beginSavePanel() {
    const SavePanel panel{.title = "Choose where to save",
                          .proposedName = "proposed.json",
                          .type = {.name = "JSON files", .extensions = {"json"}}};
    ASSERT_TRUE(
        this->window
            ->beginSavePanel(panel, [this](const std::string& path) { chosen.push_back(path); })
            .ok());
    this->harness.settle();
  }

  std::filesystem::path folder;
  std::vector<std::string> chosen;
};

TYPED_TEST_SUITE_P(PanelsConformance);

TYPED_TEST_P(PanelsConformance, TheChosenFileIsReportedAfterThePanelHasClosed) {
  this->show();
  for (const std::string name : {"a b.pack", "größer.PACK"}) {
    this->beginOpenPanel();
    EXPECT_EQ(this->harness.panelTitleOnScreen(*this->window), "Choose a pack");
    this->harness.chooseInPanel(*this->window, this->pathOf(name));
    EXPECT_EQ(this->harness.panelTitleOnScreen(*this->window), "");
    EXPECT_TRUE(this->window->takesInput());
    EXPECT_EQ(this->chosen.back(), this->pathOf(name));
  }
  EXPECT_EQ(this->chosen.size(), 2U);
}

TYPED_TEST_P(PanelsConformance, AFileToSaveNeedNotExist) {
  this->show();
  this->beginSavePanel();
  EXPECT_EQ(this->harness.panelTitleOnScreen(*this->window), "Choose where to save");
  this->harness.chooseInPanel(*this->window, this->pathOf("new.json"));
  EXPECT_THAT(this->chosen, testing::ElementsAre(this->pathOf("new.json")));
}

TYPED_TEST_P(PanelsConformance, ACancelledPanelReportsNothing) {
  this->show();
  this->beginOpenPanel();
  this->harness.cancelPanel(*this->window);
  this->beginSavePanel();
  this->harness.cancelPanel(*this->window);
  EXPECT_EQ(this->harness.panelTitleOnScreen(*this->window), "");
  EXPECT_TRUE(this->window->takesInput());
  EXPECT_THAT(this->chosen, testing::IsEmpty());
}

TYPED_TEST_P(PanelsConformance, APanelBlocksItsWindow) {
  const Button& button = this->addButton("Save");
  this->show();
  this->beginOpenPanel();
  EXPECT_FALSE(this->window->takesInput());
  this->harness.click(button);
  this->harness.closeByTitleBar(*this->window);
  EXPECT_THAT(this->pressed, testing::IsEmpty());
  EXPECT_TRUE(this->window->visible());
  this->harness.cancelPanel(*this->window);
  this->harness.click(button);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Save"));
}

TYPED_TEST_P(PanelsConformance, AWindowHasOneSheetOrPanel) {
  this->show();
  Window sheet(this->harness.windows());
  ASSERT_TRUE(this->window->beginSheet(sheet, {}).ok());
  EXPECT_FALSE(this->window->beginOpenPanel({}, {}).ok());
  EXPECT_FALSE(this->window->beginSavePanel({}, {}).ok());
  sheet.close();
  this->beginOpenPanel();
  EXPECT_FALSE(this->window->beginSheet(sheet, {}).ok());
  EXPECT_FALSE(this->window->beginSavePanel({}, {}).ok());
  EXPECT_FALSE(this->harness.isOnScreen(sheet));
}

TYPED_TEST_P(PanelsConformance, AWindowThatIsNotOpenHasNoPanel) {
  EXPECT_FALSE(this->window->beginOpenPanel({}, {}).ok());
}

TYPED_TEST_P(PanelsConformance, AWindowThatClosesClosesItsPanelWithoutAnAnswer) {
  this->show();
  this->beginOpenPanel();
  this->window->close();
  this->harness.settle();
  EXPECT_EQ(this->harness.panelTitleOnScreen(*this->window), "");
  this->show();
  EXPECT_TRUE(this->window->takesInput());
  EXPECT_THAT(this->chosen, testing::IsEmpty());
}

TYPED_TEST_P(PanelsConformance, AWindowThatIsDestroyedClosesItsPanelWithoutAnAnswer) {
  const int before = this->harness.widgetCount();
  this->show();
  this->beginSavePanel();
  this->window.reset();
  this->harness.settle();
  EXPECT_EQ(this->harness.widgetCount(), before);
  EXPECT_THAT(this->chosen, testing::IsEmpty());
}

TYPED_TEST_P(PanelsConformance, AnAnswerMayBeginASheet) {
  this->show();
  Window sheet(this->harness.windows());
  ASSERT_TRUE(this->window
                  ->beginOpenPanel({.title = "Open", .types = {}},
                                   [&](const std::string&) {
                                     EXPECT_TRUE(this->window->beginSheet(sheet, {}).ok());
                                   })
                  .ok());
  this->harness.settle();
  this->harness.chooseInPanel(*this->window, this->pathOf("a b.pack"));
  EXPECT_TRUE(this->harness.isOnScreen(sheet));
  EXPECT_FALSE(this->window->takesInput());
}

TYPED_TEST_P(PanelsConformance, AnAnswerMayDestroyTheWindow) {
  const int before = this->harness.widgetCount();
  this->show();
  ASSERT_TRUE(this->window
                  ->beginOpenPanel({.title = "Open", .types = {}},
                                   [this](const std::string&) { this->window.reset(); })
                  .ok());
  this->harness.settle();
  this->harness.chooseInPanel(*this->window, this->pathOf("a b.pack"));
  this->harness.settle();
  EXPECT_EQ(this->window, nullptr);
  EXPECT_EQ(this->harness.widgetCount(), before);
}

REGISTER_TYPED_TEST_SUITE_P(PanelsConformance, TheChosenFileIsReportedAfterThePanelHasClosed,
                            AFileToSaveNeedNotExist, ACancelledPanelReportsNothing,
                            APanelBlocksItsWindow, AWindowHasOneSheetOrPanel,
                            AWindowThatIsNotOpenHasNoPanel,
                            AWindowThatClosesClosesItsPanelWithoutAnAnswer,
                            AWindowThatIsDestroyedClosesItsPanelWithoutAnAnswer,
                            AnAnswerMayBeginASheet, AnAnswerMayDestroyTheWindow);

}  // namespace quillmar
