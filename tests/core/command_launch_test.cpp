#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/core/command_runner_fixture.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class CommandLaunchTest : public CommandRunnerTest {};

// Shell commands.

TEST_F(CommandLaunchTest, ALoginShellGetsTheCommandAsOneArgumentInTheHomeDirectory) {
  runToTheEnd(item("echo 'a  b' \"$HOME\""));
  const Process process = onlyProcess();
  EXPECT_EQ(process.executable, "/bin/shell");
  EXPECT_THAT(process.arguments, ElementsAre("-l", "-c", "echo 'a  b' \"$HOME\""));
  EXPECT_EQ(process.workingDirectory, "/home/ada");
  EXPECT_EQ(process.environment.at("PATH"), "/usr/bin:/bin");
}

TEST_F(CommandLaunchTest, WithoutLoginShellThereIsNoLoginArgument) {
  settings().config.preferences.useLoginShell = false;
  runToTheEnd(item("true"));
  EXPECT_THAT(onlyProcess().arguments, ElementsAre("-c", "true"));
}

TEST_F(CommandLaunchTest, AShellThatIsMissingOrNotExecutableGivesWayToZsh) {
  memory.userDatabase.shell = std::nullopt;
  runToTheEnd(item("one"));
  memory.userDatabase.shell = "/no/such/shell";
  runToTheEnd(item("two"));
  memory.files.addFile("/etc/noshell", "", 0644);
  memory.userDatabase.shell = "/etc/noshell";
  runToTheEnd(item("three"));
  for (const Process& process : memory.processes.launched()) {
    EXPECT_EQ(process.executable, "/bin/zsh");
  }
  EXPECT_THAT(memory.processes.launched(), SizeIs(3));
}

// Script files.

TEST_F(CommandLaunchTest, APythonScriptUnderTheHomeDirectoryRunsInItsOwnDirectory) {
  memory.files.addFile("/home/ada/x/run.PY", "");
  runToTheEnd(item("~/x/run.PY", CommandType::scriptFile));
  const Process process = onlyProcess();
  EXPECT_EQ(process.executable, "/usr/bin/env");
  EXPECT_THAT(process.arguments, ElementsAre("python3", "/home/ada/x/run.PY"));
  EXPECT_EQ(process.workingDirectory, "/home/ada/x");
}

TEST_F(CommandLaunchTest, AMissingScriptIsNamedAsTheUserWroteIt) {
  runToTheEnd(item("~/gone.sh", CommandType::scriptFile));
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
  EXPECT_THAT(notified(), ElementsAre(Note("Title failed", "Script file not found: ~/gone.sh")));
}

TEST_F(CommandLaunchTest, AScriptThatCannotExistIsNotFound) {
  memory.files.addFile("/home/ada/file", "");
  memory.files.addSymbolicLink("/home/ada/loop", "/home/ada/loop");
  for (const std::string& path :
       {std::string("~/file/run.sh"), std::string("~/loop"), "~/" + std::string(256, 'n')}) {
    EXPECT_EQ(runner().runScriptFile(path).output, "Script file not found: " + path);
  }
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
}

TEST_F(CommandLaunchTest, AScriptWithoutAKnownExtensionIsExecutedDirectly) {
  memory.files.addFile("/opt/tool.command", "", 0644);
  launchesFail("The program “/opt/tool.command” could not be launched: Permission denied.");
  runToTheEnd(item("/opt/tool.command", CommandType::scriptFile));
  EXPECT_EQ(onlyProcess().executable, "/opt/tool.command");
  EXPECT_THAT(onlyProcess().arguments, IsEmpty());
  EXPECT_THAT(notified(), ElementsAre(Note("Title failed",
                                           "The program “/opt/tool.command” could not be launched: "
                                           "Permission denied.")));
}

TEST(ScriptLaunchTest, TheExtensionChoosesTheInterpreter) {
  EXPECT_EQ(scriptLaunch("/a.py"), (ScriptLaunch{"/usr/bin/env", {"python3", "/a.py"}}));
  EXPECT_EQ(scriptLaunch("/a.sh"), (ScriptLaunch{"/bin/bash", {"/a.sh"}}));
  EXPECT_EQ(scriptLaunch("/a.BASH"), (ScriptLaunch{"/bin/bash", {"/a.BASH"}}));
  EXPECT_EQ(scriptLaunch("/a.zsh"), (ScriptLaunch{"/bin/zsh", {"/a.zsh"}}));
  EXPECT_EQ(scriptLaunch("/a.rb"), (ScriptLaunch{"/usr/bin/env", {"ruby", "/a.rb"}}));
  EXPECT_EQ(scriptLaunch("/a.js"), (ScriptLaunch{"/usr/bin/env", {"node", "/a.js"}}));
  EXPECT_EQ(scriptLaunch("/a.scpt"), (ScriptLaunch{"/usr/bin/osascript", {"/a.scpt"}}));
  EXPECT_EQ(scriptLaunch("/a.AppleScript"),
            (ScriptLaunch{"/usr/bin/osascript", {"/a.AppleScript"}}));
}

