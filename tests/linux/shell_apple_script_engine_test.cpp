#include "platform/linux/processes/shell_apple_script_engine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/processes/posix_processes.h"
#include "platform/linux/processes/shell_script_statements.h"
#include "platform/memory/memory_processes.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::string> commandsOf(std::string_view source) {
  const auto parsed = parseShellScriptStatements(source);
  if (parsed) return parsed.value();
  ADD_FAILURE() << parsed.error().description;
  return {};
}

std::string errorOf(std::string_view source) {
  const auto parsed = parseShellScriptStatements(source);
  return parsed ? "" : parsed.error().description;
}

TEST(ShellScriptStatements, AStatementIsItsCommand) {
  EXPECT_THAT(commandsOf(R"(do shell script "echo hello")"), ElementsAre("echo hello"));
  EXPECT_THAT(commandsOf("\tDo  SHELL\tScript\"date\"  "), ElementsAre("date"));
}

TEST(ShellScriptStatements, EscapesStandForTheirCharacters) {
  EXPECT_THAT(commandsOf(R"(do shell script "a \"b\" \\ c\td\ne\rf")"),
              ElementsAre("a \"b\" \\ c\td\ne\rf"));
}

TEST(ShellScriptStatements, StatementsStandOnLinesOfTheirOwn) {
  EXPECT_THAT(commandsOf("\n-- first\ndo shell script \"a\" -- why\r\n\r\n  # second\r"
                         "do shell script \"b -- # c\"# why\n\n"),
              ElementsAre("a", "b -- # c"));
}

TEST(ShellScriptStatements, AStringMayRunOverLines) {
  EXPECT_THAT(commandsOf("do shell script \"a\nb\"\ndo shell script \"c\""),
              ElementsAre("a\nb", "c"));
}

TEST(ShellScriptStatements, CommentsOnlyGiveNoCommand) {
  EXPECT_THAT(commandsOf(""), IsEmpty());
  EXPECT_THAT(commandsOf(" \n-- nothing\n"), IsEmpty());
}

TEST(ShellScriptStatements, TheFirstUnknownWordIsNamed) {
  const std::string beginning =
      "Without an AppleScript interpreter only statements like “do shell script \"…\"” can be "
      "run: ";
  EXPECT_EQ(errorOf(R"(tell application "Finder" to activate)"),
            beginning + "line 1 has “tell” where “do” is expected.");
  EXPECT_EQ(errorOf("do shell script \"x\" with administrator privileges"),
            beginning + "line 1 has “with” where the end of the line is expected.");
  EXPECT_EQ(errorOf("-- a\r\ndo shell script \"x\"\r\nset y to 1"),
            beginning + "line 3 has “set” where “do” is expected.");
  EXPECT_EQ(errorOf("do shell\nscript \"x\""),
            beginning + "line 1 has the end of the line where “script” is expected.");
  EXPECT_EQ(errorOf("do shell script command"),
            beginning + "line 1 has “command” where a quoted string is expected.");
  EXPECT_EQ(errorOf(R"(do shell script "echo "hi"")"),
            beginning + "line 1 has “hi” where the end of the line is expected.");
  EXPECT_EQ(errorOf(R"("text")"), beginning + "line 1 has “\"” where “do” is expected.");
  EXPECT_EQ(errorOf("done"), beginning + "line 1 has “done” where “do” is expected.");
}

TEST(ShellScriptStatements, ABrokenStringIsAnErrorThatSaysSo) {
  EXPECT_EQ(errorOf("\ndo shell script \"echo\nhi"),
            "The string that begins in line 2 has no closing quote.");
  EXPECT_EQ(errorOf("do shell script \"echo\\"),
            "The string that begins in line 1 has no closing quote.");
  EXPECT_EQ(
      errorOf(R"(do shell script "echo \$HOME")"),
      R"(The string in line 1 contains “\$”, which is not one of the escapes \" \\ \n \r \t.)");
  EXPECT_THAT(errorOf(R"(do shell script "\é")"), HasSubstr("“\\é”"));
}

class ShellAppleScriptEngineTest : public testing::Test {
 protected:
  auto execute(const std::string& source) {
    ShellAppleScriptEngine engine(processes_, [] {
      return std::map<std::string, std::string>{{"PATH", "/bin"}};
    });
    return engine.makeScript(source)->execute();
  }

  MemoryProcesses processes_;
};

