#include "platform/linux/pasteboard/desktop_pasteboard.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/linux/child_programs.h"
#include "tests/linux/main_loop.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DesktopPasteboardTest : public testing::Test {
 protected:
  void copyIn(const Environment& environment) {
    pasteboard_.emplace(environment, [this](std::string_view line) { log_.emplace_back(line); });
    pasteboard_->setString("text");
    pasteboard_->saveForQuit(std::chrono::hours(1));
  }

  CommandOutput pasteFromX() {
    return runCommand({"xclip", "-selection", "clipboard", "-out"},
                      {"DISPLAY=" + server_.display()});
  }

  XServer server_;
  std::optional<DesktopPasteboard> pasteboard_;
  std::vector<std::string> log_;
};

TEST_F(DesktopPasteboardTest, WithoutADisplayALineSaysSo) {
  copyIn({});
  EXPECT_THAT(log_, ElementsAre("The text was not copied to the clipboard: there is no display "
                                "(neither WAYLAND_DISPLAY nor DISPLAY is set)."));
}

TEST_F(DesktopPasteboardTest, AnXDisplayGetsTheText) {
  copyIn({{{"DISPLAY", server_.display()}, {"WAYLAND_DISPLAY", ""}}});
  EXPECT_EQ(pasteFromX(), "text");
  EXPECT_THAT(log_, IsEmpty());
}

TEST_F(DesktopPasteboardTest, AWaylandDisplayGoesBeforeAnXDisplay) {
  copyIn({{{"DISPLAY", server_.display()}, {"WAYLAND_DISPLAY", "nonexistent"}}});
  EXPECT_EQ(pasteFromX(), std::nullopt);
  runMainLoopUntil([this] { return !log_.empty(); });
  EXPECT_THAT(log_, ElementsAre("The text was not copied to the clipboard: “wl-copy” failed."));
}

}  // namespace
}  // namespace quillmar
