#include "commands/command_runner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config/settings_manager.h"
#include "platform/memory/memory_platform.h"
#include "platform/widgets/label.h"
#include "platform/widgets/text_field.h"
#include "tests/collaborators.h"
#include "tests/core/window_contents.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class CommandRunnerTest : public testing::Test {
 protected:
  CommandRunnerTest() {
    memory.userDirectories.home = "/home/ada";
    memory.userDirectories.applicationSupport = {"/home/ada/.config"};
    memory.userDatabase.shell = "/bin/shell";
    memory.files.addFile("/bin/shell", "", 0755);
    memory.environment.variables["PATH"] = "/usr/bin:/bin";
  }
  ~CommandRunnerTest() override {
    const auto stillOpen = PromptPanel::live();
    for (const auto& panel : stillOpen) panel->cancelPressed();
  }

  static MenuItem item(std::string commandText, CommandType type = CommandType::shellCommand) {
    MenuItem item;
    item.id = "id";
    item.title = "Title";
    item.command.type = type;
    item.command.value = std::move(commandText);
    return item;
  }

  /// Lets the next commands print this and end so.
  void commandsGive(std::string output, int exitStatus = 0) {
    memory.processes.setHandler([=](const Process&) {
      return ScriptedRun{.standardOutput = output, .exitStatus = exitStatus};
    });
  }

  void launchesFail(const std::string& description) {
    memory.processes.setHandler(
        [=](const Process&) { return ScriptedRun{.launchError = Error{description}}; });
  }

  void runToTheEnd(const MenuItem& menuItem) {
    runner().run(menuItem);
    memory.queues.runAll();
  }

  CommandRunner& runner() {
    if (!runner_) {
      runner_.emplace(runnerCollaborators(memory.platform, settings(), prompts, logLine()));
    }
    return *runner_;
  }

  SettingsManager& settings() {
    if (!settings_) {
      settings_.emplace(SettingsManager::Collaborators{memory.environment, memory.userDirectories,
                                                       memory.files, center, logLine()});
    }
    return *settings_;
  }

  LogLine logLine() {
    return [this](std::string_view line) { log.emplace_back(line); };
  }

  /// Title and body of every notification shown.
  std::vector<std::pair<std::string, std::string>> notified() const {
    std::vector<std::pair<std::string, std::string>> result;
    for (const auto& shown : memory.notifications.shown()) {
      result.emplace_back(shown.notification.title, shown.notification.body);
    }
    return result;
  }

  /// Texts, field and buttons of the panel in front; empty when there is none.
  std::vector<std::string> askedOnScreen() const {
    std::vector<std::string> shown;
    const Window* const panel = memory.windows.frontWindow();
    if (panel == nullptr) return shown;
    for (const Label* const label : viewsOf<Label>(*panel)) shown.push_back(label->text());
    for (const TextField* const field : viewsOf<TextField>(*panel)) {
      shown.push_back("field [" + field->text() + "]");
    }
    for (const Button* const button : viewsOf<Button>(*panel)) shown.push_back(button->title());
    return shown;
  }

  /// Presses a button of the panel in front.
  void answer(const std::string& buttonTitle) {
    Button* const button = buttonTitled(*memory.windows.frontWindow(), buttonTitle);
    ASSERT_NE(button, nullptr);
    button->press();
  }

  /// Types into the panel in front and confirms.
  void answerWith(const std::string& text) {
    ASSERT_THAT(viewsOf<TextField>(*memory.windows.frontWindow()), SizeIs(1));
    viewsOf<TextField>(*memory.windows.frontWindow())[0]->type(text);
    answer("Run");
  }

  Process onlyProcess() const {
    const std::vector<Process> launched = memory.processes.launched();
    EXPECT_THAT(launched, SizeIs(1));
    return launched.empty() ? Process{} : launched.front();
  }

  using Note = std::pair<std::string, std::string>;

  MemoryPlatform memory;
  PanelPrompts prompts{promptCollaborators(memory.platform)};
  NotificationCenter center;
  std::vector<std::string> log;

 private:
  std::optional<SettingsManager> settings_;
  std::optional<CommandRunner> runner_;
};

