#include "platform/memory/memory_processes.h"

namespace quillmar {

namespace {

class MemoryRunningProcess final : public RunningProcess {
 public:
  MemoryRunningProcess(ScriptedRun run, std::shared_ptr<std::atomic<std::size_t>> unreaped)
      : run_(std::move(run)), unreaped_(std::move(unreaped)) {
    ++*unreaped_;
  }

  std::string readToEnd() override { return std::exchange(run_.output, {}); }

  int waitForExit() override {
    --*unreaped_;
    return run_.exitStatus;
  }

 private:
  ScriptedRun run_;
  std::shared_ptr<std::atomic<std::size_t>> unreaped_;
};

}  // namespace

MemoryProcesses::MemoryProcesses(Handler handler) : handler_(std::move(handler)) {}

Result<std::unique_ptr<RunningProcess>> MemoryProcesses::launch(const Process& process) {
  {
    const std::lock_guard lock(mutex_);
    launched_.push_back(process);
  }
  if (std::optional<Error> error = unusableTextIn(process)) return *std::move(error);
  ScriptedRun run = handler_ ? handler_(process) : ScriptedRun{};
  if (run.launchError) return *std::move(run.launchError);
  return std::unique_ptr<RunningProcess>(
      std::make_unique<MemoryRunningProcess>(std::move(run), unreaped_));
}

std::vector<Process> MemoryProcesses::launched() const {
  const std::lock_guard lock(mutex_);
  return launched_;
}

}  // namespace quillmar
