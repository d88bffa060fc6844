#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/core/command_runner_fixture.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class CommandReportTest : public CommandRunnerTest {};

TEST_F(CommandReportTest, TheTrimmedOutputGoesToThePasteboardAndTheNotification) {
  commandsGive("\n\t 21 November \u2003\n\n");
  MenuItem both = item("date");
  both.command.copyToClipboard = true;
  both.command.showNotification = true;
  runToTheEnd(both);
  EXPECT_EQ(memory.pasteboard.string(), "21 November");
  EXPECT_THAT(notified(), ElementsAre(Note("Title", "21 November")));
}

TEST_F(CommandReportTest, AnEmptyOutputLeavesThePasteboardAndSaysThatTheCommandCompleted) {
  memory.pasteboard.setString("what was there");
  commandsGive(" \n");
  MenuItem both = item("true");
  both.command.copyToClipboard = true;
  both.command.showNotification = true;
  runToTheEnd(both);
  EXPECT_EQ(memory.pasteboard.string(), "what was there");
  EXPECT_THAT(notified(), ElementsAre(Note("Title", "Command completed successfully")));
}

TEST_F(CommandReportTest, AFailureNeverTouchesThePasteboard) {
  memory.pasteboard.setString("what was there");
  commandsGive("half a result", 1);
  MenuItem copying = item("false");
  copying.command.copyToClipboard = true;
  runToTheEnd(copying);
  EXPECT_EQ(memory.pasteboard.string(), "what was there");
}

TEST_F(CommandReportTest, AFailureIsNotifiedWhenFailureNoticesAreOn) {
  commandsGive("", 3);
  runToTheEnd(item("false"));
  commandsGive("No such host.\n", 3);
  runToTheEnd(item("ping nowhere"));
  EXPECT_THAT(notified(), ElementsAre(Note("Title failed", "The command exited with an error."),
                                      Note("Title failed", "No such host.")));
}

TEST_F(CommandReportTest, AFailureIsNotifiedForAnItemThatShowsNotifications) {
  settings().config.preferences.notifyOnFailure = false;
  commandsGive("", 1);
  MenuItem showing = item("false");
  showing.command.showNotification = true;
  runToTheEnd(showing);
  EXPECT_THAT(notified(), ElementsAre(Note("Title failed", "The command exited with an error.")));
}

TEST_F(CommandReportTest, AFailureIsSilentWhenNeitherIsOn) {
  settings().config.preferences.notifyOnFailure = false;
  commandsGive("", 1);
  runToTheEnd(item("false"));
  EXPECT_THAT(notified(), IsEmpty());
}

TEST_F(CommandReportTest, ASuccessIsSilentWithoutShowNotification) {
  commandsGive("output");
  runToTheEnd(item("true"));
  EXPECT_THAT(notified(), IsEmpty());
  EXPECT_EQ(memory.pasteboard.string(), std::nullopt);
}

TEST_F(CommandReportTest, AFailedLaunchIsAFailureWithItsReason) {
  launchesFail("There are no more processes.");
  runToTheEnd(item("true"));
  EXPECT_THAT(notified(), ElementsAre(Note("Title failed", "There are no more processes.")));
}

TEST_F(CommandReportTest, OutputThatDoesNotFitIntoMemoryIsAFailureWithItsReason) {
  memory.processes.setHandler([](const Process&) {
    return ScriptedRun{.readError = Error{"The command printed more than fits into memory."}};
  });
  runToTheEnd(item("yes"));
  EXPECT_THAT(notified(),
              ElementsAre(Note("Title failed", "The command printed more than fits into memory.")));
  EXPECT_EQ(memory.processes.unreapedCount(), 0u);
}

TEST_F(CommandReportTest, OutputThatIsNotUtf8CountsAsNoOutputAndTheStatusDecides) {
  commandsGive("caf\xE9");
  MenuItem both = item("cat");
  both.command.copyToClipboard = true;
  both.command.showNotification = true;
  runToTheEnd(both);
  EXPECT_EQ(memory.pasteboard.string(), std::nullopt);
  EXPECT_THAT(notified(), ElementsAre(Note("Title", "Command completed successfully")));
}

TEST_F(CommandReportTest, ANotificationShowsTheLast400CharactersOfALongOutput) {
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

TEST_F(CommandReportTest, ANotificationIsBoundedAlsoWhenACharacterHasMegabytesOfCombiningMarks) {
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

TEST_F(CommandReportTest, ALongTitleIsCutAtTheEnd) {
  runner().notify(std::string(1023, 'T') + "é", "Body");
  EXPECT_THAT(notified(), ElementsAre(Note(std::string(1023, 'T'), "Body")));
}

TEST_F(CommandReportTest, TheOutputReachesTheClipboardWithoutACopy) {
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

TEST_F(CommandReportTest, ABackgroundCommandWithoutAThreadIsAFailure) {
  memory.queues.setConcurrentError(Error{"The system cannot start another thread."});
  runToTheEnd(item("true"));
  EXPECT_THAT(notified(), ElementsAre(Note("Title failed",
                                           "The command could not be started. The system cannot "
                                           "start another thread.")));
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
}

TEST_F(CommandReportTest, EveryNotificationHasAnIdentifierOfItsOwnAndTheStandardSound) {
  runner().notify("One", "1");
  runner().notify("Two", "2");
  memory.queues.runAll();
  const auto shown = memory.notifications.shown();
  ASSERT_THAT(shown, SizeIs(2));
  EXPECT_THAT(shown[0].notification.identifier, SizeIs(36));
  EXPECT_NE(shown[0].notification.identifier, shown[1].notification.identifier);
  EXPECT_EQ(shown[0].notification.sound, NotificationSound::standard);
}

TEST_F(CommandReportTest, ARefusedNotificationIsOnlyLogged) {
  memory.notifications.setError(Error{"Nobody is listening."});
  runner().notify("Title", "Body");
  memory.queues.runAll();
  EXPECT_THAT(log, ElementsAre("Notification error: Nobody is listening."));
}

TEST_F(CommandReportTest, TheCompletionGetsTheResultAfterTheReport) {
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

}  // namespace
}  // namespace quillmar
