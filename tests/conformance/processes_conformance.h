// What every implementation of child processes does. A fixture names the implementation: it is
// default-constructible, gives out `processes()`, and configures programs that behave as the suite
// wants them:
//   Process printing(output, exitStatus)   writes the output and exits
//   Process printingBoth(output, errors)   writes the output, then the errors to standard error
//   Process printingMuch(bytes)            writes so many 'e' to standard error, then as many 'o'
//   to
//                                          standard output
//   Process killedBySignal(number)         ends by that signal
//   Process showingArguments()             writes each of its arguments and a line feed
//   Process showingEnvironment()           writes NAME=VALUE and a line feed per variable
//   Process missing()                      a path at which there is no program
//   Process inMissingFolder(path)          a program that works in a folder that does not exist

#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/processes.h"

namespace quillmar {

template <class Fixture>
class ProcessesConformance : public testing::Test {
 protected:
  struct Outcome {
    std::string output;
    int status = -1;
    std::string errors;
  };

  Outcome run(const Process& process) {
    Result<std::unique_ptr<RunningProcess>> launched = fixture_.processes().launch(process);
    if (!launched) {
      ADD_FAILURE() << launched.error().description;
      return {};
    }
    ProcessOutput output = launched.value()->readToEnd().value();
    return {std::move(output.standardOutput), launched.value()->waitForExit(),
            std::move(output.standardError)};
  }

  std::string launchErrorOf(const Process& process) {
    const Result<std::unique_ptr<RunningProcess>> launched = fixture_.processes().launch(process);
    return launched ? "The process was launched." : launched.error().description;
  }

