#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/run_command.h"
#include "cli/terminal_prompts.h"
#include "commands/command_runner.h"
#include "platform/memory/memory_platform.h"
#include "tests/collaborators.h"

namespace quillmar {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

// Arguments.

Invocation parsed(const std::vector<std::string>& words) {
  return parseArguments(words).value();
}

TEST(ArgumentsTest, NoArgumentsRunTheResidentProgram) {
  EXPECT_EQ(parsed({}), Invocation(ResidentInvocation{}));
}

TEST(ArgumentsTest, EverySubCommandIsUnderstood) {
  EXPECT_EQ(parsed({"--help"}), Invocation(HelpInvocation{}));
  EXPECT_EQ(parsed({"--version"}), Invocation(VersionInvocation{}));
  EXPECT_EQ(parsed({"settings-file"}), Invocation(SettingsFileInvocation{}));
  EXPECT_EQ(parsed({"menu"}), Invocation(MenuInvocation{}));
  EXPECT_EQ(parsed({"list"}), Invocation(ListInvocation{false}));
  EXPECT_EQ(parsed({"list", "--json"}), Invocation(ListInvocation{true}));
  EXPECT_EQ(parsed({"check", "a", "b"}), Invocation(CheckInvocation{{"a", "b"}}));
  EXPECT_EQ(parsed({"run", "Item"}), Invocation(RunInvocation{"Item", std::nullopt, false}));
  EXPECT_EQ(parsed({"run", "--yes", "Item", "--input", "--json"}),
            Invocation(RunInvocation{"Item", "--json", true}));
  EXPECT_EQ(parsed({"run", "--input=", "Item"}), Invocation(RunInvocation{"Item", "", false}));
}

TEST(ArgumentsTest, AfterADoubleHyphenAnItemMayStartWithAHyphen) {
  EXPECT_EQ(parsed({"run", "--yes", "--", "--yes"}),
            Invocation(RunInvocation{"--yes", std::nullopt, true}));
}

TEST(ArgumentsTest, HelpMayBeAskedForAnywhereAmongTheOptions) {
  EXPECT_EQ(parsed({"-h"}), Invocation(HelpInvocation{}));
  EXPECT_EQ(parsed({"run", "--help"}), Invocation(HelpInvocation{}));
  EXPECT_EQ(parsed({"run", "Item", "--input", "x", "-h"}), Invocation(HelpInvocation{}));
  EXPECT_EQ(parsed({"list", "all", "--help"}), Invocation(HelpInvocation{}));
}

TEST(ArgumentsTest, HelpAsAValueOrAnItemShowsNoHelp) {
  EXPECT_EQ(parsed({"run", "Item", "--input", "--help"}),
            Invocation(RunInvocation{"Item", "--help", false}));
  EXPECT_EQ(parsed({"run", "--", "-h"}), Invocation(RunInvocation{"-h", std::nullopt, false}));
}

TEST(ArgumentsTest, FilesAndLinksAreOpenedInOrder) {
  const auto opens = [](const std::vector<std::string>& words) {
    return std::get<ResidentInvocation>(parsed(words)).filesAndLinks;
  };
  const std::vector<std::string> words{
      "b.json", "a.QuillmarPack", "folder/pack",  "/c:d",
      "./list", "quillmar:",      "QUILLMAR://x", "file:///a.json"};
  EXPECT_EQ(opens(words), words);
  EXPECT_THAT(opens({"a.json", "--", "list", "--yes", "file:a"}),
              ElementsAre("a.json", "list", "--yes", "./file:a"));
}

TEST(ArgumentsTest, UrlsAreToldFromFileNames) {
  for (const char* link : {"quillmar:", "QuillMar://import?url=x", "file:///a", "FILE:a"}) {
    EXPECT_TRUE(isUrl(link)) << link;
  }
  for (const char* file : {"./quillmar:", "a.json", "xquillmar:", "quillmar", ":file:", ""}) {
    EXPECT_FALSE(isUrl(file)) << file;
  }
}

TEST(ArgumentsTest, AUrlThatIsNotSupportedDoesNotKeepTheOthersFromOpening) {
  EXPECT_EQ(parsed({"a.quillmarpack", "sftp://h/x.quillmarpack", "quillmar:", "ftp://h/y"}),
            Invocation(ResidentInvocation{
                .filesAndLinks = {"a.quillmarpack", "quillmar:"},
                .errors = {"Quillmar opens files and links that begin with “quillmar:” (got "
                           "“sftp://h/x.quillmarpack”).",
                           "Quillmar opens files and links that begin with “quillmar:” (got "
                           "“ftp://h/y”)."}}));
}

TEST(ArgumentsTest, WrongArgumentsAreNamed) {
  const auto error = [](const std::vector<std::string>& words) {
    return parseArguments(words).error().description;
  };
  const std::string unknown =
      "Unknown sub-command “start”. To open a file of this name, write “./start”.";
  EXPECT_EQ(error({"start"}), unknown);
  EXPECT_EQ(error({"a.json", "start"}), unknown);
  for (const char* address : {"https://example.org/a.json", "sftp://host/a.quillmarpack"}) {
    EXPECT_EQ(error({address}),
              "Quillmar opens files and links that begin with “quillmar:” (got “" +
                  std::string(address) + "”).");
  }
  EXPECT_EQ(error({"a.json", "--start"}), "Unknown option “--start”.");
  EXPECT_EQ(error({"--start"}), "Unknown option “--start”.");
  EXPECT_EQ(error({"list", "--yes"}), "Unknown option “--yes”.");
  EXPECT_EQ(error({"list", "all"}), "“list” takes no arguments (got “all”).");
  EXPECT_EQ(error({"check"}), "“check” requires a file name.");
  EXPECT_EQ(error({"run"}), "“run” requires the id or the title of an item.");
  EXPECT_EQ(error({"run", ""}), "“run” requires the id or the title of an item.");
  EXPECT_EQ(error({"run", "Item", "--input"}), "Option “--input” requires a value.");
  EXPECT_THAT(error({"run", "Copy", "date"}), HasSubstr("in quotes: “Copy date…”"));
}

// Sub-commands.

class MemoryConsole : public Console {
 public:
  void print(std::string_view text) override { out += text; }
  void printError(std::string_view text) override { err += text; }
  bool isInteractive() const override { return interactive; }
  std::optional<std::string> readLine() override {
    if (typed.empty()) return std::nullopt;
    std::string line = typed.front();
    typed.erase(typed.begin());
    return line;
  }

