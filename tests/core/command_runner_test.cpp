#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/core/command_runner_fixture.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

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

}  // namespace
}  // namespace quillmar
