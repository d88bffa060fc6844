#include "platform/linux/status_item/x11_tray_watch.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/linux/child_programs.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/open_sockets.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A tray that takes no icons in. It lives as long as this object.
class FakeTray {
 public:
  explicit FakeTray(const std::string& display, const char* selection = "_NET_SYSTEM_TRAY_S0")
      : connection_(
            X11Connection::open(display, {[](const xcb_generic_event_t&) {}, nullptr}).value()) {
    const auto atoms = connection_->internAtoms({selection, "MANAGER"});
    const xcb_window_t window = connection_->createHiddenWindow();
    xcb_set_selection_owner(connection_->xcb(), window, atoms[0], XCB_CURRENT_TIME);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = connection_->root();
    message.type = atoms[1];
    message.data.data32[1] = atoms[0];
    message.data.data32[2] = window;
    xcb_send_event(connection_->xcb(), false, connection_->root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    // With the answer, the server has done all of it.
    EXPECT_EQ(connection_->selectionOwner(atoms[0]), window);
  }

 private:
  std::unique_ptr<X11Connection> connection_;
};

class X11TrayWatchTest : public testing::Test {
 protected:
  void start() {
    watch_.start([this](bool hasTray) { told_.push_back(hasTray); });
  }

  /// Waits until the watch has told this many things.
  void waitFor(std::size_t count) {
    runMainLoopUntil([&] { return told_.size() >= count; });
  }

  const std::string& display() const { return server_->display(); }

  std::optional<XServer> server_{std::in_place};
  std::vector<bool> told_;
  X11TrayWatch watch_{{{{"DISPLAY", server_->display()}, {"WAYLAND_DISPLAY", ""}}}};
};

TEST_F(X11TrayWatchTest, FindsATrayThatIsThere) {
  const FakeTray tray(display());
  start();
  EXPECT_THAT(told_, ElementsAre(true));
}

TEST_F(X11TrayWatchTest, NoticesATrayThatStartsAndThatEnds) {
  start();
  EXPECT_THAT(told_, IsEmpty());
  auto tray = std::make_unique<FakeTray>(display());
  waitFor(1);
  EXPECT_THAT(told_, ElementsAre(true));
  tray.reset();
  waitFor(2);
  EXPECT_THAT(told_, ElementsAre(true, false));
  tray = std::make_unique<FakeTray>(display());
  waitFor(3);
  EXPECT_THAT(told_, ElementsAre(true, false, true));
}

TEST_F(X11TrayWatchTest, ATrayThatTakesOverKeepsItATray) {
  auto first = std::make_unique<FakeTray>(display());
  start();
  auto second = std::make_unique<FakeTray>(display());
  first.reset();
  second.reset();
  waitFor(2);
  EXPECT_THAT(told_, ElementsAre(true, false));
}

TEST_F(X11TrayWatchTest, IgnoresTheManagersOfOtherSelections) {
  start();
  const FakeTray other(display(), "_NET_SYSTEM_TRAY_S1");
  const FakeTray tray(display());
  waitFor(1);
  EXPECT_THAT(told_, ElementsAre(true));
}

TEST_F(X11TrayWatchTest, IsConnectedOnlyWhileItWatches) {
  const std::size_t before = openSockets();
  start();
  EXPECT_EQ(openSockets(), before + 1);
  watch_.stop();
  EXPECT_EQ(openSockets(), before);
  const FakeTray tray(display());
  runMainLoopWhileReady();
  EXPECT_THAT(told_, IsEmpty());
  start();
  EXPECT_THAT(told_, ElementsAre(true));
}

TEST_F(X11TrayWatchTest, WhenTheDisplayIsGoneThereIsNoTray) {
  const FakeTray tray(display());
  start();
  server_->end();
  waitFor(2);
  EXPECT_THAT(told_, ElementsAre(true, false));
}

TEST_F(X11TrayWatchTest, WithoutADisplayThereIsNoTray) {
  const FakeTray tray(display());
  for (const Environment& environment :
       {Environment{}, Environment{{{"DISPLAY", ":4711"}}},
        Environment{{{"DISPLAY", display()}, {"WAYLAND_DISPLAY", "wayland-0"}}}}) {
    X11TrayWatch watch(environment);
    watch.start([this](bool hasTray) { told_.push_back(hasTray); });
    watch.stop();
  }
  EXPECT_THAT(told_, IsEmpty());
}

}  // namespace
}  // namespace quillmar
