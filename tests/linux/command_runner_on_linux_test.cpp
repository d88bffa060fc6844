// Commands and scripts through the runner, with the system's processes, files and user database.

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/command_runner.h"
#include "config/settings_manager.h"
#include "platform/linux/files/password_database.h"
#include "platform/linux/files/posix_file_system.h"
#include "platform/linux/processes/posix_processes.h"
#include "platform/memory/memory_platform.h"
#include "tests/collaborators.h"
#include "tests/linux/temporary_folder.h"

namespace quillmar {
namespace {

using std::string_literals::operator""s;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Pair;

using RunResult = CommandRunner::RunResult;

class CommandRunnerOnLinuxTest : public testing::Test {
 protected:
  CommandRunnerOnLinuxTest() {
    memory.userDirectories.home = home();
    memory.environment.variables = {{"HOME", home()}, {"PATH", "/usr/bin:/bin"}};
  }

  /// The home directory, as a program that looks where it is finds it.
  std::string home() const { return std::filesystem::canonical(folder.path()).string(); }

  /// A file under the home directory; its path.
  std::string makeFile(const std::string& name, const std::string& content, int permissions) {
    const std::filesystem::path path = std::filesystem::path(home()) / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << content;
    std::filesystem::permissions(path, std::filesystem::perms(permissions));
    return path.string();
  }

  /// Chooses an item with the command and lets it come to its end.
  void runItem(CommandType type, const std::string& value) {
    MenuItem item;
    item.title = "Title";
    item.command.type = type;
    item.command.value = value;
    runner.run(item);
    memory.queues.runAll();
  }

  /// Title and body of every notification shown.
  std::vector<std::pair<std::string, std::string>> notified() const {
    std::vector<std::pair<std::string, std::string>> result;
    for (const auto& shown : memory.notifications.shown()) {
      result.emplace_back(shown.notification.title, shown.notification.body);
    }
    return result;
  }

