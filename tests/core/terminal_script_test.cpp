#include "commands/terminal_script.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/faulty_file_system.h"
#include "tests/core/command_runner_fixture.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

std::string lastLine(const std::string& text) {
  return text.substr(text.rfind('\n') + 1);
}

TEST(TerminalScriptNameTest, TheNameIsTheTitlesLettersAndDigitsWithHyphensBetweenThem) {
  EXPECT_EQ(terminalScriptName("Build"), "build.command");
  EXPECT_EQ(terminalScriptName("Build & Deploy!"), "build-deploy.command");
  EXPECT_EQ(terminalScriptName("  Hello, World  "), "hello-world.command");
  EXPECT_EQ(terminalScriptName("v2.0 - 3"), "v2-0-3.command");
  EXPECT_EQ(terminalScriptName("../../etc/passwd"), "etc-passwd.command");
}

TEST(TerminalScriptNameTest, LettersOutsideAToZAreNotKept) {
  EXPECT_EQ(terminalScriptName("Café Übersicht"), "caf-bersicht.command");
  EXPECT_EQ(terminalScriptName("Сборка 7"), "7.command");
}

TEST(TerminalScriptNameTest, ATitleWithoutSuchLettersIsNamedCommand) {
  EXPECT_EQ(terminalScriptName(""), "command.command");
  EXPECT_EQ(terminalScriptName("!?* --"), "command.command");
  EXPECT_EQ(terminalScriptName("構築"), "command.command");
}

class TerminalScriptTextTest : public testing::Test {
 protected:
  static std::string text(CommandType type, const std::string& value,
                          std::string_view title = "Build") {
    MenuCommand command;
    command.type = type;
    command.value = value;
    return terminalScriptText(
        {.command = command, .title = title, .shell = "/bin/zsh", .homeDirectory = "/home/ada"});
  }
};

TEST_F(TerminalScriptTextTest, TheFileHasFiveLinesAndNoLineFeedAtTheEnd) {
  EXPECT_EQ(text(CommandType::shellCommand, "make"),
            "#!/bin/zsh -l\n"
            "# Quillmar: Build\n"
            "export PATH=\"/opt/homebrew/bin:/opt/homebrew/sbin:/usr/local/bin:/usr/local/sbin:"
            "~/.local/bin:~/bin:$PATH\"\n"
            "cd ~\n"
            "make");
}

TEST_F(TerminalScriptTextTest, AShellCommandWithASingleQuoteIsWrittenUnchanged) {
  EXPECT_THAT(text(CommandType::shellCommand, "echo 'a'  \"$b\" && ls\nexit"),
              EndsWith("\ncd ~\necho 'a'  \"$b\" && ls\nexit"));
}

TEST_F(TerminalScriptTextTest, TheTitleIsWrittenAsGivenOnOneLine) {
  EXPECT_THAT(text(CommandType::shellCommand, "x", " Día's \"1\"! "),
              testing::HasSubstr("\n# Quillmar:  Día's \"1\"! \n"));
  EXPECT_THAT(text(CommandType::shellCommand, "x", "one\nrm -r two"),
              testing::HasSubstr("\n# Quillmar: one rm -r two\nexport"));
}

TEST_F(TerminalScriptTextTest, AScriptUnderTheHomeDirectoryIsExecutedWithItsInterpreter) {
  EXPECT_EQ(lastLine(text(CommandType::scriptFile, "~/s/a b.sh")),
            "exec '/bin/bash' '/home/ada/s/a b.sh'");
  EXPECT_EQ(lastLine(text(CommandType::scriptFile, "/opt/x.py")),
            "exec '/usr/bin/env' 'python3' '/opt/x.py'");
  EXPECT_EQ(lastLine(text(CommandType::scriptFile, "/opt/x")), "exec '/opt/x'");
}

TEST_F(TerminalScriptTextTest, ASingleQuoteInAScriptPathIsEscaped) {
  EXPECT_EQ(lastLine(text(CommandType::scriptFile, "/it's/''")), R"(exec '/it'\''s/'\'''\''')");
}

TEST_F(TerminalScriptTextTest, AnAppleScriptIsQuotedForItsInterpreter) {
  EXPECT_EQ(lastLine(text(CommandType::appleScript, "say \"it's\"")),
            R"(osascript -e 'say "it'\''s"')");
}

TEST(TemporaryDirectoryTest, TheFirstAbsolutePathCounts) {
  const auto directory = [](std::map<std::string, std::string> variables) {
    return temporaryDirectory({std::move(variables)});
  };
  EXPECT_EQ(directory({{"TMPDIR", "/t"}, {"XDG_RUNTIME_DIR", "/run/user/1"}}), "/t");
  EXPECT_EQ(directory({{"TMPDIR", ""}, {"XDG_RUNTIME_DIR", "/run/user/1"}}), "/run/user/1");
  EXPECT_EQ(directory({{"TMPDIR", "t"}, {"XDG_RUNTIME_DIR", "run"}}), "/tmp");
  EXPECT_EQ(directory({}), "/tmp");
  EXPECT_EQ(directory({{"TMPDIR", "/t//"}}), "/t");
}

