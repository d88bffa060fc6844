#include "commands/prompt_panel.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_platform.h"
#include "platform/widgets/text_field.h"
#include "tests/collaborators.h"
#include "tests/core/window_contents.h"
#include "tests/key_presses.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Answer = std::pair<bool, std::optional<std::string>>;

class PromptPanelTest : public testing::Test {
 protected:
  ~PromptPanelTest() override {
    const auto stillOpen = PromptPanel::live();
    for (const auto& panel : stillOpen) panel->cancelPressed();
  }

  static PromptRequest confirmation() {
    return {.title = "Run “Erase”?", .message = "rm -r ~/tmp", .confirmTitle = "Run"};
  }

  static PromptRequest question() {
    return {.title = "Ping", .message = "Which host?", .placeholder = "", .confirmTitle = "Run"};
  }

  /// A panel that nobody but the panels themselves keeps.
  PromptPanel& show(PromptRequest request) {
    auto panel = std::make_shared<PromptPanel>(
        collaborators, std::move(request),
        [this](bool confirmed, auto text) { answers.emplace_back(confirmed, std::move(text)); });
    EXPECT_TRUE(panel->show());
    return *panel;
  }

  MemoryPlatform memory;
  PromptPanel::Collaborators collaborators = promptCollaborators(memory.platform);
  std::vector<Answer> answers;
};

// What it looks like.

TEST_F(PromptPanelTest, AConfirmationShowsItsTextsBesideTheIconAboveTheButtons) {
  PromptPanel& panel = show(confirmation());
  EXPECT_EQ(panel.panel().title(), "Quillmar");
  EXPECT_EQ(panel.panel().contentSize(), (Size{420, 140}));
  EXPECT_EQ(panel.panel().level(), WindowLevel::floating);
  EXPECT_THAT(windowOutline(panel.panel()),
              ElementsAre("row leading spacing 16 insets 18 18 18 18",
                          "  image width 48 height 48: applicationIcon",
                          "  column leading spacing 10 width 320", "    scroll width 320",
                          "      column leading spacing 10",
                          "        label bold 13 wrapping width 320: Run “Erase”?",
                          "        label 11 wrapping width 320: rm -r ~/tmp",
                          "    row centred spacing 8 width 320", "      space",
                          "      button escape: Cancel", "      button return: Run"));
}

TEST_F(PromptPanelTest, AQuestionHasAFieldBetweenItsTextsAndTheButtons) {
  PromptRequest request = question();
  request.placeholder = "example.org";
  PromptPanel& panel = show(request);
  EXPECT_THAT(windowOutline(panel.panel()),
              ElementsAre("row leading spacing 16 insets 18 18 18 18",
                          "  image width 48 height 48: applicationIcon",
                          "  column leading spacing 10 width 320", "    scroll width 320",
                          "      column leading spacing 10",
                          "        label bold 13 wrapping width 320: Ping",
                          "        label 11 wrapping width 320: Which host?",
                          "    field placeholder example.org width 320 called Which host?",
                          "    row centred spacing 8 width 320", "      space",
                          "      button escape: Cancel", "      button return: Run"));
}

TEST_F(PromptPanelTest, WithoutTheIconItsPlaceStaysEmpty) {
  memory.images.images.clear();
  PromptPanel& panel = show(confirmation());
  EXPECT_THAT(windowOutline(panel.panel())[1], "  image width 48 height 48");
}

TEST_F(PromptPanelTest, AnEmptyPlaceholderStillMakesAField) {
  EXPECT_NE(show(question()).textField(), nullptr);
}

TEST_F(PromptPanelTest, AConfirmationHasNoFieldAndLeavesTheFocusToTheWindow) {
  PromptPanel& panel = show(confirmation());
  EXPECT_EQ(panel.textField(), nullptr);
  EXPECT_THAT(viewsOf<TextField>(panel.panel()), IsEmpty());
  EXPECT_EQ(memory.windows.focused(panel.panel()), panel.panel().defaultButton());
}

TEST_F(PromptPanelTest, AQuestionHasTheFocusInItsField) {
  PromptPanel& panel = show(question());
  EXPECT_EQ(memory.windows.focused(panel.panel()), panel.textField());
}

TEST_F(PromptPanelTest, ItAppearsInTheMiddleOfTheScreenAndInFront) {
  show(confirmation());
  PromptPanel& panel = show(question());
  EXPECT_EQ(memory.windows.frontWindow(), &panel.panel());
  EXPECT_TRUE(memory.windows.placedInMiddle(panel.panel()));
}

