#include "platform/linux/processes/posix_processes.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/file_descriptor.h"
#include "tests/conformance/processes_conformance.h"
#include "tests/linux/temporary_folder.h"
#include "tests/linux/test_program.h"

namespace quillmar {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

class PosixProcessesFixture {
 public:
  PosixProcesses& processes() { return processes_; }

  Process printing(const std::string& output, int exitStatus) {
    return testProgram({"print", output, std::to_string(exitStatus)});
  }
  Process printingBoth(const std::string& output, const std::string& errors) {
    return testProgram({"printBoth", output, errors});
  }
  Process printingMuch(std::size_t bytes) {
    return testProgram({"printMuch", std::to_string(bytes)});
  }
  Process killedBySignal(int number) { return testProgram({"killSelf", std::to_string(number)}); }
  Process showingArguments() { return testProgram({"showArguments"}); }
  Process showingEnvironment() { return testProgram({"showEnvironment"}); }
  Process missing() { return {"/no/such/program", {}, {}, "/"}; }
  Process inMissingFolder(const std::string& path) {
    Process process = printing("", 0);
    process.workingDirectory = path;
    return process;
  }

 private:
  PosixProcesses processes_{PosixProcesses::Terminal::detach};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Posix, ProcessesConformance, PosixProcessesFixture);

class PosixProcessesTest : public testing::Test {
 protected:
  std::string outputOf(const Process& process) { return outputOf(processes_, process); }

  static std::string outputOf(Processes& processes, const Process& process) {
    Result<std::unique_ptr<RunningProcess>> launched = processes.launch(process);
    if (!launched) return launched.error().description;
    std::string output = launched.value()->readToEnd().value().standardOutput;
    EXPECT_EQ(launched.value()->waitForExit(), 0);
    return output;
  }

  /// A file in the test's folder; its path.
  std::string makeFile(const std::string& name, const std::string& content, int permissions) {
    std::string path = folder_.path() + "/" + name;
    std::ofstream(path) << content;
    std::filesystem::permissions(path, std::filesystem::perms(permissions));
    return path;
  }

  static bool hasNoChildren() { return waitpid(-1, nullptr, WNOHANG) < 0 && errno == ECHILD; }