class OpenInTerminalTest : public CommandRunnerTest {
 protected:
  OpenInTerminalTest() { memory.environment.variables["TMPDIR"] = "/t/user"; }

  static MenuItem inTerminal(const std::string& commandText,
                             CommandType type = CommandType::shellCommand) {
    MenuItem menuItem = item(commandText, type);
    menuItem.command.openInTerminal = true;
    return menuItem;
  }

  /// Runs the item, which fails; the text of its notification.
  std::string failure(const MenuItem& menuItem) {
    runToTheEnd(menuItem);
    EXPECT_THAT(memory.workspace.openedInTerminal, IsEmpty());
    EXPECT_THAT(memory.files.contents("/t/user/Quillmar/title.command"), std::nullopt);
    const std::vector<Note> notes = notified();
    EXPECT_THAT(notes, testing::SizeIs(1));
    if (notes.empty()) return {};
    EXPECT_EQ(notes.front().first, "Title failed");
    return notes.front().second;
  }
};

TEST_F(OpenInTerminalTest, TheFileIsExecutableInAPrivateFolderAndOpens) {
  runToTheEnd(inTerminal("make"));
  const std::string path = "/t/user/Quillmar/title.command";
  EXPECT_THAT(memory.workspace.openedInTerminal, ElementsAre(path));
  EXPECT_EQ(memory.files.permissions(path).value(), 0755u);
  EXPECT_EQ(memory.files.permissions("/t/user/Quillmar").value(), 0700u);
  EXPECT_EQ(lastLine(memory.files.contents(path).value_or("")), "make");
  EXPECT_THAT(notified(), IsEmpty());
}

TEST_F(OpenInTerminalTest, TheInputIsInsertedAsTypedAndSuccessPostsNothing) {
  MenuItem asking = inTerminal("top -n {{input}}");
  asking.command.showNotification = true;
  runner().run(asking);
  answerWith("1 'x");
  memory.queues.runAll();
  EXPECT_THAT(memory.files.contents("/t/user/Quillmar/title.command"),
              testing::Optional(EndsWith("\ntop -n 1 'x")));
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
  EXPECT_THAT(notified(), IsEmpty());
}

TEST_F(OpenInTerminalTest, RunningTheSameItemTwiceRewritesTheSameFile) {
  runToTheEnd(inTerminal("one"));
  runToTheEnd(inTerminal("two"));
  const std::string path = "/t/user/Quillmar/title.command";
  EXPECT_THAT(memory.workspace.openedInTerminal, ElementsAre(path, path));
  EXPECT_EQ(lastLine(memory.files.contents(path).value_or("")), "two");
}

TEST_F(OpenInTerminalTest, TheShellIsTheUsersLoginShellOrZsh) {
  runToTheEnd(inTerminal("one"));
  const std::string path = "/t/user/Quillmar/title.command";
  EXPECT_THAT(memory.files.contents(path),
              testing::Optional(testing::StartsWith("#!/bin/shell -l\n")));
  memory.userDatabase.shell = "/no/such/shell";
  runToTheEnd(inTerminal("two"));
  EXPECT_THAT(memory.files.contents(path),
              testing::Optional(testing::StartsWith("#!/bin/zsh -l\n")));
}

TEST_F(OpenInTerminalTest, AnAppleScriptRunsInProcess) {
  runToTheEnd(inTerminal("beep", CommandType::appleScript));
  EXPECT_THAT(memory.workspace.openedInTerminal, IsEmpty());
  EXPECT_THAT(memory.appleScript.executed, ElementsAre("beep"));
}

TEST_F(OpenInTerminalTest, AFolderThatOthersCanChangeFailsWithThatReason) {
  memory.files.addForeignFolder("/t/user/Quillmar");
  EXPECT_EQ(failure(inTerminal("make")),
            "The folder “/t/user/Quillmar” could not be used: It belongs to another user.");
}

TEST_F(OpenInTerminalTest, AFolderThatCannotBeCreatedFailsWithThatReason) {
  memory.files.addFolder("/t/user", 0500);
  EXPECT_EQ(failure(inTerminal("make")),
            "The folder “/t/user/Quillmar” could not be created: Permission denied.");
}

TEST_F(OpenInTerminalTest, AFileThatCannotBeWrittenFailsWithThatReason) {
  memory.files.addFolder("/t/user/Quillmar", 0700);
  memory.files.addFolder("/t/user/Quillmar/title.command");
  EXPECT_EQ(failure(inTerminal("make")),
            "The file “/t/user/Quillmar/title.command” could not be written: Is a directory.");
}

TEST_F(OpenInTerminalTest, ATerminalThatDoesNotStartIsReportedEvenWithoutFailureNotices) {
  memory.workspace.error = Error{"There is no terminal."};
  settings().config.preferences.notifyOnFailure = false;
  runToTheEnd(inTerminal("make"));
  EXPECT_THAT(notified(), ElementsAre(Note("Title failed", "There is no terminal.")));
}

}  // namespace
}  // namespace quillmar