TEST_F(PromptPanelTest, AnActivationIsForOnePanel) {
  memory.application.setActivation({.timestamp = 7, .token = "token"});
  show(confirmation());
  EXPECT_EQ(memory.windows.lastActivation(), (Activation{.timestamp = 7, .token = "token"}));
  show(question());
  EXPECT_EQ(memory.windows.lastActivation(), Activation{});
}

// How it finishes.

TEST_F(PromptPanelTest, ReturnInAnEmptyFieldConfirmsWithTheEmptyText) {
  EXPECT_TRUE(show(question()).panel().key(pressOf(keys::returnKey)));
  EXPECT_THAT(answers, ElementsAre(Answer(true, "")));
  EXPECT_THAT(memory.windows.windows(), IsEmpty());
}

TEST_F(PromptPanelTest, WhatWasTypedIsReportedAsItStands) {
  PromptPanel& panel = show(question());
  panel.textField()->type("  a b ");
  panel.panel().key(pressOf(keys::returnKey));
  EXPECT_THAT(answers, ElementsAre(Answer(true, "  a b ")));
}

TEST_F(PromptPanelTest, TheConfirmButtonReportsOnce) {
  PromptPanel& panel = show(confirmation());
  buttonTitled(panel.panel(), "Run")->press();
  EXPECT_THAT(answers, ElementsAre(Answer(true, std::nullopt)));
}

TEST_F(PromptPanelTest, EscapeTheCancelButtonAndTheCloseButtonReportCancelOnce) {
  show(confirmation()).panel().key(pressOf(keys::escape));
  EXPECT_THAT(answers, ElementsAre(Answer(false, std::nullopt)));
  buttonTitled(show(confirmation()).panel(), "Cancel")->press();
  EXPECT_THAT(answers, SizeIs(2));
  EXPECT_EQ(answers.back(), Answer(false, std::nullopt));
  show(confirmation()).panel().performClose();
  EXPECT_THAT(answers, SizeIs(3));
  EXPECT_EQ(answers.back(), Answer(false, std::nullopt));
  EXPECT_THAT(memory.windows.windows(), IsEmpty());
}

TEST_F(PromptPanelTest, ACancelledQuestionReportsWhatWasTypedToo) {
  PromptPanel& panel = show(question());
  panel.textField()->type("half a wo");
  panel.panel().key(pressOf(keys::escape));
  EXPECT_THAT(answers, ElementsAre(Answer(false, "half a wo")));
}

TEST_F(PromptPanelTest, OnlyTheFirstWayToFinishReports) {
  const std::shared_ptr<PromptPanel> kept = show(confirmation()).shared_from_this();
  EXPECT_FALSE(kept->finished());
  kept->okPressed();
  EXPECT_TRUE(kept->finished());
  kept->okPressed();
  kept->cancelPressed();
  kept->panel().performClose();
  kept->windowWillClose(kept->panel());
  EXPECT_FALSE(kept->panel().key(pressOf(keys::escape)));
  EXPECT_THAT(answers, ElementsAre(Answer(true, std::nullopt)));
}

TEST_F(PromptPanelTest, APanelThatHasFinishedIsNotShownAgain) {
  const std::shared_ptr<PromptPanel> kept = show(confirmation()).shared_from_this();
  kept->cancelPressed();
  const Result<void> shown = kept->show();
  ASSERT_FALSE(shown);
  EXPECT_EQ(shown.error().description,
            "The panel has been answered already and cannot be shown again.");
  EXPECT_THAT(PromptPanel::live(), IsEmpty());
  EXPECT_THAT(memory.windows.windows(), IsEmpty());
  EXPECT_THAT(answers, SizeIs(1));
}

TEST_F(PromptPanelTest, APanelIgnoresClicksBeforeItCanHaveBeenRead) {
  EXPECT_TRUE(show(question()).panel().ignoresEarlyClicks());
}

TEST_F(PromptPanelTest, WhenItReportsItIsClosedAndNoLongerLive) {
  bool reported = false;
  auto panel = std::make_shared<PromptPanel>(collaborators, confirmation(),
                                             [&](bool /*confirmed*/, const auto& /*text*/) {
                                               reported = true;
                                               EXPECT_THAT(memory.windows.windows(), IsEmpty());
                                               EXPECT_THAT(PromptPanel::live(), IsEmpty());
                                             });
  ASSERT_TRUE(panel->show());
  panel->okPressed();
  EXPECT_TRUE(reported);
}