// What is asked.

TEST_F(CommandRunnerTest, ASeparatorDoesNothing) {
  MenuItem separator = item("touch /x");
  separator.isSeparator = true;
  separator.confirmBeforeRunning = true;
  runToTheEnd(separator);
  EXPECT_THAT(memory.windows.windows(), IsEmpty());
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
}

TEST_F(CommandRunnerTest, AConfirmationShowsTheTitleAndTheTrimmedCommand) {
  MenuItem confirmed = item(" \n rm -r ~/tmp\t\n");
  confirmed.confirmBeforeRunning = true;
  runner().run(confirmed);
  EXPECT_THAT(askedOnScreen(), ElementsAre("Run “Title”?", "rm -r ~/tmp", "Cancel", "Run"));
  EXPECT_THAT(memory.processes.launched(), IsEmpty());

  answer("Run");
  memory.queues.runAll();
  EXPECT_EQ(onlyProcess().arguments.back(), " \n rm -r ~/tmp\t\n");
}

TEST_F(CommandRunnerTest, ADeclinedConfirmationRunsNothing) {
  MenuItem confirmed = item("true {{input}}");
  confirmed.confirmBeforeRunning = true;
  bool declined = false;
  runner().run(confirmed, [&](const auto& result) { declined = !result.has_value(); });
  answer("Cancel");
  memory.queues.runAll();
  EXPECT_TRUE(declined);
  EXPECT_THAT(memory.windows.windows(), IsEmpty());
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
  EXPECT_THAT(notified(), IsEmpty());
}

TEST_F(CommandRunnerTest, AfterTheConfirmationComesTheQuestionForTheValue) {
  MenuItem both = item("ping {{input}}");
  both.confirmBeforeRunning = true;
  both.inputPrompt = "Which host?";
  runner().run(both);
  answer("Run");
  EXPECT_THAT(memory.windows.windows(), SizeIs(1));
  EXPECT_THAT(askedOnScreen(), ElementsAre("Title", "Which host?", "field []", "Cancel", "Run"));
}

TEST_F(CommandRunnerTest, AnEmptyOrMissingInputPromptAsksToEnterAValue) {
  MenuItem asking = item("ping {{input}}");
  runner().run(asking);
  EXPECT_THAT(askedOnScreen(), ElementsAre("Title", "Enter a value", "field []", "Cancel", "Run"));
  answer("Cancel");
  asking.inputPrompt = "";
  runner().run(asking);
  EXPECT_THAT(askedOnScreen(), ElementsAre("Title", "Enter a value", "field []", "Cancel", "Run"));
}

TEST_F(CommandRunnerTest, EveryPlaceholderIsReplacedByTheInputUnquoted) {
  runner().run(item("echo {{input}} {{INPUT}} '{{input}}'{{input"));
  answerWith("a b");
  memory.queues.runAll();
  EXPECT_EQ(onlyProcess().arguments.back(), "echo a b {{INPUT}} 'a b'{{input");
}

TEST_F(CommandRunnerTest, AnInputThatHoldsThePlaceholderIsNotReplacedAgain) {
  runner().run(item("{{input}}{{input}}"));
  answerWith("<{{input}}>");
  memory.queues.runAll();
  EXPECT_EQ(onlyProcess().arguments.back(), "<{{input}}><{{input}}>");
}

TEST_F(CommandRunnerTest, ACancelledInputPromptRunsNothing) {
  runner().run(item("echo {{input}}"));
  viewsOf<TextField>(*memory.windows.frontWindow())[0]->type("typed all the same");
  answer("Cancel");
  memory.queues.runAll();
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
}

TEST_F(CommandRunnerTest, AnEmptyInputIsStillSubstituted) {
  runner().run(item("echo [{{input}}]"));
  answer("Run");
  memory.queues.runAll();
  EXPECT_EQ(onlyProcess().arguments.back(), "echo []");
}