TEST_F(ShellAppleScriptEngineTest, EachCommandRunsInAShellWithTheGivenEnvironment) {
  const auto value = execute("do shell script \"echo 'a'\"\ndo shell script \"date\"");
  EXPECT_TRUE(value.ok());
  const std::map<std::string, std::string> environment = {{"PATH", "/bin"}};
  EXPECT_THAT(
      processes_.launched(),
      ElementsAre(Process{"/bin/sh", {"-c", "echo 'a'"}, environment, "/", StandardError::separate},
                  Process{"/bin/sh", {"-c", "date"}, environment, "/", StandardError::separate}));
  EXPECT_EQ(processes_.unreapedCount(), 0u);
}

TEST_F(ShellAppleScriptEngineTest, TheValueIsTheLastOutputWithoutOneLineFeed) {
  processes_.setHandler(
      [](const Process& process) -> ScriptedRun { return {process.arguments[1] + "\n\n"}; });
  EXPECT_EQ(execute("do shell script \"a\"\ndo shell script \"b\"").value(), "b\n");
}

TEST_F(ShellAppleScriptEngineTest, WarningsAreNotPartOfTheValue) {
  processes_.setHandler([](const Process&) -> ScriptedRun {
    return {.standardOutput = "value\n", .standardError = "careful\n"};
  });
  EXPECT_EQ(execute("do shell script \"a\"").value(), "value");
}

TEST_F(ShellAppleScriptEngineTest, OutputThatIsNotUtf8IsNoValue) {
  processes_.setHandler([](const Process&) -> ScriptedRun { return {"\xFF"}; });
  const auto value = execute("do shell script \"a\"");
  ASSERT_TRUE(value.ok());
  EXPECT_EQ(value.value(), std::nullopt);
}

TEST_F(ShellAppleScriptEngineTest, ASourceOfCommentsSucceedsWithoutAValue) {
  const auto value = execute("-- nothing");
  ASSERT_TRUE(value.ok());
  EXPECT_EQ(value.value(), std::nullopt);
}

TEST_F(ShellAppleScriptEngineTest, AFailingCommandEndsTheScriptWithItsStandardError) {
  processes_.setHandler([](const Process&) -> ScriptedRun {
    return {.standardOutput = "so far\n", .exitStatus = 3, .standardError = "no luck\n"};
  });
  const auto value = execute("do shell script \"a\"\ndo shell script \"b\"");
  ASSERT_FALSE(value.ok());
  EXPECT_EQ(value.error().message, "no luck");
  EXPECT_EQ(value.error().description, "no luck (error 3)");
  EXPECT_EQ(processes_.launched().size(), 1u);
}

TEST_F(ShellAppleScriptEngineTest, AFailureWithoutStandardErrorIsPutIntoWords) {
  processes_.setHandler([](const Process&) -> ScriptedRun { return {"so far\n", 1}; });
  const auto value = execute("do shell script \"a\"");
  ASSERT_FALSE(value.ok());
  EXPECT_EQ(value.error().message, "The command exited with a non-zero status.");
  EXPECT_EQ(value.error().description, "The command exited with a non-zero status. (error 1)");
}

TEST_F(ShellAppleScriptEngineTest, ALaunchErrorIsTheMessage) {
  processes_.setHandler([](const Process&) -> ScriptedRun {
    return {"", 0, Error{"Too many commands are running."}};
  });
  EXPECT_EQ(execute("do shell script \"a\"").error().message, "Too many commands are running.");
}

TEST_F(ShellAppleScriptEngineTest, NothingRunsWhenALaterStatementIsNotUnderstood) {
  const auto value = execute("do shell script \"a\"\ntell application \"Finder\" to activate");
  ASSERT_FALSE(value.ok());
  EXPECT_THAT(value.error().message.value_or(""), HasSubstr("line 2 has “tell”"));
  EXPECT_THAT(processes_.launched(), IsEmpty());
}

TEST(ShellAppleScriptEngine, RunsRealCommands) {
  PosixProcesses processes(PosixProcesses::Terminal::detach);
  ShellAppleScriptEngine engine(processes, [] {
    return std::map<std::string, std::string>{{"NAME", "world"}};
  });
  EXPECT_EQ(engine.makeScript("do shell script \"echo hello $NAME; pwd\"")->execute().value(),
            "hello world\n/");
}

TEST(ShellAppleScriptEngine, TellsRealWarningsFromTheValue) {
  PosixProcesses processes(PosixProcesses::Terminal::detach);
  ShellAppleScriptEngine engine(processes, [] { return std::map<std::string, std::string>{}; });
  EXPECT_EQ(
      engine.makeScript("do shell script \"echo careful >&2; echo value\"")->execute().value(),
      "value");
  const auto failed =
      engine.makeScript("do shell script \"echo value; echo no luck >&2; exit 4\"")->execute();
  ASSERT_FALSE(failed.ok());
  EXPECT_EQ(failed.error().description, "no luck (error 4)");
}

}  // namespace
}  // namespace quillmar