  Result<std::string> readToEnd() override { return std::exchange(input, {}); }

  std::string out;
  std::string err;
  std::string input;
  bool interactive = false;
  std::vector<std::string> typed;
};

class CommandLineTest : public testing::Test {
 protected:
  CommandLineTest() {
    memory.userDatabase.shell = "/bin/shell";
    memory.files.addFile("/bin/shell", "", 0755);
  }

  MenuItem& add(const std::string& id, const std::string& title, const std::string& commandText) {
    if (settings.config.categories.empty()) {
      settings.config.categories.push_back({.id = "F", .name = "Folder"});
    }
    MenuItem item;
    item.id = id;
    item.title = title;
    item.command.value = commandText;
    return settings.config.categories[0].items.emplace_back(std::move(item));
  }

  ExitStatus run(const RunInvocation& invocation) {
    TerminalPrompts prompts(console, invocation.yes, invocation.input);
    CommandRunner runner(
        runnerCollaborators(memory.platform, settings, prompts, logToStandardOutput));
    return runItem(invocation, settings, runner, memory.queues, console);
  }

  void commandsGive(const std::string& output, int exitStatus = 0) {
    memory.processes.setHandler([=](const Process&) {
      return ScriptedRun{.standardOutput = output, .exitStatus = exitStatus};
    });
  }

  std::string onlyCommandRun() const {
    const auto launched = memory.processes.launched();
    EXPECT_THAT(launched, SizeIs(1));
    return launched.empty() ? "" : launched[0].arguments.back();
  }

