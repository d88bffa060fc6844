#include "platform/linux/pasteboard/wayland_pasteboard.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/bus/glib_pointers.h"
#include "tests/conformance/pasteboard_conformance.h"
#include "tests/linux/child_programs.h"
#include "tests/linux/main_loop.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WaylandBackend {
 public:
  Pasteboard& pasteboard() { return pasteboard_; }

  std::optional<std::string> paste() {
    runMainLoopUntil([this] { return !pasteboard_.isBusy(); });
    return runCommand({"wl-paste", "--no-newline"}, {"XDG_RUNTIME_DIR=" + server_.runtimeFolder(),
                                                     "WAYLAND_DISPLAY=" + server_.display()});
  }

 private:
  WaylandServer server_;
  WaylandPasteboard pasteboard_{{{{"XDG_RUNTIME_DIR", server_.runtimeFolder()},
                                  {"WAYLAND_DISPLAY", server_.display()},
                                  {"PATH", std::getenv("PATH")}}},
                                [](std::string_view line) { ADD_FAILURE() << line; }};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Wayland, PasteboardConformance, WaylandBackend);

/// With other programs in wl-copy's place.
class WaylandPasteboardTest : public testing::Test {
 protected:
  void copyWith(const std::string& program, std::string text) {
    WaylandPasteboard pasteboard(
        {}, [this](std::string_view line) { log_.emplace_back(line); }, program);
    pasteboard.setString(std::move(text));
    pasteboard.saveForQuit(std::chrono::hours(1));
    EXPECT_FALSE(pasteboard.isBusy());
  }

  std::vector<std::string> log_;
};

TEST_F(WaylandPasteboardTest, AMissingProgramIsNamed) {
  copyWith("/nonexistent/wl-copy", "text");
  ASSERT_THAT(log_, testing::SizeIs(1));
  EXPECT_THAT(log_[0], testing::StartsWith("The text was not copied to the clipboard: "
                                           "“/nonexistent/wl-copy”, of the package wl-clipboard, "
                                           "could not be started ("));
}

TEST_F(WaylandPasteboardTest, AProgramThatFailsIsNamed) {
  copyWith("false", "text");
  EXPECT_THAT(log_,
              ElementsAre("The text was not copied to the clipboard: “false” did not take it."));
}

TEST_F(WaylandPasteboardTest, AProgramThatStopsReadingHarmsNobody) {
  copyWith("false", std::string(5'000'000, 'x'));
  EXPECT_THAT(log_, testing::SizeIs(1));
}

TEST_F(WaylandPasteboardTest, AProgramThatHangsIsNotWaitedForLongerThanAllowed) {
  const GStringPtr folder(g_dir_make_tmp("quillmar-wl-copy-XXXXXX", nullptr));
  const std::string pipe = std::string(folder.get()) + "/pipe";
  const std::string program = std::string(folder.get()) + "/program";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  // It waits for the end of the pipe, which comes with the end of this test.
  const int writer = open(pipe.c_str(), O_RDWR | O_CLOEXEC);
  std::ofstream(program) << "#!/bin/sh\nexec cat '" << pipe << "'\n";
  ASSERT_EQ(chmod(program.c_str(), 0700), 0);

  WaylandPasteboard pasteboard(
      {}, [this](std::string_view line) { log_.emplace_back(line); }, program);
  pasteboard.setString("text");
  pasteboard.saveForQuit(std::chrono::milliseconds(50));
  EXPECT_TRUE(pasteboard.isBusy());
  close(writer);
  runMainLoopUntil([&] { return !pasteboard.isBusy(); });
  EXPECT_THAT(log_, IsEmpty());
  std::filesystem::remove_all(folder.get());
}

}  // namespace
}  // namespace quillmar
