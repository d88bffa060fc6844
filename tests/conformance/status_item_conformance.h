// What every status item promises, whoever shows it. A harness shows one to a pretended user:
//
//   StatusItem& item();
//   Opened open();                        the menu as it stands, opened
//   std::vector<ShownEntry> shown(const Opened&);
//   std::optional<Activation> click(const Opened&, const std::vector<std::string>& path,
//                                   const Activation& = {});
//                                         what the click brought, once the entry has taken it; the
//                                         tasks wait. A click in a panel brings the activation,
//                                         one in a window of the program none: that the window
//                                         system knows of
//   void runTasks();                      runs what waits in the main queue
//   std::string icon();                   name of the image that the icon has; empty where it has
//                                         none, or what stands in for one

#pragma once

#include <deque>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/status_item.h"
#include "platform/task_queue.h"

namespace quillmar {

/// An entry as a user sees it.
struct ShownEntry {
  /// Empty for a separator.
  std::string title;
  std::string icon;
  bool hasShortcut = false;
  std::vector<ShownEntry> children;
  bool isEnabled = true;
  /// Absent where there is neither a mark nor room for one.
  std::optional<ControlState> state;

  bool operator==(const ShownEntry&) const = default;
};

inline void PrintTo(const ShownEntry& entry, std::ostream* out) {
  *out << "{" << entry.title << ", " << entry.icon << (entry.hasShortcut ? ", shortcut" : "")
       << ", " << testing::PrintToString(entry.children) << (entry.isEnabled ? "" : ", disabled")
       << (entry.state ? (*entry.state == ControlState::off ? ", off" : ", on") : "") << "}";
}

/// The menu as a user sees it who is shown it as it is.
inline std::vector<ShownEntry> shownEntries(const Menu& menu) {
  std::vector<ShownEntry> shown;
  for (const MenuEntry& entry : menu.entries) {
    ShownEntry& row = shown.emplace_back();
    if (const auto* action = std::get_if<ActionEntry>(&entry)) {
      row.title = action->title;
      row.icon = action->image ? action->image->name : "";
      row.hasShortcut = action->keyEquivalent.has_value();
      row.isEnabled = action->enabled;
      row.state = action->state;
    } else if (const auto* folder = std::get_if<SubmenuEntry>(&entry)) {
      row.title = folder->title;
      row.icon = folder->image ? folder->image->name : "";
      row.children = shownEntries(folder->submenu);
      row.isEnabled = folder->enabled;
    }
  }
  return shown;
}

/// A main queue that runs when it is told to.
class HeldTaskQueue final : public TaskQueue {
 public:
  void async(Task task) override { tasks_.push_back(std::move(task)); }

  void run() {
    while (!tasks_.empty()) {
      const Task task = std::move(tasks_.front());
      tasks_.pop_front();
      task();
    }
  }

 private:
  std::deque<Task> tasks_;
};

inline ActionEntry itemEntry(const std::string& title, const std::string& id) {
  ActionEntry entry;
  entry.title = title;
  entry.id = id;
  return entry;
}

inline Menu menuWith(std::vector<MenuEntry> entries) {
  Menu menu;
  menu.entries = std::move(entries);
  return menu;
}

template <class Harness>
class StatusItemConformance : public testing::Test {
 protected:
  StatusItemConformance() {
    harness.item().setActionHandler([this](const ActionEntry& entry, const Activation& activation) {
      chosen.push_back(entry);
      activations.push_back(activation);
    });
  }

