#include "platform/memory/memory_status_item.h"

#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_images.h"
#include "tests/conformance/status_item_conformance.h"

namespace quillmar {
namespace {

class MemoryStatusItemHarness {
 public:
  struct Opened {
    MemoryStatusItem::OpenMenu handle;
    Menu menu;
  };

  StatusItem& item() { return item_; }
  Opened open() const { return {item_.open(), item_.menu()}; }

  std::vector<ShownEntry> shown(const Opened& opened) const { return shownEntries(opened.menu); }

  std::optional<Activation> click(const Opened& opened, const std::vector<std::string>& path,
                                  const Activation& activation = {}) {
    if (!item_.click(opened.handle, path, activation)) return std::nullopt;
    return activation;
  }
  void runTasks() { queue_.run(); }
  std::string icon() const { return item_.image() ? item_.image()->name : ""; }

 private:
  HeldTaskQueue queue_;
  MemoryStatusItem item_{queue_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, StatusItemConformance, MemoryStatusItemHarness);

TEST(MemoryStatusItem, CountsTheMenusThatItWasGiven) {
  HeldTaskQueue queue;
  MemoryStatusItem item(queue);
  EXPECT_EQ(item.menuCount(), 0u);
  item.setMenu({});
  item.setMenu({});
  EXPECT_EQ(item.menuCount(), 2u);
}

TEST(MemoryStatusItem, RefusesAClickOnAPathThatLeadsNowhere) {
  HeldTaskQueue queue;
  MemoryStatusItem item(queue);
  SubmenuEntry folder;
  folder.title = "Folder";
  folder.submenu = menuWith({itemEntry("Inner", "1")});
  item.setMenu(menuWith({folder, itemEntry("Outer", "2")}));

  EXPECT_FALSE(item.click({}));
  EXPECT_FALSE(item.click({"Folder"}));
  EXPECT_FALSE(item.click({"Inner"}));
  EXPECT_FALSE(item.click({"Outer", "Inner"}));
  EXPECT_TRUE(item.click({"Folder", "Inner"}));
}

TEST(MemoryStatusItem, AnActionThatWaitsWhenTheItemGoesAwayIsDropped) {
  HeldTaskQueue queue;
  int runs = 0;
  {
    MemoryStatusItem item(queue);
    item.setActionHandler([&](const ActionEntry&, const Activation&) { ++runs; });
    item.setMenu(menuWith({itemEntry("Title", "1")}));
    EXPECT_TRUE(item.click({"Title"}));
  }
  queue.run();
  EXPECT_EQ(runs, 0);
}

TEST(MemoryImages, HasTheImagesThatItWasToldOf) {
  MemoryImages images;
  images.symbols = {"bolt.fill"};
  ASSERT_TRUE(images.symbol("bolt.fill"));
  EXPECT_EQ(images.symbol("bolt.fill")->name, "bolt.fill");
  EXPECT_FALSE(images.symbol("statusIcon"));
  EXPECT_TRUE(images.named("statusIcon"));
}

}  // namespace
}  // namespace quillmar
