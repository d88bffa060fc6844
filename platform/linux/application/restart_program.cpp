#include "platform/linux/application/restart_program.h"

#include <csignal>
#include <string>
#include <vector>

#include <unistd.h>

#include "platform/linux/application/termination_signals.h"

namespace quillmar {

void restartProgram(const Environment& environment) {
  if (TerminationSignals::isShuttingDown()) return;
  std::vector<std::string> entries;
  for (const auto& [name, value] : environment.variables) {
    entries.emplace_back(name).append("=").append(value);
  }
  std::vector<char*> variables;
  variables.reserve(entries.size() + 1);
  for (std::string& entry : entries) variables.push_back(entry.data());
  variables.push_back(nullptr);
  std::string name = "quillmar";
  char* const arguments[] = {name.data(), nullptr};

  // A handler that calls this may run with blocked signals, which the new start would inherit.
  sigset_t none;
  sigemptyset(&none);
  pthread_sigmask(SIG_SETMASK, &none, nullptr);
  execve("/proc/self/exe", arguments, variables.data());
}

}  // namespace quillmar
