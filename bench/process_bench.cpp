// The cost of child processes and background threads, compared with plain system calls.

#include <array>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/processes/linux_task_queues.h"
#include "platform/linux/processes/posix_processes.h"
#include "platform/memory/memory_task_queues.h"

namespace quillmar {
namespace {

constexpr int commandCount = 1000;

/// An environment of typical size.
const std::map<std::string, std::string>& environment() {
  static const auto* const variables = [] {
    auto* made = new std::map<std::string, std::string>;
    for (int i = 0; i < 50; ++i) {
      (*made)["VARIABLE_" + std::to_string(i)] = "a value of the usual size";
    }
    return made;
  }();
  return *variables;
}

Process trueProgram() {
  return {"/bin/true", {}, environment(), "/"};
}

struct BareChild {
  pid_t id = 0;
  int output = -1;
};

/// The minimum that a program needs to read a child's output.
BareChild spawnBare() {
  static char** const variables = [] {
    auto* texts = new std::vector<std::string>;
    for (const auto& [name, value] : environment()) {
      texts->emplace_back(name).append("=").append(value);
    }
    auto* addresses = new std::vector<char*>;
    for (std::string& text : *texts) addresses->push_back(text.data());
    addresses->push_back(nullptr);
    return addresses->data();
  }();
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) < 0) std::abort();
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
  std::string name = "/bin/true";
  std::array<char*, 2> arguments = {name.data(), nullptr};
  BareChild child{0, ends[0]};
  if (posix_spawn(&child.id, "/bin/true", &actions, nullptr, arguments.data(), variables) != 0) {
    std::abort();
  }
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  return child;
}

/// Reads once. At the end of the output, reaps the child and returns false.
bool readBare(BareChild& child) {
  std::array<char, 65536> buffer;
  if (read(child.output, buffer.data(), buffer.size()) > 0) return true;
  close(child.output);
  waitpid(child.id, nullptr, 0);
  return false;
}

void bareCommand(benchmark::State& state) {
  for ([[maybe_unused]] auto _ : state) {
    BareChild child = spawnBare();
    while (readBare(child)) {
    }
  }
}
BENCHMARK(bareCommand)->UseRealTime();

void command(benchmark::State& state) {
  PosixProcesses processes(PosixProcesses::Terminal::detach);
  for ([[maybe_unused]] auto _ : state) {
    auto launched = processes.launch(trueProgram());
    if (!launched) std::abort();
    benchmark::DoNotOptimize(launched.value()->readToEnd());
    benchmark::DoNotOptimize(launched.value()->waitForExit());
  }
}
BENCHMARK(command)->UseRealTime();

void bareThousandCommands(benchmark::State& state) {
  for ([[maybe_unused]] auto _ : state) {
    std::vector<BareChild> children;
    std::vector<pollfd> waiting;
    for (int i = 0; i < commandCount; ++i) {
      children.push_back(spawnBare());
      waiting.push_back({children.back().output, POLLIN, 0});
    }
    for (int left = commandCount; left > 0;) {
      poll(waiting.data(), waiting.size(), -1);
      for (std::size_t i = 0; i < waiting.size(); ++i) {
        if (waiting[i].revents == 0 || readBare(children[i])) continue;
        waiting[i].fd = -1;
        --left;
      }
    }
  }
}
BENCHMARK(bareThousandCommands)->UseRealTime()->Unit(benchmark::kMillisecond);

void thousandBackgroundCommands(benchmark::State& state) {
  PosixProcesses processes(PosixProcesses::Terminal::detach);
  // Never destroyed: threads may still be ending when the benchmark is over.
  auto& main = *new MemoryTaskQueue;
  LinuxTaskQueues queues(main);
  const std::unique_ptr<ConcurrentQueue> queue = queues.makeConcurrentQueue({"bench"});
  for ([[maybe_unused]] auto _ : state) {
    int done = 0;
    for (int i = 0; i < commandCount; ++i) {
      const auto started = queue->async([&] {
        auto launched = processes.launch(trueProgram());
        if (!launched) std::abort();
        benchmark::DoNotOptimize(launched.value()->readToEnd());
        launched.value()->waitForExit();
        main.async([&] { ++done; });
      });
      if (!started) std::abort();
    }
    main.runUntil([&] { return done == commandCount; });
  }
}
BENCHMARK(thousandBackgroundCommands)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillmar

BENCHMARK_MAIN();
