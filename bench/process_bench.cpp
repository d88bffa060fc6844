// The cost of child processes and background threads, compared with plain system calls.

#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <poll.h>

#include "bench/bare_child.h"
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

/// The same as an array.
char** environmentArray() {
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
  return variables;
}

BareChild spawnBareTrue() {
  return spawnBare("/bin/true", environmentArray());
}

void bareCommand(benchmark::State& state) {
  for ([[maybe_unused]] auto _ : state) {
    BareChild child = spawnBareTrue();
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
      children.push_back(spawnBareTrue());
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
