#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/core/command_runner_fixture.h"

namespace quillmar {
namespace {

using testing::ElementsAre;

class CommandEnvironmentTest : public CommandRunnerTest {};

TEST_F(CommandEnvironmentTest, ExistingExtraDirectoriesGoInFrontOfThePathInTableOrder) {
  memory.environment.variables["PATH"] = "/usr/local/bin:/usr/bin";
  memory.files.addFolder("/opt/homebrew/bin");
  EXPECT_EQ(runner().augmentedEnvironment().at("PATH"),
            "/opt/homebrew/bin:/usr/local/bin:/usr/bin");

  memory.files.addFolder("/home/ada/bin");
  memory.files.addFile("/usr/local/sbin", "a file counts as well");
  memory.files.addFolder("/usr/local/bin");
  EXPECT_EQ(runner().augmentedEnvironment().at("PATH"),
            "/opt/homebrew/bin:/usr/local/sbin:/home/ada/bin:/usr/local/bin:/usr/bin");
}

TEST_F(CommandEnvironmentTest, TheSixExtraDirectoriesAreTheseInThisOrder) {
  for (const char* directory : {"/home/ada/bin", "/home/ada/.local/bin", "/usr/local/sbin",
                                "/usr/local/bin", "/opt/homebrew/sbin", "/opt/homebrew/bin"}) {
    memory.files.addFolder(directory);
  }
  memory.environment.variables["PATH"] = "/bin";
  EXPECT_EQ(runner().augmentedEnvironment().at("PATH"),
            "/opt/homebrew/bin:/opt/homebrew/sbin:/usr/local/bin:/usr/local/sbin:"
            "/home/ada/.local/bin:/home/ada/bin:/bin");
}

TEST_F(CommandEnvironmentTest, AHomeDirectoryThatEndsInASlashGivesNoDirectoryTwice) {
  memory.files.addFolder("/bin");
  memory.files.addFolder("/home/ada/bin");
  memory.userDirectories.home = "/";
  memory.environment.variables["PATH"] = "/usr/bin:/bin";
  EXPECT_EQ(runner().augmentedEnvironment().at("PATH"), "/usr/bin:/bin");
  memory.environment.variables["PATH"] = "/usr/bin";
  EXPECT_EQ(runner().augmentedEnvironment().at("PATH"), "/bin:/usr/bin");

  memory.userDirectories.home = "/home/ada/";
  memory.environment.variables["PATH"] = "/home/ada/bin:/usr/bin";
  EXPECT_EQ(runner().augmentedEnvironment().at("PATH"), "/home/ada/bin:/usr/bin");
}

TEST_F(CommandEnvironmentTest, AnExtraDirectoryThatCannotExistIsLeftOut) {
  memory.environment.variables["PATH"] = "/usr/bin";
  memory.files.addFile("/opt/homebrew", "a file");
  memory.files.addSymbolicLink("/home/ada/bin", "/home/ada/bin");
  EXPECT_EQ(runner().augmentedEnvironment().at("PATH"), "/usr/bin");
}

TEST_F(CommandEnvironmentTest, WithoutAPathTheFallbackIsWritten) {
  memory.environment.variables = {{"LANG", "C"}};
  EXPECT_THAT(runner().augmentedEnvironment(),
              ElementsAre(Note("LANG", "C"), Note("PATH", "/usr/bin:/bin:/usr/sbin:/sbin")));
}

TEST_F(CommandEnvironmentTest, ThePathItselfStaysAsItIs) {
  memory.environment.variables["PATH"] = ":/usr/bin::/bin:";
  EXPECT_EQ(runner().augmentedEnvironment().at("PATH"), ":/usr/bin::/bin:");
}

}  // namespace
}  // namespace quillmar
