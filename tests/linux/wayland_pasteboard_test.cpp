#include "platform/linux/pasteboard/wayland_pasteboard.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
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
    runMainLoopUntil([&] { return !pasteboard.isBusy(); });
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
  EXPECT_THAT(log_, ElementsAre("The text was not copied to the clipboard: “false” failed."));
}

TEST_F(WaylandPasteboardTest, ALongTextIsStoredBeforeTheMainLoopStartsTheProgram) {
  WaylandPasteboard pasteboard(
      {}, [this](std::string_view line) { log_.emplace_back(line); }, "/nonexistent/wl-copy");
  pasteboard.setString(std::string(5'000'000, 'x'));
  pasteboard.setString("next");
  EXPECT_TRUE(pasteboard.isBusy());
  EXPECT_THAT(log_, IsEmpty());
  runMainLoopUntil([&] { return !pasteboard.isBusy(); });
  EXPECT_THAT(log_, testing::SizeIs(2));
}

TEST_F(WaylandPasteboardTest, APasteboardCanBeDestroyedWhileALongTextIsStored) {
  {
    WaylandPasteboard pasteboard(
        {}, [](std::string_view line) { ADD_FAILURE() << line; }, "/nonexistent/wl-copy");
    pasteboard.setString(std::string(5'000'000, 'x'));
  }
  runMainLoopWhileReady();
}

TEST_F(WaylandPasteboardTest, AProgramThatStopsReadingHarmsNobody) {
  copyWith("false", std::string(5'000'000, 'x'));
  EXPECT_THAT(log_, testing::SizeIs(1));
}

/// With a program that notes each text in a file, but hangs on the first one until it is told.
class SlowWaylandPasteboardTest : public testing::Test {
 protected:
  SlowWaylandPasteboardTest() {
    mkfifo(path("gate").c_str(), 0600);
    std::ofstream(path("program")) << "#!/bin/sh\ncd '" << folder_.get() << "' || exit\n"
                                   << "[ -e texts ] || { : > texts; read -r _ < gate; }\n"
                                   << "cat >> texts; echo >> texts\n";
    chmod(path("program").c_str(), 0700);
    gate_ = open(path("gate").c_str(), O_RDWR | O_CLOEXEC);
    pasteboard_.emplace(
        Environment{{{"PATH", std::getenv("PATH")}}},
        [this](std::string_view line) { log_.emplace_back(line); }, path("program"));
  }

  ~SlowWaylandPasteboardTest() override {
    close(gate_);
    std::filesystem::remove_all(folder_.get());
  }

  std::string path(const std::string& name) const { return folder_.get() + ("/" + name); }

  void letGo() { EXPECT_EQ(write(gate_, "\n", 1), 1); }

  std::string texts() const {
    std::ifstream in(path("texts"));
    return {std::istreambuf_iterator<char>(in), {}};
  }

  const GStringPtr folder_{g_dir_make_tmp("quillmar-wl-copy-XXXXXX", nullptr)};
  int gate_ = -1;
  std::optional<WaylandPasteboard> pasteboard_;
  std::vector<std::string> log_;
};

TEST_F(SlowWaylandPasteboardTest, AProgramThatHangsIsNotWaitedForLongerThanAllowed) {
  pasteboard_->setString("first");
  pasteboard_->setString("second");
  pasteboard_->saveForQuit(std::chrono::milliseconds(50));
  EXPECT_TRUE(pasteboard_->isBusy());
  EXPECT_EQ(texts(), "");
  letGo();
  runMainLoopUntil([&] { return !pasteboard_->isBusy(); });
  EXPECT_EQ(texts(), "first\nsecond\n");
  EXPECT_THAT(log_, IsEmpty());
}

TEST_F(SlowWaylandPasteboardTest, OfTheTextsThatWaitTheLastOneIsSavedAtTheEnd) {
  pasteboard_->setString("first");
  pasteboard_->setString("skipped");
  pasteboard_->setString("last");
  letGo();
  bool dispatched = false;
  const guint other = g_idle_add_full(
      G_PRIORITY_HIGH,
      [](gpointer flag) -> gboolean {
        *static_cast<bool*>(flag) = true;
        return G_SOURCE_CONTINUE;
      },
      &dispatched, nullptr);
  pasteboard_->saveForQuit(std::chrono::hours(1));
  EXPECT_FALSE(dispatched) << "Saving let something else happen.";
  g_source_remove(other);
  runMainLoopUntil([&] { return !pasteboard_->isBusy(); });
  EXPECT_EQ(texts(), "first\nlast\n");
  EXPECT_THAT(log_, IsEmpty());
}

TEST_F(SlowWaylandPasteboardTest, ATextOutlivesThePasteboard) {
  const std::string text(5'000'000, 'x');
  pasteboard_->setString(text);
  pasteboard_->saveForQuit(std::chrono::hours(1));
  pasteboard_.reset();
  letGo();
  const guint tick = g_timeout_add(
      10, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
  EXPECT_TRUE(runMainLoopUntil([&] { return texts().size() > text.size(); }));
  g_source_remove(tick);
}

}  // namespace
}  // namespace quillmar