TEST_F(CommandRunnerTest, AnItemThatCannotBeAskedAboutDoesNotRunAndSaysWhy) {
  memory.windows.failure = Error{"There is no display."};
  MenuItem both = item("echo {{input}}");
  both.confirmBeforeRunning = true;
  int declined = 0;
  runner().run(both, [&](const auto& result) { declined += result.has_value() ? 0 : 1; });
  memory.queues.runAll();
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
  EXPECT_EQ(declined, 1);
  EXPECT_THAT(log, ElementsAre("Could not show the prompt of item id: There is no display."));
  EXPECT_THAT(notified(), ElementsAre(Note("Title", "There is no display.")));
}

// Where it runs.

TEST_F(CommandRunnerTest, ABackgroundCommandWaitsForItsQueueAndReportsOnTheMainQueue) {
  MenuItem background = item("true");
  background.command.showNotification = true;
  runner().run(background);
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
  memory.queues.runPending();
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
  memory.queues.concurrentTasks().runPending();
  EXPECT_THAT(memory.processes.launched(), SizeIs(1));
  EXPECT_THAT(notified(), IsEmpty());
  memory.queues.runPending();
  EXPECT_THAT(notified(), SizeIs(1));
}

TEST_F(CommandRunnerTest, AForegroundCommandRunsAtOnceAndStillReportsLater) {
  MenuItem foreground = item("true");
  foreground.command.runInBackground = false;
  foreground.command.showNotification = true;
  runner().run(foreground);
  EXPECT_THAT(memory.processes.launched(), SizeIs(1));
  EXPECT_THAT(notified(), IsEmpty());
  memory.queues.runPending();
  EXPECT_THAT(notified(), SizeIs(1));
}

TEST_F(CommandRunnerTest, TheQueueIsNamedAndForWhatTheUserStarted) {
  runner();
  ASSERT_THAT(memory.queues.concurrentQueues(), SizeIs(1));
  EXPECT_EQ(memory.queues.concurrentQueues()[0].label, "com.tovenworks.quillmar.commands");
  EXPECT_EQ(memory.queues.concurrentQueues()[0].qualityOfService, QualityOfService::userInitiated);
}

TEST_F(CommandRunnerTest, ThePreferencesCountAsTheyWereWhenTheItemWasChosen) {
  commandsGive("", 1);
  runner().run(item("false"));
  settings().config.preferences.notifyOnFailure = false;
  settings().config.preferences.useLoginShell = false;
  memory.queues.runAll();
  EXPECT_THAT(onlyProcess().arguments, ElementsAre("-l", "-c", "false"));
  EXPECT_THAT(notified(), SizeIs(1));
}

// Terminal.

TEST_F(CommandRunnerTest, ACommandForTheTerminalOpensThereAndPostsNothing) {
  MenuItem inTerminal = item("top -n {{input}}");
  inTerminal.command.openInTerminal = true;
  inTerminal.command.showNotification = true;
  runner().run(inTerminal);
  answerWith("1");
  memory.queues.runAll();
  EXPECT_THAT(memory.workspace.opened, ElementsAre(Note("Title", "top -n 1")));
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
  EXPECT_THAT(notified(), IsEmpty());
}

TEST_F(CommandRunnerTest, AnAppleScriptRunsInProcessEvenWhenMeantForTheTerminal) {
  MenuItem script = item("beep", CommandType::appleScript);
  script.command.openInTerminal = true;
  runToTheEnd(script);
  EXPECT_THAT(memory.workspace.opened, IsEmpty());
  EXPECT_THAT(memory.appleScript.executed, ElementsAre("beep"));
}

TEST_F(CommandRunnerTest, ATerminalThatCannotBeOpenedIsAlwaysReported) {
  memory.workspace.error = Error{"No terminal."};
  settings().config.preferences.notifyOnFailure = false;
  MenuItem inTerminal = item("top");
  inTerminal.command.openInTerminal = true;
  runToTheEnd(inTerminal);
  EXPECT_THAT(notified(), ElementsAre(Note("Title failed", "No terminal.")));
}

