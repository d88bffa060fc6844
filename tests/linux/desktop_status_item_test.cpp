#include "platform/linux/status_item/desktop_status_item.h"

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_status_item.h"
#include "platform/memory/memory_window_system.h"
#include "tests/conformance/status_item_conformance.h"

namespace quillmar {
namespace {

using testing::ElementsAre;

/// A desktop whose XEmbed trays come and go as the test says.
class ManualTrays final : public TrayWatch {
 public:
  void start(std::function<void(bool hasTray)> changed) override {
    changed_ = std::move(changed);
    if (hasTray_) changed_(true);
  }
  void stop() override { changed_ = nullptr; }

  bool isWatched() const { return changed_ != nullptr; }
  void setHasTray(bool hasTray) {
    hasTray_ = hasTray;
    if (changed_) changed_(hasTray);
  }

 private:
  std::function<void(bool hasTray)> changed_;
  bool hasTray_ = false;
};

/// A clock that the test moves.
class ManualClock {
 public:
  DesktopStatusItem::RunLater runLater() {
    return [this](std::chrono::milliseconds delay, TaskQueue::Task task) {
      const int id = ++lastId_;
      tasks_[id] = {now_ + delay, std::move(task)};
      return [this, id] { tasks_.erase(id); };
    };
  }

  bool hasTasks() const { return !tasks_.empty(); }

  void advance(std::chrono::milliseconds time) {
    now_ += time;
    std::vector<TaskQueue::Task> due;
    for (auto& [id, task] : tasks_) {
      if (task.first <= now_) due.push_back(std::move(task.second));
    }
    std::erase_if(tasks_, [this](const auto& task) { return task.second.first <= now_; });
    for (const auto& task : due) task();
  }

 private:
  std::chrono::milliseconds now_{0};
  int lastId_ = 0;
  std::map<int, std::pair<std::chrono::milliseconds, TaskQueue::Task>> tasks_;
};

constexpr std::chrono::milliseconds aMoment{1};

struct Desktop {
  HeldTaskQueue queue;
  MemoryStatusItem notifier{queue};
  MemoryWindowSystem windows{queue};
  ManualTrays trays;
  ManualClock clock;
};

class DesktopStatusItemTest : public testing::Test, protected Desktop {
 protected:
  DesktopStatusItemTest() {
    item.setActionHandler([this](const ActionEntry& entry, const Activation& activation) {
      chosen.push_back(entry.title + " " + activation.token);
    });
    item.setMenu(menuWith({itemEntry("First", "1")}));
    item.setHost(StatusNotifierHost::missing);
  }

  /// The icon in the XEmbed tray; null when there is none.
  MemoryStatusItem* embedded() const {
    const auto& all = windows.embeddedStatusItems();
    EXPECT_LE(all.size(), 1u);
    return all.empty() ? nullptr : all.front();
  }

