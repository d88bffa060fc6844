#include "platform/linux/windows/loaded_window_system.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include "platform/linux/processes/main_loop_task_queue.h"
#include "platform/status_item.h"
#include "platform/widgets/window.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/temporary_folder.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Menu menu() {
  ActionEntry entry;
  entry.title = "Entry";
  Menu menu;
  menu.title = "Menu";
  menu.entries.emplace_back(entry);
  return menu;
}

class LoadedWindowSystemTest : public testing::Test {
 protected:
  // What is left to do in the main loop holds this test's log, which the next test would get.
  void TearDown() override { runMainLoopWhileReady(); }

  const std::string& modulePath() const { return modulePath_; }

  /// Puts the module in its place.
  void install() { std::filesystem::copy_file(FAKE_WINDOW_MODULE, modulePath_); }

  /// The error of a call; empty for none.
  std::string popUp() {
    const auto outcome =
        windows.popUpMenu(menu(), {}, {1, "token"}, [this](const ActionEntry& entry) {
          log.push_back("chosen " + entry.title);
          loop.quit();
        });
    return outcome ? "" : outcome.error().description;
  }

  std::string missing() const {
    return "Quillmar cannot show windows, because the file “" + modulePath_ +
           "” could not be loaded (cannot open shared object file: No such file or directory).";
  }

  std::vector<std::string> log;
  MainLoop loop;
  Environment environment;

 private:
  TemporaryFolder folder_;
  std::string modulePath_ = folder_.path() + "/module.so";
  MainLoopTaskQueue mainQueue_;

 protected:
  LoadedWindowSystem windows{modulePath_,
                             {.mainQueue = mainQueue_,
                              .environment = environment,
                              .applicationId = "com.tovenworks.quillmar",
                              .applicationName = "Quillmar",
                              .applicationVersion = "1.0",
                              .iconThemePath = "/icons",
                              .log = [this](std::string_view line) { log.emplace_back(line); }},
                             loop};
};

TEST_F(LoadedWindowSystemTest, LoadsNothingBeforeItIsNeeded) {
  install();
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(LoadedWindowSystemTest, AMenuIsShownByTheModuleWhoseLoopTakesOver) {
  install();
  EXPECT_EQ(popUp(), "");
  loop.run();
  EXPECT_THAT(log, ElementsAre("started for Quillmar", "menu Menu token", "loop", "chosen Entry",
                               "loop over"));
}

TEST_F(LoadedWindowSystemTest, WindowsAndStatusItemsAreTheModules) {
  install();
  Window window(windows);
  EXPECT_TRUE(window.show({}));
  EXPECT_TRUE(window.visible());
  const auto item = windows.makeEmbeddedStatusItem();
  ASSERT_TRUE(item);
  item.value()->setMenu(menu());
  // It has started once for both.
  EXPECT_THAT(log, ElementsAre("started for Quillmar"));
}

TEST_F(LoadedWindowSystemTest, AMissingModuleIsAnErrorOfEachCallAndToldOnce) {
  EXPECT_EQ(popUp(), missing());
  Window window(windows);
  EXPECT_EQ(window.show({}).error().description, missing());
  EXPECT_EQ(windows.makeEmbeddedStatusItem().error().description, missing());
  EXPECT_THAT(log, ElementsAre(missing()));
}

TEST_F(LoadedWindowSystemTest, AMissingModuleIsLookedForAgain) {
  EXPECT_EQ(popUp(), missing());
  install();
  EXPECT_EQ(popUp(), "");
}

TEST_F(LoadedWindowSystemTest, ABrokenModuleIsToldWithTheReason) {
  std::ofstream(modulePath()) << std::string(4096, 'x');
  EXPECT_EQ(popUp(), "Quillmar cannot show windows, because the file “" + modulePath() +
                         "” could not be loaded (invalid ELF header).");
}

TEST_F(LoadedWindowSystemTest, ALibraryThatIsNoModuleIsToldWithTheReason) {
  std::filesystem::copy_file(NO_WINDOW_MODULE, modulePath());
  EXPECT_EQ(popUp(), "Quillmar cannot show windows, because the file “" + modulePath() +
                         "” could not be loaded (undefined symbol: quillmar_start_window_module).");
}

TEST_F(LoadedWindowSystemTest, AModuleThatCannotStartIsAskedAgain) {
  install();
  environment.variables["FAKE_WINDOWS_ERROR"] = "There is no display.";
  EXPECT_EQ(popUp(), "There is no display.");
  EXPECT_EQ(popUp(), "There is no display.");
  EXPECT_THAT(log, ElementsAre("There is no display."));
  environment.variables.clear();
  EXPECT_EQ(popUp(), "");
}

TEST_F(LoadedWindowSystemTest, AnErrorOfTheModuleIsToldOnce) {
  install();
  for (int call = 0; call < 2; ++call) {
    EXPECT_EQ(windows.popUpMenu({}, {}, {}, nullptr).error().description,
              "There is nothing to show.");
  }
  EXPECT_THAT(log,
              ElementsAre("started for Quillmar", "menu  ", "There is nothing to show.", "menu  "));
}

TEST_F(LoadedWindowSystemTest, WithTooFewDescriptorsLeftNothingIsStarted) {
  install();
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
  rlimit tight = before;
  tight.rlim_cur = 16;
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &tight), 0);
  const std::string error = popUp();
  setrlimit(RLIMIT_NOFILE, &before);
  EXPECT_EQ(error, "Quillmar cannot show windows, because it has too many files open.");
  EXPECT_EQ(popUp(), "");
}

TEST(LoadedWindowSystem, TheModuleIsInTheLibraryFolderOfTheProgram) {
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe");
  const std::filesystem::path module = LoadedWindowSystem::moduleOfThisProgram();
  EXPECT_EQ(module.filename(), "quillmar_qt.so");
  EXPECT_EQ(module.parent_path().filename(), "quillmar");
  EXPECT_TRUE(module.string().starts_with(program.parent_path().parent_path().string() + "/lib"));
}

}  // namespace
}  // namespace quillmar