  TemporaryFolder folder_;
  PosixProcesses processes_{PosixProcesses::Terminal::detach};
};

TEST_F(PosixProcessesTest, StandardOutputAndStandardErrorComeInOneStreamInOrder) {
  EXPECT_EQ(outputOf(testProgram({"printInterleaved"})), "out1 err1 out2 err2 ");
}

TEST_F(PosixProcessesTest, OutputLargerThanAPipeArrivesWhole) {
  EXPECT_EQ(outputOf(testProgram({"printMuch", "500000"})),
            std::string(500'000, 'e') + std::string(500'000, 'o'));
}

TEST_F(PosixProcessesTest, AStreamThatTheChildClosesEarlyDoesNotEndTheOther) {
  const auto written = [&](const std::string& command) {
    auto launched = processes_.launch({.executable = "/bin/sh",
                                       .arguments = {"-c", command},
                                       .environment = {{"PATH", "/usr/bin:/bin"}},
                                       .workingDirectory = "/",
                                       .standardError = StandardError::separate});
    if (!launched) return ProcessOutput{launched.error().description, ""};
    ProcessOutput output = launched.value()->readToEnd().value();
    EXPECT_EQ(launched.value()->waitForExit(), 0);
    return output;
  };
  EXPECT_EQ(written("echo out; exec >&-; echo err >&2"), (ProcessOutput{"out\n", "err\n"}));
  EXPECT_EQ(written("echo err >&2; exec 2>&-; echo out"), (ProcessOutput{"out\n", "err\n"}));
}

TEST_F(PosixProcessesTest, ReadingGoesOnUntilTheLastHolderOfThePipeHasClosedIt) {
  const Process process{
      "/bin/sh",
      {"-c", "(read line <\"$0\"; echo late) & echo early", folder_.path() + "/fifo"},
      {{"PATH", "/usr/bin:/bin"}},
      "/"};
  const std::string fifo = folder_.path() + "/fifo";
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  auto launched = processes_.launch(process);
  ASSERT_TRUE(launched.ok()) << launched.error().description;
  EXPECT_EQ(launched.value()->waitForExit(), 0);
  std::ofstream(fifo) << "go\n";
  EXPECT_EQ(launched.value()->readToEnd().value().standardOutput, "early\nlate\n");
}

TEST_F(PosixProcessesTest, TheWorkingDirectoryIsTheGivenOneOrThisProgramsOwn) {
  Process process = testProgram({"showWorkingDirectory"});
  process.workingDirectory = folder_.path();
  EXPECT_EQ(outputOf(process), std::filesystem::canonical(folder_.path()).string());
  process.workingDirectory = "";
  EXPECT_EQ(outputOf(process), std::filesystem::current_path().string());
}

TEST_F(PosixProcessesTest, ARelativeProgramResolvesAgainstThisProgramsWorkingDirectory) {
  Process process = testProgram({"showWorkingDirectory"});
  process.executable = std::filesystem::relative(process.executable).string();
  process.workingDirectory = folder_.path();
  EXPECT_EQ(outputOf(process), std::filesystem::canonical(folder_.path()).string());
}

TEST_F(PosixProcessesTest, NoDescriptorButTheStandardOnesReachesTheChild) {
  const int inheritable = open("/dev/null", O_RDONLY);
  const int high = fcntl(inheritable, F_DUPFD, 500);
  ASSERT_GE(high, 500);
  EXPECT_EQ(outputOf(testProgram({"showDescriptors"})), "0 1 2 ");
  close(high);
  close(inheritable);
}

TEST_F(PosixProcessesTest, AChildHasNoSignalBlockedOrIgnored) {
  sigset_t blocked;
  sigset_t before;
  sigfillset(&blocked);
  pthread_sigmask(SIG_BLOCK, &blocked, &before);
  const auto beforePipe = std::signal(SIGPIPE, SIG_IGN);
  const auto beforeInterrupt = std::signal(SIGINT, SIG_IGN);
  EXPECT_EQ(outputOf(testProgram({"showSignals"})),
            "SigBlk:\t0000000000000000\nSigIgn:\t0000000000000000\n");
  std::signal(SIGINT, beforeInterrupt);
  std::signal(SIGPIPE, beforePipe);
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TEST_F(PosixProcessesTest, AChildLeadsASessionOfItsOwnOnlyWhenAskedFor) {
  EXPECT_EQ(outputOf(testProgram({"showSession"})), "own");
  PosixProcesses inheriting(PosixProcesses::Terminal::inherit);
  EXPECT_EQ(outputOf(inheriting, testProgram({"showSession"})), "inherited");
}

TEST_F(PosixProcessesTest, ADetachedChildDoesNotReadThisProgramsStandardInput) {
  const FileDescriptor before(dup(STDIN_FILENO));
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
  const FileDescriptor readEnd(ends[0]);
  FileDescriptor writeEnd(ends[1]);
  ASSERT_EQ(write(ends[1], "typed", 5), 5);
  writeEnd.close();
  ASSERT_EQ(dup2(ends[0], STDIN_FILENO), STDIN_FILENO);
  PosixProcesses inheriting(PosixProcesses::Terminal::inherit);
  EXPECT_EQ(outputOf({"/bin/cat", {}, {}, "/"}), "");
  EXPECT_EQ(outputOf(inheriting, {"/bin/cat", {}, {}, "/"}), "typed");
  dup2(before.number(), STDIN_FILENO);
}

TEST_F(PosixProcessesTest, ADetachedProgramHasASessionOfItsOwnAndNoStreams) {
  const std::string fifo = folder_.path() + "/fifo";
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  PosixProcesses inheriting(PosixProcesses::Terminal::inherit);
  const Result<void> launched = inheriting.launchDetached(
      {"/bin/sh",
       {"-c",
        "streams=$(readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2)\n"
        "read -r id name state parent group session rest </proc/$$/stat\n"
        "[ $session = $$ ] && streams=\"$streams own\"\n"
        "printf '%s in %s with %s' \"$streams\" \"$PWD\" \"$NAME\" >\"$0\"",
        fifo},
       {{"PATH", "/usr/bin:/bin"}, {"NAME", "value"}},
       "/"});
  ASSERT_TRUE(launched.ok()) << launched.error().description;
  std::ifstream output(fifo);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(output), {}),
            "/dev/null\n/dev/null\n/dev/null own in / with value");
}

TEST_F(PosixProcessesTest, ADetachedProgramLeavesNoZombie) {
  ASSERT_TRUE(processes_.launchDetached({"/bin/true", {}, {}, "/"}).ok());
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
  siginfo_t ended{};
  while (waitid(P_ALL, 0, &ended, WEXITED | WNOWAIT) == 0) {
    ASSERT_LT(std::chrono::steady_clock::now(), deadline);
  }
  EXPECT_EQ(errno, ECHILD);
}

TEST_F(PosixProcessesTest, OutputBeyondTheLimitIsAnErrorAndDoesNotBlockTheChild) {
  EXPECT_EQ(maximumOutputBytes, 256u << 20);
  PosixProcesses limited(PosixProcesses::Terminal::detach, 1 << 20);
  for (const StandardError standardError : {StandardError::merged, StandardError::separate}) {
    Process process = testProgram({"printMuch", std::to_string(1 << 19)});
    process.standardError = standardError;
    auto launched = limited.launch(process);
    ASSERT_TRUE(launched.ok()) << launched.error().description;
    const auto output = launched.value()->readToEnd();
    ASSERT_TRUE(output.ok()) << output.error().description;
    EXPECT_EQ(output.value().standardOutput.size() + output.value().standardError.size(), 1u << 20);
    EXPECT_EQ(launched.value()->waitForExit(), 0);

    process = {"/bin/sh", {"-c", "yes >&2"}, {{"PATH", "/usr/bin:/bin"}}, "/", standardError};
    launched = limited.launch(process);
    ASSERT_TRUE(launched.ok()) << launched.error().description;
    EXPECT_EQ(launched.value()->readToEnd().error().description,
              "The command printed more than 1 MB.");
    EXPECT_EQ(launched.value()->waitForExit(), 128 + SIGPIPE);
  }
}