// Shell commands.

TEST_F(CommandRunnerTest, ALoginShellGetsTheCommandAsOneArgumentInTheHomeDirectory) {
  runToTheEnd(item("echo 'a  b' \"$HOME\""));
  const Process process = onlyProcess();
  EXPECT_EQ(process.executable, "/bin/shell");
  EXPECT_THAT(process.arguments, ElementsAre("-l", "-c", "echo 'a  b' \"$HOME\""));
  EXPECT_EQ(process.workingDirectory, "/home/ada");
  EXPECT_EQ(process.environment.at("PATH"), "/usr/bin:/bin");
}

TEST_F(CommandRunnerTest, WithoutLoginShellThereIsNoLoginArgument) {
  settings().config.preferences.useLoginShell = false;
  runToTheEnd(item("true"));
  EXPECT_THAT(onlyProcess().arguments, ElementsAre("-c", "true"));
}

TEST_F(CommandRunnerTest, AShellThatIsMissingOrNotExecutableGivesWayToZsh) {
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

TEST_F(CommandRunnerTest, APythonScriptUnderTheHomeDirectoryRunsInItsOwnDirectory) {
  memory.files.addFile("/home/ada/x/run.PY", "");
  runToTheEnd(item("~/x/run.PY", CommandType::scriptFile));
  const Process process = onlyProcess();
  EXPECT_EQ(process.executable, "/usr/bin/env");
  EXPECT_THAT(process.arguments, ElementsAre("python3", "/home/ada/x/run.PY"));
  EXPECT_EQ(process.workingDirectory, "/home/ada/x");
}

TEST_F(CommandRunnerTest, AMissingScriptIsNamedAsTheUserWroteIt) {
  runToTheEnd(item("~/gone.sh", CommandType::scriptFile));
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
  EXPECT_THAT(notified(), ElementsAre(Note("Title failed", "Script file not found: ~/gone.sh")));
}

TEST_F(CommandRunnerTest, AScriptThatCannotExistIsNotFound) {
  memory.files.addFile("/home/ada/file", "");
  memory.files.addSymbolicLink("/home/ada/loop", "/home/ada/loop");
  for (const std::string& path :
       {std::string("~/file/run.sh"), std::string("~/loop"), "~/" + std::string(256, 'n')}) {
    EXPECT_EQ(runner().runScriptFile(path).output, "Script file not found: " + path);
  }
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
}

TEST_F(CommandRunnerTest, AScriptWithoutAKnownExtensionIsExecutedDirectly) {
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

TEST_F(CommandRunnerTest, APlainCommandIsWrappedIntoDoShellScript) {
  runToTheEnd(item("say hello", CommandType::appleScript));
  runToTheEnd(item("Tell application \"Finder\" to activate", CommandType::appleScript));
  runToTheEnd(item("  echo \"a\\b\"  ", CommandType::appleScript));
  EXPECT_THAT(memory.appleScript.executed,
              ElementsAre("do shell script \"say hello\"",
                          "do shell script \"Tell application \"Finder\" to activate\"",
                          "do shell script \"echo \"a\\b\"\""));
}

TEST_F(CommandRunnerTest, ACommandThatOnlyBeginsLikeAWordOfAppleScriptIsWrapped) {
  for (const std::string command :
       {"tellme", "setxkbmap us", "displayed", "getent hosts", "iftop", "openssl version"}) {
    memory.appleScript.executed.clear();
    runToTheEnd(item(command, CommandType::appleScript));
    EXPECT_THAT(memory.appleScript.executed, ElementsAre("do shell script \"" + command + "\""));
  }
}

TEST_F(CommandRunnerTest, AScriptByItsBeginningOrBySeveralLinesIsLeftAsItIs) {
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

TEST_F(CommandRunnerTest, AScriptThatCannotBeMadeFails) {
  memory.appleScript.outcome.reset();
  runToTheEnd(item("beep", CommandType::appleScript));
  EXPECT_THAT(notified(), ElementsAre(Note("Title failed", "Failed to create AppleScript")));
}

TEST_F(CommandRunnerTest, AScriptErrorIsToldByItsMessageElseByItsDescription) {
  using Outcome = MemoryAppleScriptEngine::Outcome;
  memory.appleScript.outcome = Outcome(AppleScriptError{"The message.", "The description."});
  runToTheEnd(item("beep", CommandType::appleScript));
  memory.appleScript.outcome = Outcome(AppleScriptError{std::nullopt, "The description."});
  runToTheEnd(item("beep", CommandType::appleScript));
  EXPECT_THAT(notified(), ElementsAre(Note("Title failed", "The message."),
                                      Note("Title failed", "The description.")));
}

TEST_F(CommandRunnerTest, AScriptWithoutAResultSucceedsWithoutOutput) {
  memory.appleScript.outcome = MemoryAppleScriptEngine::Outcome(std::optional<std::string>());
  MenuItem script = item("beep", CommandType::appleScript);
  script.command.showNotification = true;
  script.command.copyToClipboard = true;
  runToTheEnd(script);
  EXPECT_EQ(memory.pasteboard.string(), std::nullopt);
  EXPECT_THAT(notified(), ElementsAre(Note("Title", "Command completed successfully")));
}

// The report.

TEST_F(CommandRunnerTest, TheTrimmedOutputGoesToThePasteboardAndTheNotification) {
  commandsGive("\n\t 21 November \u2003\n\n");
  MenuItem both = item("date");
  both.command.copyToClipboard = true;
  both.command.showNotification = true;
  runToTheEnd(both);
  EXPECT_EQ(memory.pasteboard.string(), "21 November");
  EXPECT_THAT(notified(), ElementsAre(Note("Title", "21 November")));
}

TEST_F(CommandRunnerTest, AnEmptyOutputLeavesThePasteboardAndSaysThatTheCommandCompleted) {
  memory.pasteboard.setString("what was there");
  commandsGive(" \n");
  MenuItem both = item("true");
  both.command.copyToClipboard = true;
  both.command.showNotification = true;
  runToTheEnd(both);
  EXPECT_EQ(memory.pasteboard.string(), "what was there");
  EXPECT_THAT(notified(), ElementsAre(Note("Title", "Command completed successfully")));
}

TEST_F(CommandRunnerTest, AFailureNeverTouchesThePasteboard) {
  memory.pasteboard.setString("what was there");
  commandsGive("half a result", 1);
  MenuItem copying = item("false");
  copying.command.copyToClipboard = true;
  runToTheEnd(copying);
  EXPECT_EQ(memory.pasteboard.string(), "what was there");
}

TEST_F(CommandRunnerTest, AFailureIsNotifiedWhenFailureNoticesAreOn) {
  commandsGive("", 3);
  runToTheEnd(item("false"));
  commandsGive("No such host.\n", 3);
  runToTheEnd(item("ping nowhere"));
  EXPECT_THAT(notified(), ElementsAre(Note("Title failed", "The command exited with an error."),
                                      Note("Title failed", "No such host.")));
}

TEST_F(CommandRunnerTest, AFailureIsNotifiedForAnItemThatShowsNotifications) {
  settings().config.preferences.notifyOnFailure = false;
  commandsGive("", 1);
  MenuItem showing = item("false");
  showing.command.showNotification = true;
  runToTheEnd(showing);
  EXPECT_THAT(notified(), ElementsAre(Note("Title failed", "The command exited with an error.")));
}

TEST_F(CommandRunnerTest, AFailureIsSilentWhenNeitherIsOn) {
  settings().config.preferences.notifyOnFailure = false;
  commandsGive("", 1);
  runToTheEnd(item("false"));
  EXPECT_THAT(notified(), IsEmpty());
}

TEST_F(CommandRunnerTest, ASuccessIsSilentWithoutShowNotification) {
  commandsGive("output");
  runToTheEnd(item("true"));
  EXPECT_THAT(notified(), IsEmpty());
  EXPECT_EQ(memory.pasteboard.string(), std::nullopt);
}

TEST_F(CommandRunnerTest, AFailedLaunchIsAFailureWithItsReason) {
  launchesFail("There are no more processes.");
  runToTheEnd(item("true"));
  EXPECT_THAT(notified(), ElementsAre(Note("Title failed", "There are no more processes.")));
}

TEST_F(CommandRunnerTest, OutputThatDoesNotFitIntoMemoryIsAFailureWithItsReason) {
  memory.processes.setHandler([](const Process&) {
    return ScriptedRun{.readError = Error{"The command printed more than fits into memory."}};
  });
  runToTheEnd(item("yes"));
  EXPECT_THAT(notified(),
              ElementsAre(Note("Title failed", "The command printed more than fits into memory.")));
  EXPECT_EQ(memory.processes.unreapedCount(), 0u);
}

TEST_F(CommandRunnerTest, OutputThatIsNotUtf8CountsAsNoOutputAndTheStatusDecides) {
  commandsGive("caf\xE9");
  MenuItem both = item("cat");
  both.command.copyToClipboard = true;
  both.command.showNotification = true;
  runToTheEnd(both);
  EXPECT_EQ(memory.pasteboard.string(), std::nullopt);
  EXPECT_THAT(notified(), ElementsAre(Note("Title", "Command completed successfully")));
}

TEST_F(CommandRunnerTest, ANotificationShowsTheLast400CharactersOfALongOutput) {
  std::string output;
  std::string tail;
  for (int i = 0; i < 1000; ++i) {
    const std::string character = i % 2 == 0 ? "é" : "👩‍🚀";
    output += character;
    if (i >= 600) tail += character;
  }
  commandsGive(output);
  MenuItem showing = item("cat");
  showing.command.showNotification = true;
  runToTheEnd(showing);
  EXPECT_THAT(notified(), ElementsAre(Note("Title", tail)));
}

TEST_F(CommandRunnerTest, ANotificationIsBoundedAlsoWhenACharacterHasMegabytesOfCombiningMarks) {
  std::string output = "e";
  while (output.size() < 4'000'000) output += "\u0301";
  output += "end";
  commandsGive(output, 1);
  MenuItem failing = item("cat");
  failing.title = std::string(1'000'000, 'T');
  runToTheEnd(failing);
  const auto shown = notified();
  ASSERT_THAT(shown, SizeIs(1));
  EXPECT_EQ(shown[0].first, std::string(1024 - 7, 'T') + " failed");
  EXPECT_THAT(shown[0].second, testing::EndsWith("\u0301end"));
  EXPECT_LE(shown[0].second.size(), 65536u);
  EXPECT_GT(shown[0].second.size(), 65530u);
}

TEST_F(CommandRunnerTest, ALongTitleIsCutAtTheEnd) {
  runner().notify(std::string(1023, 'T') + "é", "Body");
  EXPECT_THAT(notified(), ElementsAre(Note(std::string(1023, 'T'), "Body")));
}

TEST_F(CommandRunnerTest, TheOutputReachesTheClipboardWithoutACopy) {
  const char* bytes = nullptr;
  memory.processes.setHandler([&](const Process&) {
    ScriptedRun run{.standardOutput = " " + std::string(1000, 'x') + "\n"};
    bytes = run.standardOutput.data();
    return run;
  });
  MenuItem both = item("cat");
  both.command.copyToClipboard = true;
  both.command.showNotification = true;
  runToTheEnd(both);
  ASSERT_THAT(memory.pasteboard.history(), ElementsAre(std::string(1000, 'x')));
  EXPECT_EQ(static_cast<const void*>(memory.pasteboard.history()[0].data()), bytes);
  EXPECT_THAT(notified(), ElementsAre(Note("Title", std::string(400, 'x'))));
}

TEST_F(CommandRunnerTest, ABackgroundCommandWithoutAThreadIsAFailure) {
  memory.queues.setConcurrentError(Error{"The system has no thread to spare."});
  runToTheEnd(item("true"));
  EXPECT_THAT(notified(), ElementsAre(Note("Title failed",
                                           "The command could not be started. The system has no "
                                           "thread to spare.")));
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
}

TEST_F(CommandRunnerTest, EveryNotificationHasAnIdentifierOfItsOwnAndTheStandardSound) {
  runner().notify("One", "1");
  runner().notify("Two", "2");
  memory.queues.runAll();
  const auto shown = memory.notifications.shown();
  ASSERT_THAT(shown, SizeIs(2));
  EXPECT_THAT(shown[0].notification.identifier, SizeIs(36));
  EXPECT_NE(shown[0].notification.identifier, shown[1].notification.identifier);
  EXPECT_EQ(shown[0].notification.sound, NotificationSound::standard);
}

TEST_F(CommandRunnerTest, ARefusedNotificationIsOnlyLogged) {
  memory.notifications.setError(Error{"Nobody is listening."});
  runner().notify("Title", "Body");
  memory.queues.runAll();
  EXPECT_THAT(log, ElementsAre("Notification error: Nobody is listening."));
}

TEST_F(CommandRunnerTest, TheCompletionGetsTheResultAfterTheReport) {
  commandsGive("out\n", 2);
  std::optional<CommandRunner::RunResult> result;
  std::size_t shownBefore = 0;
  runner().run(item("x"), [&](const auto& reported) {
    result = reported;
    shownBefore = memory.notifications.shown().size();
  });
  memory.queues.runAll();
  EXPECT_EQ(result, (CommandRunner::RunResult{"out", false}));
  EXPECT_EQ(shownBefore, 1u);
}

// The environment.

TEST_F(CommandRunnerTest, ExistingExtraDirectoriesGoInFrontOfThePathInTableOrder) {
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

TEST_F(CommandRunnerTest, TheSixExtraDirectoriesAreTheseInThisOrder) {
  for (const char* directory : {"/home/ada/bin", "/home/ada/.local/bin", "/usr/local/sbin",
                                "/usr/local/bin", "/opt/homebrew/sbin", "/opt/homebrew/bin"}) {
    memory.files.addFolder(directory);
  }
  memory.environment.variables["PATH"] = "/bin";
  EXPECT_EQ(runner().augmentedEnvironment().at("PATH"),
            "/opt/homebrew/bin:/opt/homebrew/sbin:/usr/local/bin:/usr/local/sbin:"
            "/home/ada/.local/bin:/home/ada/bin:/bin");
}

TEST_F(CommandRunnerTest, AHomeDirectoryThatEndsInASlashGivesNoDirectoryTwice) {
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

TEST_F(CommandRunnerTest, AnExtraDirectoryThatCannotExistIsLeftOut) {
  memory.environment.variables["PATH"] = "/usr/bin";
  memory.files.addFile("/opt/homebrew", "a file");
  memory.files.addSymbolicLink("/home/ada/bin", "/home/ada/bin");
  EXPECT_EQ(runner().augmentedEnvironment().at("PATH"), "/usr/bin");
}

TEST_F(CommandRunnerTest, WithoutAPathTheFallbackIsWritten) {
  memory.environment.variables = {{"LANG", "C"}};
  EXPECT_THAT(runner().augmentedEnvironment(),
              ElementsAre(Note("LANG", "C"), Note("PATH", "/usr/bin:/bin:/usr/sbin:/sbin")));
}

TEST_F(CommandRunnerTest, ThePathItselfStaysAsItIs) {
  memory.environment.variables["PATH"] = ":/usr/bin::/bin:";
  EXPECT_EQ(runner().augmentedEnvironment().at("PATH"), ":/usr/bin::/bin:");
}

}  // namespace
}  // namespace quillmar