  MemoryPlatform memory;
  NotificationCenter center;
  SettingsManager settings{{memory.environment, memory.userDirectories, memory.files, center}};
  MemoryConsole console;
};

TEST_F(CommandLineTest, ListShowsFoldersAndItemsInMenuOrder) {
  add("1", "One", "true");
  add("2", "Two\x1b[2J", "true").isEnabled = false;
  settings.config.categories[0].items.push_back(MenuItem::separator());
  settings.config.categories.push_back({.id = "E", .name = "Earlier", .sortOrder = -1});
  EXPECT_EQ(listItems({}, settings, {}, console), ExitStatus::success);
  EXPECT_EQ(console.out, "Earlier\nFolder\n  1  One\n  2  Two‹U+001B›[2J  (disabled)\n");
}

TEST_F(CommandLineTest, ListShowsAHyphenInThePlaceOfAMissingId) {
  add("", "None", "true");
  add("ä-2", "Two", "true");
  add("3", "Three", "true");
  EXPECT_EQ(listItems({}, settings, {}, console), ExitStatus::success);
  EXPECT_EQ(console.out, "Folder\n  -    None\n  ä-2  Two\n  3    Three\n");
}

TEST_F(CommandLineTest, ListInJsonLeavesOutMissingIds) {
  add("", "None", "true");
  settings.config.categories[0].id = "";
  EXPECT_EQ(listItems({.json = true}, settings, {}, console), ExitStatus::success);
  EXPECT_THAT(console.out, HasSubstr("\"title\" : \"None\""));
  EXPECT_THAT(console.out, Not(HasSubstr("\"id\"")));
  EXPECT_THAT(console.out, Not(HasSubstr("\"folderId\"")));
}

TEST_F(CommandLineTest, ListMarksItemsWhoseHotKeyIsNotRegisteredByIdOrTitle) {
  for (const char* id : {"1", "2", "3", ""}) {
    add(id, std::string("Title ") + id, "true").shortcut.emplace();
  }
  EXPECT_EQ(listItems({}, settings,
                      {{"2", "another title", HotKeyStatus::keyTaken},
                       {"generated", "Title ", HotKeyStatus::noService},
                       {"unknown", "Title 3", HotKeyStatus::keyTaken}},
                      console),
            ExitStatus::success);
  EXPECT_EQ(console.out,
            "Folder\n  1  Title 1\n"
            "  2  Title 2  (hot key not registered: the shortcut is already in use)\n"
            "  3  Title 3\n"
            "  -  Title   (hot key not registered: this session has no service for hot keys)\n");
}

TEST_F(CommandLineTest, ListDoesNotMarkItemsThatHaveNoHotKeyAnyMore) {
  add("1", "One", "true");
  add("2", "Two", "true").shortcut = KeyboardShortcut{.character = "", .isGlobal = false};
  MenuItem& disabled = add("3", "Three", "true");
  disabled.shortcut.emplace();
  disabled.isEnabled = false;
  listItems({}, settings,
            {{"1", "One", HotKeyStatus::keyTaken},
             {"2", "Two", HotKeyStatus::keyTaken},
             {"3", "Three", HotKeyStatus::keyTaken}},
            console);
  EXPECT_EQ(console.out, "Folder\n  1  One\n  2  Two\n  3  Three  (disabled)\n");
}

TEST_F(CommandLineTest, ListInJsonHasTheStatusOfAHotKeyThatIsNotRegistered) {
  add("1", "One", "true").shortcut.emplace();
  add("2", "Two", "true").shortcut.emplace();
  listItems({.json = true}, settings, {{"1", "One", HotKeyStatus::notGranted}}, console);
  EXPECT_THAT(console.out, HasSubstr("\"hotKeyStatus\" : -3,\n    \"id\" : \"1\""));
  EXPECT_EQ(console.out.find("hotKeyStatus"), console.out.rfind("hotKeyStatus"));
}

TEST(PrintableTest, NothingControlsTheTerminalOrIsInvisible) {
  EXPECT_EQ(printable("a\x1b[2J\x7F\u202Egnp.exe\u2028z\n\t"),
            "a‹U+001B›[2J‹U+007F›‹U+202E›gnp.exe‹U+2028›z‹U+000A›‹U+0009›");
  EXPECT_EQ(printable("\u061C\uFEFF\u00AD\xFF"), "‹U+061C›‹U+FEFF›‹U+00AD›\uFFFD");
  EXPECT_EQ(printable("naïve “text” – 👩‍🚀 ¡"),
            "naïve “text” – 👩‍🚀 ¡");
  EXPECT_EQ(printableLines("one\n\ttwo\r"), "one\n\ttwo‹U+000D›");
}

TEST_F(CommandLineTest, ListPrintsJson) {
  add("1", "Say \"hi\"", "true");
  EXPECT_EQ(listItems({.json = true}, settings, {}, console), ExitStatus::success);
  EXPECT_EQ(console.out,
            "[\n"
            "  {\n"
            "    \"folder\" : \"Folder\",\n"
            "    \"folderId\" : \"F\",\n"
            "    \"id\" : \"1\",\n"
            "    \"isEnabled\" : true,\n"
            "    \"title\" : \"Say \\\"hi\\\"\",\n"
            "    \"type\" : \"Shell Command\"\n"
            "  }\n"
            "]\n");
}

TEST_F(CommandLineTest, CheckIsSilentWhenEveryFileDecodes) {
  memory.files.addFile("/a.json", "{}");
  memory.files.addFile("/b.quillmarpack", R"({"categories":[]})");
  EXPECT_EQ(checkFiles({{"/a.json", "/b.quillmarpack"}}, memory.files, console),
            ExitStatus::success);
  EXPECT_EQ(console.out + console.err, "");
}

TEST_F(CommandLineTest, CheckPrintsOneLineForEachInvalidFile) {
  memory.files.addFile("/good.json", "{}");
  memory.files.addFile("/bad.json", R"({"version" : "two"})");
  EXPECT_EQ(checkFiles({{"/bad.json", "/good.json", "/gone.json"}}, memory.files, console),
            ExitStatus::failure);
  EXPECT_THAT(console.err, AllOf(StartsWith("/bad.json: "), HasSubstr("version"),
                                 HasSubstr("\nThe file “/gone.json” could not be read: ")));
  EXPECT_EQ(std::count(console.err.begin(), console.err.end(), '\n'), 2);
}

TEST_F(CommandLineTest, CheckReadsStandardInputForAHyphen) {
  console.input = "{}";
  EXPECT_EQ(checkFiles({{"-"}}, memory.files, console), ExitStatus::success);
  console.input = "[]";
  EXPECT_EQ(checkFiles({{"-"}}, memory.files, console), ExitStatus::failure);
  EXPECT_THAT(console.err, StartsWith("Standard input: The document (line 1, column 1): "));
}

TEST_F(CommandLineTest, RunPrintsTheTrimmedOutputAndALineFeed) {
  add("1", "Date", "date");
  commandsGive("  today \n\n");
  EXPECT_EQ(run({.item = "1"}), ExitStatus::success);
  EXPECT_EQ(console.out, "today\n");
  EXPECT_EQ(onlyCommandRun(), "date");
}

TEST_F(CommandLineTest, RunPrintsNothingIfTheCommandPrintedNothing) {
  add("1", "True", "true");
  commandsGive("\n");
  EXPECT_EQ(run({.item = "1"}), ExitStatus::success);
  EXPECT_EQ(console.out + console.err, "");
}

TEST_F(CommandLineTest, MessagesAboutTheCommandGoToStandardError) {
  add("1", "Script", "/gone\x1b.sh").command.type = CommandType::scriptFile;
  add("2", "Shell", "true");
  EXPECT_EQ(run({.item = "1"}), ExitStatus::failure);
  memory.processes.setHandler(
      [](const Process&) { return ScriptedRun{.launchError = Error{"No processes."}}; });
  EXPECT_EQ(run({.item = "2"}), ExitStatus::failure);
  memory.processes.setHandler(
      [](const Process&) { return ScriptedRun{.readError = Error{"Too much output."}}; });
  EXPECT_EQ(run({.item = "2"}), ExitStatus::failure);
  EXPECT_EQ(console.out, "");
  EXPECT_EQ(console.err,
            "Script file not found: /gone‹U+001B›.sh\nNo processes.\nToo much output.\n");
}

TEST_F(CommandLineTest, RunTakesTheExactTitleAndDisabledItemsToo) {
  add("1", "Date", "date").isEnabled = false;
  EXPECT_EQ(run({.item = "Date"}), ExitStatus::success);
  EXPECT_EQ(onlyCommandRun(), "date");
}

TEST_F(CommandLineTest, AnIdGoesBeforeATitle) {
  add("1", "2", "one");
  add("2", "1", "two");
  EXPECT_EQ(run({.item = "1"}), ExitStatus::success);
  EXPECT_EQ(onlyCommandRun(), "one");
}

TEST_F(CommandLineTest, AFailedCommandGivesItsOutputAndExitStatus1) {
  add("1", "Fail", "false");
  commandsGive("no such thing", 3);
  EXPECT_EQ(run({.item = "1"}), ExitStatus::failure);
  EXPECT_EQ(console.out, "no such thing\n");
}

TEST_F(CommandLineTest, AFailedCommandWithoutOutputSaysSo) {
  add("1", "Fail", "false");
  commandsGive("", 3);
  EXPECT_EQ(run({.item = "1"}), ExitStatus::failure);
  EXPECT_EQ(console.out, "");
  EXPECT_EQ(console.err, "The command exited with an error.\n");
}

TEST_F(CommandLineTest, OutputThatIsNotTextIsOmittedWithAMessage) {
  add("1", "Bytes", "cat");
  commandsGive("\xFF\xFE");
  EXPECT_EQ(run({.item = "1"}), ExitStatus::success);
  EXPECT_EQ(console.out, "");
  EXPECT_EQ(console.err, "The output is not valid UTF-8 and was omitted.\n");
}

TEST_F(CommandLineTest, AnUnknownItemASeparatorAndAnAmbiguousTitleAreUsageErrors) {
  add("1", "Twice", "true");
  add("2", "Twice", "true");
  settings.config.categories[0].items.push_back(MenuItem::separator());
  EXPECT_EQ(run({.item = "twice"}), ExitStatus::usage);
  EXPECT_THAT(console.err, HasSubstr("No item has the id or title “twice”"));
  EXPECT_EQ(run({.item = settings.config.categories[0].items[2].id}), ExitStatus::usage);
  EXPECT_THAT(console.err, HasSubstr("is a separator line"));
  EXPECT_EQ(run({.item = "Twice"}), ExitStatus::usage);
  EXPECT_THAT(console.err,
              HasSubstr("2 items have the title “Twice”; use the id of the one to run: "
                        "1, 2."));
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
}

TEST_F(CommandLineTest, AnAmbiguousTitleOfItemsWithoutIdsAsksForIds) {
  add("", "Twice", "true");
  add("", "Twice", "true");
  EXPECT_EQ(run({.item = "Twice"}), ExitStatus::usage);
  EXPECT_EQ(console.err,
            "2 items have the title “Twice” and none of them has an id; give each an \"id\" in the "
            "settings file.\n");
  console.err.clear();
  add("3", "Twice", "true");
  EXPECT_EQ(run({.item = "Twice"}), ExitStatus::usage);
  EXPECT_EQ(console.err,
            "3 items have the title “Twice”; use the id of the one to run: 3. Those without one "
            "need an \"id\" in the settings file.\n");
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
}

TEST_F(CommandLineTest, WithoutATerminalEveryMissingOptionIsNamed) {
  add("1", "Erase", "rm {{input}}").confirmBeforeRunning = true;
  add("2", "Stop", "stop").confirmBeforeRunning = true;
  console.typed = {"y", "y"};
  EXPECT_EQ(run({.item = "1"}), ExitStatus::usage);
  EXPECT_EQ(run({.item = "1", .yes = true}), ExitStatus::usage);
  EXPECT_EQ(run({.item = "1", .input = "x"}), ExitStatus::usage);
  EXPECT_EQ(run({.item = "2", .input = "x"}), ExitStatus::usage);
  EXPECT_EQ(
      console.err,
      "“Erase” asks for a confirmation and a value, and there is no terminal to ask on; give "
      "the options “--yes” and “--input TEXT”.\n"
      "“Erase” asks for a value, and there is no terminal to ask on; give the option “--input "
      "TEXT”.\n"
      "“Erase” asks for a confirmation, and there is no terminal to ask on; give the option "
      "“--yes”.\n"
      "“Stop” asks for a confirmation, and there is no terminal to ask on; give the option "
      "“--yes”.\n");
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
}

TEST_F(CommandLineTest, OptionsAnswerInsteadOfTheTerminal) {
  add("1", "Erase", "rm {{input}}").confirmBeforeRunning = true;
  EXPECT_EQ(run({.item = "1", .input = "a b", .yes = true}), ExitStatus::success);
  EXPECT_EQ(onlyCommandRun(), "rm a b");
}

TEST_F(CommandLineTest, AnInputForAnItemThatAsksForNoneIsReportedAsIgnored) {
  add("1", "Date", "date");
  EXPECT_EQ(run({.item = "1", .input = "x"}), ExitStatus::success);
  EXPECT_EQ(onlyCommandRun(), "date");
  EXPECT_EQ(console.err, "“Date” does not ask for a value, so “--input” was ignored.\n");
}

TEST_F(CommandLineTest, OnATerminalTheQuestionsAreAskedThere) {
  MenuItem& item = add("1", "Erase", "rm {{input}}");
  item.confirmBeforeRunning = true;
  item.inputPrompt = "Which file?";
  console.interactive = true;
  console.typed = {"y", "a.txt"};
  EXPECT_EQ(run({.item = "1"}), ExitStatus::success);
  EXPECT_EQ(onlyCommandRun(), "rm a.txt");
  EXPECT_THAT(console.err, AllOf(HasSubstr("Run “Erase”?"), HasSubstr("rm {{input}}"),
                                 HasSubstr("Which file?")));
}

TEST_F(CommandLineTest, AConfirmationShowsTheLinesOfTheCommand) {
  add("1", "Two\nlines", "cd /tmp\n\trm x\x1b[2J\ry").confirmBeforeRunning = true;
  console.interactive = true;
  console.typed = {"n"};
  EXPECT_EQ(run({.item = "1"}), ExitStatus::failure);
  EXPECT_EQ(console.err,
            "Run “Two‹U+000A›lines”?\ncd /tmp\n\trm x‹U+001B›[2J‹U+000D›y\nType y to run it: ");
}

TEST_F(CommandLineTest, YesIsUnderstoodInSmallAndCapitalLetters) {
  add("1", "Erase", "rm x").confirmBeforeRunning = true;
  console.interactive = true;
  for (const std::string yes : {"y", "Y", "yes", "Yes", "YES"}) {
    console.typed = {yes};
    EXPECT_EQ(run({.item = "1"}), ExitStatus::success) << yes;
  }
  for (const std::string no : {"", "n", "yeah", "yy"}) {
    console.typed = {no};
    EXPECT_EQ(run({.item = "1"}), ExitStatus::failure) << no;
  }
}

TEST_F(CommandLineTest, DecliningOnTheTerminalIsAFailureAndRunsNothing) {
  add("1", "Erase", "rm x").confirmBeforeRunning = true;
  add("2", "Ask", "echo {{input}}");
  console.interactive = true;
  console.typed = {"n"};
  EXPECT_EQ(run({.item = "1"}), ExitStatus::failure);
  EXPECT_EQ(run({.item = "2"}), ExitStatus::failure) << "the input has ended";
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
}

}  // namespace
}  // namespace quillmar
