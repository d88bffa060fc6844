#include "platform/patient_question.h"

#include <atomic>
#include <chrono>
#include <latch>
#include <memory>
#include <optional>

#include <gtest/gtest.h>

namespace quillmar {
namespace {

constexpr std::chrono::hours untilTheAnswer(1);
constexpr std::chrono::milliseconds notAtAll(0);

/// Somebody who answers only once he is let, and counts how often he was asked.
struct Silent {
  std::latch mayAnswer{1};
  std::atomic<int> timesAsked = 0;
};

class PatientQuestionTest : public testing::Test {
 protected:
  std::optional<int> askSilent(std::chrono::milliseconds patience) {
    return question_.ask(
        "silent",
        [silent = silent_] {
          ++silent->timesAsked;
          silent->mayAnswer.wait();
          return 7;
        },
        patience);
  }

  PatientQuestion<int> question_;
  std::shared_ptr<Silent> silent_ = std::make_shared<Silent>();
};

TEST_F(PatientQuestionTest, WhoAnswersIsAskedAnewEachTime) {
  EXPECT_EQ(question_.ask(
                "quick", [] { return 1; }, untilTheAnswer),
            1);
  EXPECT_EQ(question_.ask(
                "quick", [] { return 2; }, untilTheAnswer),
            2);
}

TEST_F(PatientQuestionTest, WhoIsSilentIsNotWaitedForAgain) {
  EXPECT_EQ(askSilent(notAtAll), std::nullopt);
  // This would take until the end of the test's time.
  EXPECT_EQ(askSilent(untilTheAnswer), std::nullopt);
  silent_->mayAnswer.count_down();
}

TEST_F(PatientQuestionTest, ALateAnswerIsTakenAndNotAskedForAgain) {
  EXPECT_EQ(askSilent(notAtAll), std::nullopt);
  silent_->mayAnswer.count_down();
  std::optional<int> answer;
  while (!answer) answer = askSilent(notAtAll);
  EXPECT_EQ(answer, 7);
  EXPECT_EQ(silent_->timesAsked, 1);
}

TEST_F(PatientQuestionTest, SomebodyElseIsAskedAndWaitedFor) {
  EXPECT_EQ(askSilent(notAtAll), std::nullopt);
  EXPECT_EQ(question_.ask(
                "other", [] { return 3; }, untilTheAnswer),
            3);
  silent_->mayAnswer.count_down();
}

}  // namespace
}  // namespace quillmar