  Fixture fixture_;
};

TYPED_TEST_SUITE_P(ProcessesConformance);

TYPED_TEST_P(ProcessesConformance, AProgramsOutputAndExitStatusArrive) {
  const auto outcome = this->run(this->fixture_.printing("Hello\nworld\n", 0));
  EXPECT_EQ(outcome.output, "Hello\nworld\n");
  EXPECT_EQ(outcome.status, 0);
}

TYPED_TEST_P(ProcessesConformance, AFailingProgramsOutputAndStatusArrive) {
  const auto outcome = this->run(this->fixture_.printing("no luck", 42));
  EXPECT_EQ(outcome.output, "no luck");
  EXPECT_EQ(outcome.status, 42);
}

TYPED_TEST_P(ProcessesConformance, OutputOfAnyBytesArrivesUnchanged) {
  std::string bytes;
  for (int i = 1; i < 256; ++i) bytes += static_cast<char>(i);
  EXPECT_EQ(this->run(this->fixture_.printing(bytes, 0)).output, bytes);
}

TYPED_TEST_P(ProcessesConformance, NoOutputIsTheEmptyText) {
  EXPECT_EQ(this->run(this->fixture_.printing("", 0)).output, "");
}

TYPED_TEST_P(ProcessesConformance, StandardErrorIsMergedIntoTheOutputUnlessCapturedSeparately) {
  Process process = this->fixture_.printingBoth("out", "err");
  auto outcome = this->run(process);
  EXPECT_EQ(outcome.output, "outerr");
  EXPECT_EQ(outcome.errors, "");
  process.standardError = StandardError::separate;
  outcome = this->run(process);
  EXPECT_EQ(outcome.output, "out");
  EXPECT_EQ(outcome.errors, "err");
}

TYPED_TEST_P(ProcessesConformance, BothStreamsArriveWholeHoweverMuchTheyCarry) {
  constexpr std::size_t bytes = 1'000'000;
  Process process = this->fixture_.printingMuch(bytes);
  process.standardError = StandardError::separate;
  const auto outcome = this->run(process);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(outcome.output == std::string(bytes, 'o')) << outcome.output.size() << " bytes";
  EXPECT_TRUE(outcome.errors == std::string(bytes, 'e')) << outcome.errors.size() << " bytes";
}

TYPED_TEST_P(ProcessesConformance, ASignalThatEndsTheProgramIsToldAs128PlusItsNumber) {
  EXPECT_EQ(this->run(this->fixture_.killedBySignal(15)).status, 128 + 15);
}

TYPED_TEST_P(ProcessesConformance, ArgumentsArriveUnchanged) {
  Process process = this->fixture_.showingArguments();
  process.arguments.insert(process.arguments.end(),
                           {"a b", "", "\"quoted\" 'text'", "$HOME `id`", "*", "–\xFF"});
  EXPECT_EQ(this->run(process).output, "a b\n\n\"quoted\" 'text'\n$HOME `id`\n*\n–\xFF\n");
}

TYPED_TEST_P(ProcessesConformance, TheEnvironmentIsTheGivenOneAndNothingElse) {
  Process process = this->fixture_.showingEnvironment();
  process.environment = {{"EMPTY", ""}, {"NAME", "a = b"}};
  EXPECT_EQ(this->run(process).output, "EMPTY=\nNAME=a = b\n");
}

TYPED_TEST_P(ProcessesConformance, ChildrenRunSideBySide) {
  std::vector<std::unique_ptr<RunningProcess>> children;
  for (int i = 0; i < 20; ++i) {
    auto launched =
        this->fixture_.processes().launch(this->fixture_.printing(std::to_string(i), i));
    ASSERT_TRUE(launched.ok()) << launched.error().description;
    children.push_back(std::move(launched).value());
  }
  for (int i = 19; i >= 0; --i) {
    RunningProcess& child = *children[static_cast<std::size_t>(i)];
    EXPECT_EQ(child.readToEnd().value().standardOutput, std::to_string(i));
    EXPECT_EQ(child.waitForExit(), i);
  }
}

TYPED_TEST_P(ProcessesConformance, AMissingProgramIsALaunchErrorThatNamesIt) {
  const Process process = this->fixture_.missing();
  EXPECT_EQ(this->launchErrorOf(process),
            "The program “" + process.executable + "” could not be launched: it does not exist.");
}

TYPED_TEST_P(ProcessesConformance, AMissingWorkingDirectoryIsALaunchErrorThatNamesIt) {
  const Process process = this->fixture_.inMissingFolder("/no/such/folder");
  EXPECT_EQ(this->launchErrorOf(process),
            "The program “" + process.executable +
                "” could not be launched: its working directory “/no/such/folder” does not exist.");
}

TYPED_TEST_P(ProcessesConformance, ANullCharacterInAnyTextIsALaunchErrorThatSaysWhere) {
  using std::string_literals::operator""s;
  using testing::HasSubstr;
  const Process good = this->fixture_.printing("", 0);
  Process process = good;
  process.executable += "\0x"s;
  EXPECT_THAT(this->launchErrorOf(process), HasSubstr("its path contains a U+0000 character."));
  process = good;
  process.arguments.push_back("a\0b"s);
  EXPECT_THAT(this->launchErrorOf(process), HasSubstr("an argument contains a U+0000 character."));
  process = good;
  process.environment["NAME"] = "a\0b"s;
  EXPECT_THAT(this->launchErrorOf(process),
              HasSubstr("an environment variable contains a U+0000 character."));
  process = good;
  process.workingDirectory = "/\0"s;
  EXPECT_THAT(this->launchErrorOf(process),
              HasSubstr("the path of the working directory contains a U+0000 character."));
}

TYPED_TEST_P(ProcessesConformance, ADetachedProgramThatCannotStartIsTheSameLaunchError) {
  const Process process = this->fixture_.missing();
  const Result<void> launched = this->fixture_.processes().launchDetached(process);
  ASSERT_FALSE(launched.ok());
  EXPECT_EQ(launched.error().description, this->launchErrorOf(process));
  EXPECT_TRUE(this->fixture_.processes().launchDetached(this->fixture_.printing("", 1)).ok());
}

REGISTER_TYPED_TEST_SUITE_P(ProcessesConformance, AProgramsOutputAndExitStatusArrive,
                            AFailingProgramsOutputAndStatusArrive, OutputOfAnyBytesArrivesUnchanged,
                            NoOutputIsTheEmptyText,
                            StandardErrorIsMergedIntoTheOutputUnlessCapturedSeparately,
                            BothStreamsArriveWholeHoweverMuchTheyCarry,
                            ASignalThatEndsTheProgramIsToldAs128PlusItsNumber,
                            ArgumentsArriveUnchanged, TheEnvironmentIsTheGivenOneAndNothingElse,
                            ChildrenRunSideBySide, AMissingProgramIsALaunchErrorThatNamesIt,
                            AMissingWorkingDirectoryIsALaunchErrorThatNamesIt,
                            ANullCharacterInAnyTextIsALaunchErrorThatSaysWhere,
                            ADetachedProgramThatCannotStartIsTheSameLaunchError);

}  // namespace quillmar