TEST_F(PromptPanelTest, APanelThatNobodyOwnsLivesWhileItIsShown) {
  const std::weak_ptr<PromptPanel> panel = show(confirmation()).weak_from_this();
  EXPECT_THAT(PromptPanel::live(), ElementsAre(panel.lock()));
  panel.lock()->panel().key(pressOf(keys::returnKey));
  EXPECT_THAT(PromptPanel::live(), IsEmpty());
  EXPECT_TRUE(panel.expired());
}

TEST_F(PromptPanelTest, SeveralPanelsAreIndependent) {
  PromptPanel& first = show(question());
  PromptPanel& second = show(question());
  PromptPanel& third = show(confirmation());
  first.textField()->type("one");
  second.textField()->type("two");
  EXPECT_THAT(memory.windows.windows(),
              ElementsAre(&first.panel(), &second.panel(), &third.panel()));

  second.panel().key(pressOf(keys::returnKey));
  EXPECT_THAT(answers, ElementsAre(Answer(true, "two")));
  EXPECT_THAT(memory.windows.windows(), ElementsAre(&first.panel(), &third.panel()));
  third.panel().key(pressOf(keys::escape));
  first.panel().key(pressOf(keys::returnKey));
  EXPECT_THAT(answers,
              ElementsAre(Answer(true, "two"), Answer(false, std::nullopt), Answer(true, "one")));
}

TEST_F(PromptPanelTest, AnAnswerMayOpenTheNextPanel) {
  auto panel = std::make_shared<PromptPanel>(
      collaborators, confirmation(),
      [this](bool /*confirmed*/, const auto& /*text*/) { show(question()); });
  ASSERT_TRUE(panel->show());
  Window& firstWindow = panel->panel();
  panel.reset();
  firstWindow.key(pressOf(keys::returnKey));

  ASSERT_THAT(memory.windows.windows(), SizeIs(1));
  EXPECT_THAT(answers, IsEmpty());
  memory.windows.frontWindow()->key(pressOf(keys::returnKey));
  EXPECT_THAT(answers, ElementsAre(Answer(true, "")));
}

TEST_F(PromptPanelTest, APanelThatCannotBeShownSaysWhyAndReportsNothing) {
  memory.windows.failure = Error{"There is no display."};
  auto panel = std::make_shared<PromptPanel>(
      collaborators, confirmation(),
      [this](bool confirmed, auto text) { answers.emplace_back(confirmed, std::move(text)); });
  const Result<void> shown = panel->show();
  ASSERT_FALSE(shown);
  EXPECT_EQ(shown.error().description, "There is no display.");
  EXPECT_THAT(PromptPanel::live(), IsEmpty());
  const std::weak_ptr<PromptPanel> gone = panel;
  panel.reset();
  EXPECT_TRUE(gone.expired());
  EXPECT_THAT(answers, IsEmpty());
}

// Panels in one go.

TEST_F(PromptPanelTest, ConfirmGivesWhetherTheUserConfirmed) {
  std::vector<bool> confirmed;
  const auto ask = [&] {
    EXPECT_TRUE(PromptPanel::confirm(collaborators, "Title", "Message", "Do it",
                                     [&](bool answer) { confirmed.push_back(answer); }));
    return memory.windows.frontWindow();
  };
  Window* const window = ask();
  EXPECT_THAT(viewsOf<TextField>(*window), IsEmpty());
  EXPECT_EQ(window->defaultButton()->title(), "Do it");
  window->key(pressOf(keys::returnKey));
  ask()->key(pressOf(keys::escape));
  EXPECT_THAT(confirmed, ElementsAre(true, false));
}

TEST_F(PromptPanelTest, InputGivesTheTextOrNothingWhenCancelled) {
  std::vector<std::optional<std::string>> texts;
  const auto ask = [&] {
    EXPECT_TRUE(PromptPanel::input(collaborators, "Title", "Message", "Placeholder",
                                   [&](auto text) { texts.push_back(std::move(text)); }));
    return memory.windows.frontWindow();
  };
  Window* window = ask();
  ASSERT_THAT(viewsOf<TextField>(*window), SizeIs(1));
  EXPECT_EQ(viewsOf<TextField>(*window)[0]->placeholder(), "Placeholder");
  window->key(pressOf(keys::returnKey));
  window = ask();
  viewsOf<TextField>(*window)[0]->type("typed");
  window->key(pressOf(keys::escape));
  EXPECT_THAT(texts, ElementsAre(std::optional<std::string>(""), std::nullopt));
}

}  // namespace
}  // namespace quillmar
