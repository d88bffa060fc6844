#include "platform/memory/memory_processes.h"

namespace quillmar {

namespace {

class MemoryRunningProcess final : public RunningProcess {
 public:
  MemoryRunningProcess(ProcessOutput output, std::optional<Error> readError, int exitStatus,
                       std::shared_ptr<std::atomic<std::size_t>> unreaped)
      : output_(std::move(output)),
        readError_(std::move(readError)),
        exitStatus_(exitStatus),
        unreaped_(std::move(unreaped)) {
    ++*unreaped_;
  }

  Result<ProcessOutput> readToEnd() override {
    if (readError_) return *readError_;
    return std::exchange(output_, {});
  }

  int waitForExit() override {
    --*unreaped_;
    return exitStatus_;
  }

 private:
  ProcessOutput output_;
  std::optional<Error> readError_;
  int exitStatus_;
  std::shared_ptr<std::atomic<std::size_t>> unreaped_;
};

}  // namespace

MemoryProcesses::MemoryProcesses(Handler handler) : handler_(std::move(handler)) {}

Result<std::unique_ptr<RunningProcess>> MemoryProcesses::launch(const Process& process) {
  {
    const std::lock_guard lock(mutex_);
    launched_.push_back(process);
  }
  if (std::optional<Error> error = nullCharacterError(process)) return *std::move(error);
  ScriptedRun run = handler_ ? handler_(process) : ScriptedRun{};
  if (run.launchError) return *std::move(run.launchError);
  ProcessOutput output{std::move(run.standardOutput), std::move(run.standardError)};
  if (process.standardError == StandardError::merged) {
    output.standardOutput += std::exchange(output.standardError, {});
  }
  return std::unique_ptr<RunningProcess>(std::make_unique<MemoryRunningProcess>(
      std::move(output), std::move(run.readError), run.exitStatus, unreaped_));
}

Result<void> MemoryProcesses::launchDetached(const Process& process) {
  {
    const std::lock_guard lock(mutex_);
    launchedDetached_.push_back(process);
  }
  if (std::optional<Error> error = nullCharacterError(process)) return *std::move(error);
  ScriptedRun run = handler_ ? handler_(process) : ScriptedRun{};
  if (run.launchError) return *std::move(run.launchError);
  return {};
}

std::vector<Process> MemoryProcesses::launchedDetached() const {
  const std::lock_guard lock(mutex_);
  return launchedDetached_;
}

std::vector<Process> MemoryProcesses::launched() const {
  const std::lock_guard lock(mutex_);
  return launched_;
}

}  // namespace quillmar