TEST_F(PosixProcessesTest, ExitStatusesArriveEvenIfTheParentIgnoredSIGCHLD) {
  const auto before = std::signal(SIGCHLD, SIG_IGN);
  PosixProcesses processes(PosixProcesses::Terminal::detach);
  auto launched = processes.launch(testProgram({"print", "", "7"}));
  ASSERT_TRUE(launched.ok()) << launched.error().description;
  EXPECT_EQ(launched.value()->waitForExit(), 7);
  std::signal(SIGCHLD, before);
}

TEST_F(PosixProcessesTest, NeitherEndedNorFailedLaunchesLeaveZombiesOrDescriptors) {
  const auto countDescriptors = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  };
  const auto before = countDescriptors();
  for (int i = 0; i < 20; ++i) {
    for (const StandardError standardError : {StandardError::merged, StandardError::separate}) {
      Process process = testProgram({"print", "x", "0"});
      process.standardError = standardError;
      EXPECT_EQ(outputOf(process), "x");
      EXPECT_FALSE(processes_.launch({"/no/such/program", {}, {}, "/", standardError}).ok());
      EXPECT_FALSE(processes_.launch({"/bin/sh", {}, {}, "/no/such/folder", standardError}).ok());
    }
  }
  EXPECT_TRUE(hasNoChildren());
  EXPECT_EQ(countDescriptors(), before);
}

TEST_F(PosixProcessesTest, LaunchErrorsTellTheCausesApart) {
  const std::string notExecutable = makeFile("plain", "#!/bin/sh\n", 0644);
  const std::string noInterpreterLine = makeFile("bare", "echo hi\n", 0755);
  const std::string lostInterpreter = makeFile("lost", "#!/no/such/interpreter\n", 0755);
  const auto errorOf = [&](const std::string& program, const std::string& workingDirectory) {
    const auto launched = processes_.launch({program, {}, {}, workingDirectory});
    return launched ? "launched" : launched.error().description;
  };
  EXPECT_EQ(errorOf(notExecutable, "/"),
            "The program “" + notExecutable + "” could not be launched: it is not executable.");
  EXPECT_THAT(errorOf(noInterpreterLine, "/"),
              HasSubstr("it is not a program, and it has no first line that names an interpreter"));
  EXPECT_THAT(errorOf(lostInterpreter, "/"),
              EndsWith("the interpreter that its first line names does not exist."));
  EXPECT_THAT(errorOf(folder_.path(), "/"), EndsWith("it is a folder."));
  EXPECT_THAT(errorOf("/bin/sh", notExecutable),
              EndsWith("its working directory “" + notExecutable + "” is not a folder."));
  EXPECT_THAT(errorOf("", "/"), EndsWith("it does not exist."));
}

TEST_F(PosixProcessesTest, TooLongArgumentsAreALaunchError) {
  const auto launched = processes_.launch({"/bin/echo", {std::string(200'000, 'x')}, {}, "/"});
  ASSERT_FALSE(launched.ok());
  EXPECT_THAT(launched.error().description,
              EndsWith("its arguments and environment are too long."));
}

TEST_F(PosixProcessesTest, CommandsBeyondTheDescriptorLimitFailAndLeaveSomeForTheProgram) {
  const std::string outcome =
      "started many, all succeeded, zombies none, spare 24\n"
      "all others: The program “/bin/cat” could not be launched: too many commands are "
      "running.\n";
  EXPECT_EQ(outputOf(testProgram({"exhaustDescriptors", "merged", "200"})), outcome);
  EXPECT_EQ(outputOf(testProgram({"exhaustDescriptors", "separate", "100"})), outcome);
}

#ifndef QUILLMAR_SANITIZED  // A sanitizer's allocator ends the program where others throw.

/// Ends the process: with 0 when an endless output was an error and its command was ended by it.
[[noreturn]] void readEndlessOutputInLittleMemory(PosixProcesses& processes) {
  const auto launched = processes.launch({"/usr/bin/yes", {}, {}, "/"});
  // The limit applies to this process only, not to the child.
  const rlimit limit{rlim_t{1} << 28, rlim_t{1} << 28};
  setrlimit(RLIMIT_AS, &limit);
  if (!launched) _exit(1);
  const auto output = launched.value()->readToEnd();
  const bool isError =
      !output && output.error().description == "The command printed more than fits into memory.";
  _exit(isError && launched.value()->waitForExit() == 128 + SIGPIPE ? 0 : 1);
}

TEST_F(PosixProcessesTest, AnEndlessOutputIsAnErrorOnceMemoryIsFull) {
  EXPECT_EXIT(readEndlessOutputInLittleMemory(processes_), testing::ExitedWithCode(0), "");
}

#endif

}  // namespace
}  // namespace quillmar
