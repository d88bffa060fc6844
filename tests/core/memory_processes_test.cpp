#include "platform/memory/memory_processes.h"

#include <gtest/gtest.h>

#include "platform/error_text.h"
#include "tests/conformance/processes_conformance.h"

namespace quillmar {
namespace {

class MemoryProcessesFixture {
 public:
  MemoryProcesses& processes() { return processes_; }

  Process printing(const std::string& output, int exitStatus) {
    return {"/bin/print", {output, std::to_string(exitStatus)}, {}, "/"};
  }
  Process printingBoth(const std::string& output, const std::string& errors) {
    return {"/bin/printBoth", {output, errors}, {}, "/"};
  }
  Process printingMuch(std::size_t bytes) {
    return printingBoth(std::string(bytes, 'o'), std::string(bytes, 'e'));
  }
  Process killedBySignal(int number) { return printing("", 128 + number); }
  Process showingArguments() { return {"/bin/arguments", {}, {}, "/"}; }
  Process showingEnvironment() { return {"/bin/environment", {}, {}, "/"}; }
  Process missing() { return {"/bin/missing", {}, {}, "/"}; }
  Process inMissingFolder(const std::string& path) { return {"/bin/print", {"", "0"}, {}, path}; }

 private:
  static ScriptedRun behave(const Process& process) {
    if (process.executable == "/bin/missing") {
      return {"", 0, launchError(process.executable, "it does not exist")};
    }
    if (process.workingDirectory != "/") {
      return {"", 0,
              launchError(process.executable, "its working directory " +
                                                  quotedPath(process.workingDirectory) +
                                                  " does not exist")};
    }
    ScriptedRun run;
    if (process.executable == "/bin/print") {
      run = {process.arguments[0], std::stoi(process.arguments[1])};
    } else if (process.executable == "/bin/printBoth") {
      run = {.standardOutput = process.arguments[0], .standardError = process.arguments[1]};
    } else if (process.executable == "/bin/arguments") {
      for (const std::string& argument : process.arguments) run.standardOutput += argument + "\n";
    } else {
      for (const auto& [name, value] : process.environment) {
        run.standardOutput.append(name).append("=").append(value).append("\n");
      }
    }
    return run;
  }

  MemoryProcesses processes_{behave};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, ProcessesConformance, MemoryProcessesFixture);

TEST(MemoryProcesses, RecordsEveryTriedLaunchInOrder) {
  MemoryProcesses processes([](const Process& process) -> ScriptedRun {
    if (process.executable == "bad") return {"", 0, Error{"It would not."}};
    return {};
  });
  const Process good{"good", {"a"}, {{"NAME", "value"}}, "/home"};
  const Process bad{"bad", {}, {}, ""};
  EXPECT_TRUE(processes.launch(good).ok());
  EXPECT_EQ(processes.launch(bad).error().description, "It would not.");
  EXPECT_EQ(processes.launched(), (std::vector<Process>{good, bad}));
}

TEST(MemoryProcesses, CountsThoseThatNobodyHasWaitedFor) {
  MemoryProcesses processes;
  auto first = processes.launch({"a", {}, {}, ""});
  auto second = processes.launch({"b", {}, {}, ""});
  EXPECT_EQ(processes.unreapedCount(), 2u);
  EXPECT_EQ(first.value()->waitForExit(), 0);
  EXPECT_EQ(processes.unreapedCount(), 1u);
  EXPECT_EQ(second.value()->waitForExit(), 0);
  EXPECT_EQ(processes.unreapedCount(), 0u);
}

}  // namespace
}  // namespace quillmar
