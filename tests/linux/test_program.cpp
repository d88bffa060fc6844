// What the tests of child processes launch; see main() for what it can do.

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/linux/application/process_environment.h"
#include "platform/linux/bus/glib_pointers.h"
#include "platform/linux/bus/session_bus.h"
#include "platform/linux/files/posix_file_system.h"
#include "platform/linux/processes/linux_task_queues.h"
#include "platform/linux/processes/posix_processes.h"
#include "platform/linux/workspace/desktop_workspace.h"
#include "platform/memory/memory_task_queues.h"

namespace quillmar {
namespace {

using Arguments = std::vector<std::string>;

int print(const Arguments& arguments) {
  std::cout << arguments[0];
  return std::stoi(arguments[1]);
}

int showArguments(const Arguments& arguments) {
  for (const std::string& argument : arguments) std::cout << argument << "\n";
  return 0;
}

int showEnvironment(const Arguments&) {
  for (char** entry = environ; *entry; ++entry) std::cout << *entry << "\n";
  return 0;
}

int killSelf(const Arguments& arguments) {
  return raise(std::stoi(arguments[0]));
}

/// Standard output and standard error by turns.
int printInterleaved(const Arguments&) {
  for (const char* text : {"out1 ", "err1 ", "out2 ", "err2 "}) {
    std::ostream& stream = *text == 'o' ? std::cout : std::cerr;
    stream << text << std::flush;
  }
  return 0;
}

int printBoth(const Arguments& arguments) {
  std::cout << arguments[0] << std::flush;
  std::cerr << arguments[1];
  return 0;
}

/// As many bytes as asked for to standard error, then as many to standard output.
int printMuch(const Arguments& arguments) {
  const std::size_t bytes = std::stoul(arguments[0]);
  std::cerr << std::string(bytes, 'e');
  std::cout << std::string(bytes, 'o');
  return 0;
}

/// The numbers of the open descriptors.
int showDescriptors(const Arguments&) {
  for (int number = 0; number < 10000; ++number) {
    if (fcntl(number, F_GETFD) >= 0) std::cout << number << " ";
  }
  return 0;
}

/// Which signals are blocked and ignored, as bit masks.
int showSignals(const Arguments&) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("SigBlk:") || line.starts_with("SigIgn:")) std::cout << line << "\n";
  }
  return 0;
}

int showSession(const Arguments&) {
  std::cout << (getsid(0) == getpid() ? "own" : "inherited");
  return 0;
}

int showWorkingDirectory(const Arguments&) {
  std::cout << std::filesystem::current_path().string();
  return 0;
}

/// Leaves main() while background tasks hang, half of them in the system, half on a lock.
int leaveWithHangingTasks(const Arguments&) {
  // Such tasks may outlive main(), so what they use does too.
  auto& main = *new MemoryTaskQueue;
  auto& lock = *new std::mutex;
  lock.lock();
  LinuxTaskQueues queues(main);
  const std::unique_ptr<ConcurrentQueue> queue =
      queues.makeConcurrentQueue({"org.example.hanging"});
  constexpr int count = 100;
  int started = 0;
  for (int i = 0; i < count; ++i) {
    const auto asked = queue->async([&, i] {
      main.async([&] { ++started; });
      if (i % 2 == 0) lock.lock();
      pause();
    });
    if (!asked) return 1;
  }
  main.runUntil([&] { return started == count; });
  std::cout << "leaving";
  return 0;
}

/// Launches far more commands than there are descriptors for, with those few that it is allowed.
/// The arguments: where their standard error goes, and how many at least are to run.
int exhaustDescriptors(const Arguments& arguments) {
  const StandardError standardError =
      arguments[0] == "separate" ? StandardError::separate : StandardError::merged;
  const std::size_t many = std::stoul(arguments[1]);
  const rlimit limit{256, 256};
  setrlimit(RLIMIT_NOFILE, &limit);
  // The children read their standard input, which ends when this program says so.
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) < 0 || dup2(ends[0], STDIN_FILENO) < 0) return 1;
  PosixProcesses processes(PosixProcesses::Terminal::inherit);
  std::vector<std::unique_ptr<RunningProcess>> running;
  std::map<std::string, int> errors;
  for (int i = 0; i < 1000; ++i) {
    auto launched = processes.launch({"/bin/cat", {}, {}, "/", standardError});
    if (launched) {
      running.push_back(std::move(launched).value());
    } else {
      ++errors[launched.error().description];
    }
  }
  int spare = 0;
  while (spare < 24 && (spare % 2 == 0 ? open("/dev/null", O_RDONLY | O_CLOEXEC)
                                       : socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) >= 0) {
    ++spare;
  }
  close(ends[1]);
  int succeeded = 0;
  for (const auto& child : running) {
    if (!child->readToEnd()) return 1;
    if (child->waitForExit() == 0) ++succeeded;
  }
  const bool reaped = waitpid(-1, nullptr, WNOHANG) < 0 && errno == ECHILD;
  std::cout << "started " << (running.size() > many ? "many" : "few") << ", all "
            << (succeeded == static_cast<int>(running.size()) ? "succeeded" : "did not succeed")
            << ", zombies " << (reaped ? "none" : "some") << ", spare " << spare << "\n";
  for (const auto& [text, count] : errors) {
    const bool isRest = count + static_cast<int>(running.size()) == 1000;
    std::cout << (isRest ? "all others: " : "some: ") << text << "\n";
  }
  return 0;
}

/// Runs an asynchronous function of the workspace in a main loop. Prints `success` or the error.
template <class Request>
int runInWorkspace(const char* success, Request request) {
  const Environment environment = snapshotProcessEnvironment();
  const PosixFileSystem files;
  PosixProcesses processes(PosixProcesses::Terminal::detach);
  const auto bus = connectToSessionBus(environment);
  const GMainLoopPtr loop(g_main_loop_new(nullptr, false));
  DesktopWorkspace workspace(environment, files, processes, bus ? bus.value().get() : nullptr);
  request(workspace, [&](const Result<void>& done) {
    std::cout << (done ? success : done.error().description);
    g_main_loop_quit(loop.get());
  });
  g_main_loop_run(loop.get());
  return 0;
}

int openURL(const Arguments& arguments) {
  return runInWorkspace("opened", [&](Workspace& workspace, auto completion) {
    workspace.openURL(arguments[0], completion);
  });
}

int revealFile(const Arguments& arguments) {
  return runInWorkspace("revealed", [&](Workspace& workspace, auto completion) {
    workspace.revealFile(arguments[0], completion);
  });
}

int run(const std::string& task, const Arguments& arguments) {
  const std::map<std::string, int (*)(const Arguments&)> tasks = {
      {"print", print},
      {"showArguments", showArguments},
      {"showEnvironment", showEnvironment},
      {"killSelf", killSelf},
      {"printInterleaved", printInterleaved},
      {"printBoth", printBoth},
      {"printMuch", printMuch},
      {"showDescriptors", showDescriptors},
      {"showSignals", showSignals},
      {"showSession", showSession},
      {"showWorkingDirectory", showWorkingDirectory},
      {"leaveWithHangingTasks", leaveWithHangingTasks},
      {"exhaustDescriptors", exhaustDescriptors},
      {"openURL", openURL},
      {"revealFile", revealFile},
  };
  const auto found = tasks.find(task);
  return found == tasks.end() ? 99 : found->second(arguments);
}

}  // namespace
}  // namespace quillmar

int main(int count, char** arguments) {
  if (count < 2) return 99;
  return quillmar::run(arguments[1], {arguments + 2, arguments + count});
}