  TemporaryFolder folder;
  MemoryPlatform memory;
  PasswordDatabase userDatabase;
  PosixFileSystem files;
  PosixProcesses processes{PosixProcesses::Terminal::detach};
  Platform platform{
      .application = memory.application,
      .queues = memory.queues,
      .environment = memory.environment,
      .userDatabase = userDatabase,
      .userDirectories = memory.userDirectories,
      .files = files,
      .bundle = memory.bundle,
      .images = memory.images,
      .processes = processes,
      .appleScript = memory.appleScript,
      .workspace = memory.workspace,
      .windows = memory.windows,
      .pasteboard = memory.pasteboard,
      .notifications = memory.notifications,
      .statusItem = memory.statusItem,
      .hotKeys = memory.hotKeys,
      .updaters = memory.updaters,
      .loginItem = memory.loginItem,
      .downloader = memory.downloader,
  };
  NotificationCenter center;
  SettingsManager settings{
      {memory.environment, memory.userDirectories, memory.files, center, [](std::string_view) {}}};
  PanelPrompts prompts{promptCollaborators(platform)};
  CommandRunner runner{runnerCollaborators(platform, settings, prompts, [](std::string_view) {})};
};

// Shell commands.

TEST_F(CommandRunnerOnLinuxTest, AShellCommandRunsInTheHomeDirectory) {
  EXPECT_EQ(runner.runShell("pwd -P", false), (RunResult{home(), true}));
}

TEST_F(CommandRunnerOnLinuxTest, BothStreamsOfAShellCommandAreItsOutput) {
  EXPECT_EQ(runner.runShell("echo one; echo two >&2; echo three", false),
            (RunResult{"one\ntwo\nthree", true}));
}

TEST_F(CommandRunnerOnLinuxTest, AShellCommandFindsWhatTheUserHasInstalledForHimself) {
  makeFile("bin/greet", "#!/bin/sh\necho found\n", 0755);
  EXPECT_EQ(runner.runShell("greet", false), (RunResult{"found", true}));
  const RunResult path = runner.runShell("printenv PATH", false);
  EXPECT_THAT(path.output, testing::Optional(HasSubstr(home() + "/bin:")));
  EXPECT_THAT(path.output, testing::Optional(EndsWith(":/usr/bin:/bin")));
}

TEST_F(CommandRunnerOnLinuxTest, OnlyALoginShellReadsTheUsersProfile) {
  for (const char* name : {".profile", ".bash_profile", ".zprofile"}) {
    makeFile(name, "export FROM_PROFILE=profile\n", 0644);
  }
  const std::string command = "echo \"[$FROM_PROFILE]\"";
  EXPECT_EQ(runner.runShell(command, true), (RunResult{"[profile]", true}));
  EXPECT_EQ(runner.runShell(command, false), (RunResult{"[]", true}));
}

TEST_F(CommandRunnerOnLinuxTest, AShellCommandThatASignalEndsHasFailed) {
  runItem(CommandType::shellCommand, "echo before; kill -TERM $$; echo after");
  EXPECT_THAT(notified(), ElementsAre(Pair("Title failed", "before")));
}

TEST_F(CommandRunnerOnLinuxTest, AnEndlessOutputIsReportedAsAFailure) {
  runItem(CommandType::shellCommand, "yes");
  EXPECT_THAT(notified(),
              ElementsAre(Pair("Title failed", "The command printed more than 256 MB.")));
}

TEST_F(CommandRunnerOnLinuxTest, ANullCharacterInAShellCommandIsALaunchError) {
  runItem(CommandType::shellCommand, "echo a\0b"s);
  EXPECT_THAT(notified(),
              ElementsAre(Pair("Title failed",
                               "The program “" + userDatabase.loginShell().value_or("/bin/zsh") +
                                   "” could not be launched: an argument contains a U+0000 "
                                   "character.")));
}

// Script files.

TEST_F(CommandRunnerOnLinuxTest, AScriptRunsInItsOwnFolderWithTheSamePath) {
  makeFile("bin/greet", "#!/bin/sh\necho found\n", 0755);
  makeFile("scripts/plain", "#!/bin/sh\npwd -P\ngreet\n", 0755);
  makeFile("scripts/known.SH", "pwd -P\ngreet\n", 0644);
  const RunResult expected{home() + "/scripts\nfound", true};
  EXPECT_EQ(runner.runScriptFile("~/scripts/plain"), expected);
  EXPECT_EQ(runner.runScriptFile("~/scripts/known.SH"), expected);
}

TEST_F(CommandRunnerOnLinuxTest, AScriptThatRunsByItselfMustBeExecutable) {
  for (const std::string name : {"plain", "double-click.command"}) {
    const std::string path = makeFile(name, "#!/bin/sh\necho ran\n", 0644);
    EXPECT_EQ(runner.runScriptFile(path),
              (RunResult{"The program “" + path + "” could not be launched: it is not executable.",
                         false, true}));
    makeFile(name, "#!/bin/sh\necho ran\n", 0755);
    EXPECT_EQ(runner.runScriptFile(path), (RunResult{"ran", true}));
  }
}

TEST_F(CommandRunnerOnLinuxTest, TheUserLearnsThatAScriptIsNotExecutable) {
  const std::string path = makeFile("plain", "#!/bin/sh\necho ran\n", 0644);
  runItem(CommandType::scriptFile, "~/plain");
  EXPECT_THAT(notified(), ElementsAre(Pair("Title failed",
                                           "The program “" + path +
                                               "” could not be launched: it is not executable.")));
}

TEST_F(CommandRunnerOnLinuxTest, APathWithANullCharacterIsAMissingScript) {
  const std::string path = makeFile("plain", "#!/bin/sh\necho ran\n", 0755);
  EXPECT_EQ(runner.runScriptFile(path + "\0.sh"s),
            (RunResult{"Script file not found: " + path + "\0.sh"s, false, true}));
}

}  // namespace
}  // namespace quillmar