  Harness harness;
  std::vector<ActionEntry> chosen;
  std::vector<Activation> activations;
};

TYPED_TEST_SUITE_P(StatusItemConformance);

TYPED_TEST_P(StatusItemConformance, ShowsTheMenuThatItWasGiven) {
  ActionEntry plain = itemEntry("my_command_name & more", "1");
  plain.image = Image{.name = "terminal", .isTemplate = true, .pointSize = 13, .weight = {}};
  SubmenuEntry folder;
  folder.title = "Folder";
  folder.image = Image{.name = "folder", .isTemplate = true, .pointSize = 13, .weight = {}};
  folder.submenu = menuWith({itemEntry("Inner", "2"), SeparatorEntry{}, SeparatorEntry{}});
  ActionEntry quit;
  quit.title = "Quit";
  quit.keyEquivalent = KeyEquivalent{.character = "q"};
  this->harness.item().setMenu(menuWith({plain, folder, SeparatorEntry{}, quit}));

  const std::vector<ShownEntry> expected = {
      {"my_command_name & more", "terminal", false, {}},
      {"Folder", "folder", false, {{"Inner", "", false, {}}, {}, {}}},
      {},
      {"Quit", "", true, {}}};
  EXPECT_EQ(this->harness.shown(this->harness.open()), expected);
}

TYPED_TEST_P(StatusItemConformance, ShowsWhatIsDisabledAndWhatIsOn) {
  ActionEntry off = itemEntry("Off", "1");
  off.state = ControlState::off;
  ActionEntry on = itemEntry("On", "2");
  on.state = ControlState::on;
  on.enabled = false;
  SubmenuEntry folder;
  folder.title = "Folder";
  folder.enabled = false;
  this->harness.item().setMenu(menuWith({off, on, folder, itemEntry("Plain", "3")}));

  const std::vector<ShownEntry> expected = {{"Off", "", false, {}, true, ControlState::off},
                                            {"On", "", false, {}, false, ControlState::on},
                                            {"Folder", "", false, {}, false, {}},
                                            {"Plain", "", false, {}, true, {}}};
  EXPECT_EQ(this->harness.shown(this->harness.open()), expected);
}

TYPED_TEST_P(StatusItemConformance, AChoiceDoesNotChangeAToggle) {
  ActionEntry on = itemEntry("On", "1");
  on.state = ControlState::on;
  this->harness.item().setMenu(menuWith({on}));
  EXPECT_TRUE(this->harness.click(this->harness.open(), {"On"}));
  this->harness.runTasks();
  EXPECT_EQ(this->harness.shown(this->harness.open()).at(0).state, ControlState::on);
}

TYPED_TEST_P(StatusItemConformance, ADisabledEntryCannotBeChosen) {
  ActionEntry entry = itemEntry("Title", "1");
  entry.enabled = false;
  this->harness.item().setMenu(menuWith({entry}));
  this->harness.click(this->harness.open(), {"Title"});
  this->harness.runTasks();
  EXPECT_THAT(this->chosen, testing::IsEmpty());
}

TYPED_TEST_P(StatusItemConformance, AnActionOfTheEntryRunsInsteadOfTheHandler) {
  std::vector<Activation> ran;
  ActionEntry entry = itemEntry("Title", "1");
  entry.action = [&](const Activation& activation) { ran.push_back(activation); };
  this->harness.item().setMenu(menuWith({entry}));
  const auto brought = this->harness.click(this->harness.open(), {"Title"}, {5, "token"});
  ASSERT_TRUE(brought);
  EXPECT_THAT(ran, testing::IsEmpty());
  this->harness.runTasks();
  EXPECT_THAT(ran, testing::ElementsAre(*brought));
  EXPECT_THAT(this->chosen, testing::IsEmpty());
}

TYPED_TEST_P(StatusItemConformance, AMenuThatLooksTheSameRunsItsOwnActions) {
  std::string ran;
  const auto menu = [&](const std::string& name) {
    ActionEntry entry = itemEntry("Title", "1");
    entry.action = [&ran, name](const Activation&) { ran += name; };
    return menuWith({entry});
  };
  this->harness.item().setMenu(menu("a"));
  this->harness.item().setMenu(menu("b"));
  EXPECT_TRUE(this->harness.click(this->harness.open(), {"Title"}));
  this->harness.runTasks();
  EXPECT_EQ(ran, "b");
}

TYPED_TEST_P(StatusItemConformance, AClickIsAnsweredBeforeItsActionRuns) {
  SubmenuEntry folder;
  folder.title = "Folder";
  folder.submenu = menuWith({itemEntry("Inner", "2")});
  this->harness.item().setMenu(menuWith({itemEntry("Outer", "1"), folder}));

  EXPECT_TRUE(this->harness.click(this->harness.open(), {"Folder", "Inner"}));
  EXPECT_THAT(this->chosen, testing::IsEmpty());
  this->harness.runTasks();
  EXPECT_THAT(this->chosen, testing::ElementsAre(itemEntry("Inner", "2")));
}

TYPED_TEST_P(StatusItemConformance, AnOpenMenuDoesWhatItShowedThroughOneReplacement) {
  this->harness.item().setMenu(menuWith({itemEntry("Same title", "old")}));
  const auto opened = this->harness.open();
  this->harness.item().setMenu(menuWith({itemEntry("Same title", "new")}));

  EXPECT_TRUE(this->harness.click(opened, {"Same title"}));
  EXPECT_TRUE(this->harness.click(this->harness.open(), {"Same title"}));
  this->harness.runTasks();
  EXPECT_THAT(this->chosen,
              testing::ElementsAre(itemEntry("Same title", "old"), itemEntry("Same title", "new")));
}

TYPED_TEST_P(StatusItemConformance, AnOpenMenuIsDeadAfterTwoReplacements) {
  this->harness.item().setMenu(menuWith({itemEntry("Title", "first")}));
  const auto opened = this->harness.open();
  this->harness.item().setMenu(menuWith({itemEntry("Title", "second")}));
  this->harness.item().setMenu(menuWith({itemEntry("Title", "third")}));

  EXPECT_FALSE(this->harness.click(opened, {"Title"}));
  this->harness.runTasks();
  EXPECT_THAT(this->chosen, testing::IsEmpty());
}

TYPED_TEST_P(StatusItemConformance, AChosenEntryStillRunsWhenItsMenuGoesAwayMeanwhile) {
  this->harness.item().setMenu(menuWith({itemEntry("Title", "first")}));
  EXPECT_TRUE(this->harness.click(this->harness.open(), {"Title"}));
  this->harness.item().setMenu(menuWith({itemEntry("Title", "second")}));
  this->harness.item().setMenu(menuWith({}));
  this->harness.runTasks();
  EXPECT_THAT(this->chosen, testing::ElementsAre(itemEntry("Title", "first")));
}

TYPED_TEST_P(StatusItemConformance, AChosenEntryBringsTheActivationOfItsClick) {
  this->harness.item().setMenu(menuWith({itemEntry("Title", "1")}));
  const Activation first{.timestamp = 4'000'000'000, .token = "first"};
  const Activation second{.timestamp = 7, .token = "second"};
  const auto broughtFirst = this->harness.click(this->harness.open(), {"Title"}, first);
  const auto broughtSecond = this->harness.click(this->harness.open(), {"Title"}, second);
  ASSERT_TRUE(broughtFirst && broughtSecond);
  this->harness.runTasks();
  EXPECT_THAT(this->activations, testing::ElementsAre(*broughtFirst, *broughtSecond));
}

TYPED_TEST_P(StatusItemConformance, AClickWithoutAnActivationInheritsNone) {
  this->harness.item().setMenu(menuWith({itemEntry("Title", "1")}));
  const auto brought = this->harness.click(this->harness.open(), {"Title"}, {5, "token"});
  ASSERT_TRUE(brought);
  this->harness.runTasks();
  EXPECT_TRUE(this->harness.click(this->harness.open(), {"Title"}));
  this->harness.runTasks();
  EXPECT_THAT(this->activations, testing::ElementsAre(*brought, Activation{}));
}

TYPED_TEST_P(StatusItemConformance, ShowsTheImageThatWasSetLast) {
  EXPECT_EQ(this->harness.icon(), "");
  this->harness.item().setImage(
      Image{.name = "statusIcon", .isTemplate = true, .pointSize = {}, .weight = {}});
  EXPECT_EQ(this->harness.icon(), "statusIcon");
  this->harness.item().setImage(std::nullopt);
  EXPECT_EQ(this->harness.icon(), "");
}

REGISTER_TYPED_TEST_SUITE_P(StatusItemConformance, ShowsTheMenuThatItWasGiven,
                            ShowsWhatIsDisabledAndWhatIsOn, AChoiceDoesNotChangeAToggle,
                            ADisabledEntryCannotBeChosen, AnActionOfTheEntryRunsInsteadOfTheHandler,
                            AMenuThatLooksTheSameRunsItsOwnActions,
                            AClickIsAnsweredBeforeItsActionRuns,
                            AnOpenMenuDoesWhatItShowedThroughOneReplacement,
                            AnOpenMenuIsDeadAfterTwoReplacements,
                            AChosenEntryStillRunsWhenItsMenuGoesAwayMeanwhile,
                            AChosenEntryBringsTheActivationOfItsClick,
                            AClickWithoutAnActivationInheritsNone, ShowsTheImageThatWasSetLast);

}  // namespace quillmar