TEST(ScriptLaunchTest, WithoutAKnownExtensionTheScriptIsTheProgram) {
  EXPECT_EQ(scriptLaunch("/a"), (ScriptLaunch{"/a", {}}));
  EXPECT_EQ(scriptLaunch("/a.command"), (ScriptLaunch{"/a.command", {}}));
  EXPECT_EQ(scriptLaunch("/dir.py/a"), (ScriptLaunch{"/dir.py/a", {}}));
  EXPECT_EQ(scriptLaunch("/home/.sh"), (ScriptLaunch{"/home/.sh", {}}));
}

// AppleScript.

TEST_F(CommandLaunchTest, APlainCommandIsWrappedIntoDoShellScript) {
  runToTheEnd(item("say hello", CommandType::appleScript));
  runToTheEnd(item("Tell application \"Finder\" to activate", CommandType::appleScript));
  runToTheEnd(item("  echo \"a\\b\"  ", CommandType::appleScript));
  EXPECT_THAT(memory.appleScript.executed,
              ElementsAre("do shell script \"say hello\"",
                          "do shell script \"Tell application \"Finder\" to activate\"",
                          "do shell script \"echo \"a\\b\"\""));
}

TEST_F(CommandLaunchTest, ACommandThatOnlyBeginsLikeAWordOfAppleScriptIsWrapped) {
  for (const std::string command :
       {"tellme", "setxkbmap us", "displayed", "getent hosts", "iftop", "openssl version"}) {
    memory.appleScript.executed.clear();
    runToTheEnd(item(command, CommandType::appleScript));
    EXPECT_THAT(memory.appleScript.executed, ElementsAre("do shell script \"" + command + "\""));
  }
}

TEST_F(CommandLaunchTest, AScriptByItsBeginningOrBySeveralLinesIsLeftAsItIs) {
  const std::vector<std::string> scripts = {"do shell script \"ls\"",
                                            "tell me",
                                            "set x to 1",
                                            "display dialog",
                                            "activate",
                                            "activates",
                                            "get 1",
                                            "if true",
                                            "open it",
                                            "beep 2",
                                            "say one\nsay two"};
  for (const std::string& script : scripts) {
    runToTheEnd(item("\n" + script + " \n", CommandType::appleScript));
  }
  EXPECT_EQ(memory.appleScript.executed, scripts);
}

TEST_F(CommandLaunchTest, AScriptThatCannotBeMadeFails) {
  memory.appleScript.outcome.reset();
  runToTheEnd(item("beep", CommandType::appleScript));
  EXPECT_THAT(notified(), ElementsAre(Note("Title failed", "Failed to create AppleScript")));
}

TEST_F(CommandLaunchTest, AScriptErrorIsToldByItsMessageElseByItsDescription) {
  using Outcome = MemoryAppleScriptEngine::Outcome;
  memory.appleScript.outcome = Outcome(AppleScriptError{"The message.", "The description."});
  runToTheEnd(item("beep", CommandType::appleScript));
  memory.appleScript.outcome = Outcome(AppleScriptError{std::nullopt, "The description."});
  runToTheEnd(item("beep", CommandType::appleScript));
  EXPECT_THAT(notified(), ElementsAre(Note("Title failed", "The message."),
                                      Note("Title failed", "The description.")));
}

TEST_F(CommandLaunchTest, AScriptWithoutAResultSucceedsWithoutOutput) {
  memory.appleScript.outcome = MemoryAppleScriptEngine::Outcome(std::optional<std::string>());
  MenuItem script = item("beep", CommandType::appleScript);
  script.command.showNotification = true;
  script.command.copyToClipboard = true;
  runToTheEnd(script);
  EXPECT_EQ(memory.pasteboard.string(), std::nullopt);
  EXPECT_THAT(notified(), ElementsAre(Note("Title", "Command completed successfully")));
}

}  // namespace
}  // namespace quillmar