  DesktopStatusItem item{{notifier, windows, trays, clock.runLater()}};
  std::vector<std::string> chosen;
};

TEST_F(DesktopStatusItemTest, WithAPanelNothingElseIsLookedFor) {
  trays.setHasTray(true);
  item.setHost(StatusNotifierHost::present);
  clock.advance(DesktopStatusItem::panelTimeout);
  EXPECT_FALSE(trays.isWatched());
  EXPECT_EQ(embedded(), nullptr);
  EXPECT_TRUE(item.isShown());
}

TEST_F(DesktopStatusItemTest, APanelGetsFiveSecondsToAppear) {
  trays.setHasTray(true);
  EXPECT_EQ(DesktopStatusItem::panelTimeout, std::chrono::seconds(5));
  clock.advance(DesktopStatusItem::panelTimeout - aMoment);
  EXPECT_FALSE(trays.isWatched());
  clock.advance(aMoment);
  EXPECT_NE(embedded(), nullptr);
}

TEST_F(DesktopStatusItemTest, WhileAPanelShowsTheIconNothingIsWaitedFor) {
  EXPECT_TRUE(clock.hasTasks());
  item.setHost(StatusNotifierHost::present);
  EXPECT_FALSE(clock.hasTasks());
}

TEST_F(DesktopStatusItemTest, AnXembedTrayShowsTheImageAndTheMenu) {
  item.setImage(Image{.name = "statusIcon", .isTemplate = true, .pointSize = {}, .weight = {}});
  trays.setHasTray(true);
  clock.advance(DesktopStatusItem::panelTimeout);
  ASSERT_NE(embedded(), nullptr);
  EXPECT_EQ(embedded()->image()->name, "statusIcon");
  EXPECT_EQ(embedded()->menu(), menuWith({itemEntry("First", "1")}));
  EXPECT_TRUE(item.isShown());

  item.setMenu(menuWith({itemEntry("Second", "2")}));
  item.setImage(std::nullopt);
  EXPECT_EQ(embedded()->menu(), menuWith({itemEntry("Second", "2")}));
  EXPECT_FALSE(embedded()->image());
  EXPECT_EQ(notifier.menu(), menuWith({itemEntry("Second", "2")}));
}

TEST_F(DesktopStatusItemTest, WithoutAnyTrayNoWindowsAreAskedFor) {
  windows.failure = Error{"This would have been asked for."};
  clock.advance(DesktopStatusItem::panelTimeout);
  EXPECT_TRUE(trays.isWatched());
  EXPECT_FALSE(item.isShown());
}

TEST_F(DesktopStatusItemTest, AnXembedTrayThatStartsLateGetsTheIconAndTakesItAlong) {
  clock.advance(DesktopStatusItem::panelTimeout);
  EXPECT_EQ(embedded(), nullptr);
  trays.setHasTray(true);
  EXPECT_NE(embedded(), nullptr);
  trays.setHasTray(false);
  EXPECT_EQ(embedded(), nullptr);
  EXPECT_FALSE(item.isShown());
  trays.setHasTray(true);
  EXPECT_NE(embedded(), nullptr);
}

TEST_F(DesktopStatusItemTest, APanelThatAppearsTakesTheIconOver) {
  trays.setHasTray(true);
  clock.advance(DesktopStatusItem::panelTimeout);
  item.setHost(StatusNotifierHost::present);
  EXPECT_EQ(embedded(), nullptr);
  EXPECT_FALSE(trays.isWatched());
  EXPECT_TRUE(item.isShown());
}

TEST_F(DesktopStatusItemTest, APanelThatRestartsInTimeLeavesTheXembedTrayAlone) {
  trays.setHasTray(true);
  item.setHost(StatusNotifierHost::present);
  item.setHost(StatusNotifierHost::missing);
  clock.advance(DesktopStatusItem::panelTimeout - aMoment);
  item.setHost(StatusNotifierHost::present);
  item.setHost(StatusNotifierHost::missing);
  // Of the wait before, this would be the end.
  clock.advance(aMoment);
  EXPECT_FALSE(trays.isWatched());
  clock.advance(DesktopStatusItem::panelTimeout - aMoment);
  EXPECT_NE(embedded(), nullptr);
}

TEST_F(DesktopStatusItemTest, APanelThatHasNotSaidWhetherItShowsIconsIsWaitedFor) {
  trays.setHasTray(true);
  item.setHost(StatusNotifierHost::unknown);
  EXPECT_FALSE(clock.hasTasks());
  clock.advance(DesktopStatusItem::panelTimeout);
  EXPECT_FALSE(trays.isWatched());
  item.setHost(StatusNotifierHost::missing);
  clock.advance(DesktopStatusItem::panelTimeout);
  EXPECT_NE(embedded(), nullptr);
}

TEST_F(DesktopStatusItemTest, WhileThePanelIsUnknownTheIconStays) {
  trays.setHasTray(true);
  clock.advance(DesktopStatusItem::panelTimeout);
  item.setHost(StatusNotifierHost::unknown);
  EXPECT_NE(embedded(), nullptr);
  trays.setHasTray(false);
  item.setHost(StatusNotifierHost::missing);
  clock.advance(DesktopStatusItem::panelTimeout);
  EXPECT_EQ(embedded(), nullptr);
}

TEST_F(DesktopStatusItemTest, AnIconThatCannotBeShownIsTriedAgainWithTheNextTray) {
  windows.failure = Error{"No windows."};
  trays.setHasTray(true);
  clock.advance(DesktopStatusItem::panelTimeout);
  EXPECT_FALSE(item.isShown());
  windows.failure.reset();
  trays.setHasTray(false);
  trays.setHasTray(true);
  EXPECT_TRUE(item.isShown());
}

TEST_F(DesktopStatusItemTest, EntriesDoTheSameWhereverTheyAreChosen) {
  ASSERT_TRUE(notifier.click(notifier.open(), {"First"}, {0, "panel"}));
  trays.setHasTray(true);
  clock.advance(DesktopStatusItem::panelTimeout);
  ASSERT_TRUE(embedded()->click(embedded()->open(), {"First"}, {0, "tray"}));
  ASSERT_TRUE(item.popUp({}));
  ASSERT_TRUE(windows.chooseFromPopUp({"First"}));
  queue.run();
  EXPECT_THAT(chosen, ElementsAre("First panel", "First tray", "First "));
}

TEST_F(DesktopStatusItemTest, TheMenuPopsUpAsItIsNow) {
  item.setMenu(menuWith({itemEntry("Second", "2")}));
  ASSERT_TRUE(item.popUp({3, "token"}, ScreenPoint{5, 6}));
  EXPECT_EQ(windows.popUp()->position, (ScreenPoint{5, 6}));
  EXPECT_EQ(windows.popUp()->menu, menuWith({itemEntry("Second", "2")}));
  EXPECT_EQ(windows.popUp()->activation, (Activation{3, "token"}));
}

TEST_F(DesktopStatusItemTest, AMenuThatCannotPopUpGivesTheReason) {
  windows.failure = Error{"No windows."};
  EXPECT_EQ(item.popUp({}).error().description, "No windows.");
}

TEST(DesktopStatusItem, NothingIsLookedForBeforeItIsKnownWhetherThereIsAPanel) {
  Desktop desktop;
  const DesktopStatusItem item(
      {desktop.notifier, desktop.windows, desktop.trays, desktop.clock.runLater()});
  EXPECT_FALSE(desktop.clock.hasTasks());
}

TEST(DesktopStatusItem, WhatWaitsWhenItGoesAwayIsDropped) {
  Desktop desktop;
  int runs = 0;
  {
    DesktopStatusItem item(
        {desktop.notifier, desktop.windows, desktop.trays, desktop.clock.runLater()});
    item.setActionHandler([&](const ActionEntry&, const Activation&) { ++runs; });
    item.setMenu(menuWith({itemEntry("First", "1")}));
    item.setHost(StatusNotifierHost::missing);
    ASSERT_TRUE(desktop.notifier.click({"First"}));
    ASSERT_TRUE(item.popUp({}));
    ASSERT_TRUE(desktop.windows.chooseFromPopUp({"First"}));
  }
  desktop.queue.run();
  desktop.clock.advance(DesktopStatusItem::panelTimeout);
  EXPECT_EQ(runs, 0);
  EXPECT_FALSE(desktop.trays.isWatched());
}

/// An item whose user looks at the XEmbed tray.
class EmbeddedHarness : private Desktop {
 public:
  struct Opened {
    MemoryStatusItem::OpenMenu handle;
    Menu menu;
  };

  EmbeddedHarness() {
    item_.setHost(StatusNotifierHost::missing);
    trays.setHasTray(true);
    clock.advance(DesktopStatusItem::panelTimeout);
  }

  StatusItem& item() { return item_; }
  Opened open() { return {embedded().open(), embedded().menu()}; }
  std::vector<ShownEntry> shown(const Opened& opened) const { return shownEntries(opened.menu); }
  std::optional<Activation> click(const Opened& opened, const std::vector<std::string>& path,
                                  const Activation& activation = {}) {
    if (!embedded().click(opened.handle, path, activation)) return std::nullopt;
    return activation;
  }
  void runTasks() { queue.run(); }
  std::string icon() { return embedded().image() ? embedded().image()->name : ""; }

 private:
  MemoryStatusItem& embedded() { return *windows.embeddedStatusItems().front(); }

  DesktopStatusItem item_{{notifier, windows, trays, clock.runLater()}};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Embedded, StatusItemConformance, EmbeddedHarness);

}  // namespace
}  // namespace quillmar
