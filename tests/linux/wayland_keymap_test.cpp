#include "platform/linux/hot_keys/wayland_keymap.h"

#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/hot_keys/key_symbols.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/wayland_seat.h"
#include "tests/virtual_keys.h"

namespace quillmar {
namespace {

using testing::ElementsAre;

/// What the key Q of a US keyboard types in the keymaps that were reported; "none" for no keymap.
class WaylandKeymapTest : public testing::Test {
 protected:
  void watch(const Environment& environment) {
    keymap_.emplace(environment, [this](const std::optional<std::string>& keymap) {
      reported_.push_back(keymap ? keySymbolsOfKeymap(*keymap).at(keyQ).plain : "none");
    });
  }

  void waitForReports(std::size_t count) {
    runMainLoopUntil([&] { return reported_.size() >= count; });
  }

  std::optional<WaylandKeymap> keymap_;
  std::vector<std::string> reported_;
};

TEST_F(WaylandKeymapTest, ReportsTheLayoutAndItsChanges) {
  WaylandSeat seat("us");
  watch(seat.environment());
  EXPECT_THAT(reported_, ElementsAre());
  waitForReports(1);
  seat.setLayout("fr");
  waitForReports(2);
  EXPECT_THAT(reported_, ElementsAre("q", "a"));
}

TEST_F(WaylandKeymapTest, ReportsThatThereIsNoKeyboardUntilOneIsConnected) {
  WaylandSeat seat("");
  watch(seat.environment());
  waitForReports(1);
  seat.setLayout("fr");
  waitForReports(2);
  EXPECT_THAT(reported_, ElementsAre("none", "a"));
}

TEST_F(WaylandKeymapTest, ReportsThatThereIsNoCompositor) {
  for (const Environment& environment :
       {Environment{}, Environment{{{"WAYLAND_DISPLAY", "/nonexistent/wayland"}}}}) {
    reported_.clear();
    watch(environment);
    waitForReports(1);
    EXPECT_THAT(reported_, ElementsAre("none"));
  }
}

TEST_F(WaylandKeymapTest, SurvivesTheEndOfTheCompositor) {
  WaylandSeat seat("us");
  watch(seat.environment());
  waitForReports(1);
  seat.disconnectClients();
  runMainLoopWhileReady();
  EXPECT_THAT(reported_, ElementsAre("q"));
}

}  // namespace
}  // namespace quillmar
