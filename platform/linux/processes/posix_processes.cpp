#include "platform/linux/processes/posix_processes.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstring>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/detached_thread.h"
#include "platform/error_text.h"
#include "platform/file_descriptor.h"
#include "platform/linux/files/system_error.h"

namespace quillmar {

namespace {

constexpr rlim_t reservedDescriptors = 32;
constexpr int statusOfUnknownEnd = 255;

class PosixRunningProcess final : public RunningProcess {
 public:
  /// `standardError` holds no descriptor when it is merged into the standard output.
  PosixRunningProcess(pid_t id, FileDescriptor standardOutput, FileDescriptor standardError,
                      std::size_t outputLimit)
      : id_(id),
        standardOutput_(std::move(standardOutput)),
        standardError_(std::move(standardError)),
        outputLimit_(outputLimit) {}

  Result<ProcessOutput> readToEnd() override {
    try {
      if (auto output = readPipes()) return *std::move(output);
    } catch (const std::bad_alloc&) {
      closePipes();
      return Error{"The command printed more than fits into memory."};
    }
    closePipes();
    return Error{"The command printed more than " + std::to_string(outputLimit_ >> 20) + " MB."};
  }

  int waitForExit() override {
    int status = 0;
    while (waitpid(id_, &status, 0) < 0) {
      if (errno != EINTR) return statusOfUnknownEnd;
    }
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
  }

 private:
  /// Absent when the output exceeds the limit.
  std::optional<ProcessOutput> readPipes() {
    ProcessOutput output;
    while (standardOutput_ || standardError_) {
      // poll() ignores the negative number of a closed pipe.
      pollfd pipes[] = {{standardOutput_.number(), POLLIN, 0},
                        {standardError_.number(), POLLIN, 0}};
      if (poll(pipes, 2, -1) < 0) continue;
      if (pipes[0].revents != 0) readSome(standardOutput_, output.standardOutput);
      if (pipes[1].revents != 0) readSome(standardError_, output.standardError);
      if (output.standardOutput.size() + output.standardError.size() > outputLimit_) {
        return std::nullopt;
      }
    }
    return output;
  }

  /// Further writes by the child fail, as on any closed pipe.
  void closePipes() {
    standardOutput_.close();
    standardError_.close();
  }

  /// Appends what the pipe holds, blocking while it is empty. Closes the pipe at its end.
  static void readSome(FileDescriptor& pipe, std::string& bytes) {
    // The capacity of a pipe, so that one call empties it.
    std::array<char, 65536> buffer;
    const ssize_t count = ::read(pipe.number(), buffer.data(), buffer.size());
    if (count > 0) {
      bytes.append(buffer.data(), static_cast<std::size_t>(count));
    } else if (count == 0 || errno != EINTR) {
      pipe.close();
    }
  }

  pid_t id_;
  FileDescriptor standardOutput_;
  FileDescriptor standardError_;
  std::size_t outputLimit_;
};

/// What the child does before it executes its program.
class ChildSteps {
 public:
  /// Writes to the two descriptors.
  ChildSteps(PosixProcesses::Terminal terminal, int standardOutput, int standardError,
             const std::string& workingDirectory)
      : ChildSteps() {
    if (terminal == PosixProcesses::Terminal::detach) readNothing();
    posix_spawn_file_actions_adddup2(&actions_, standardOutput, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions_, standardError, STDERR_FILENO);
    finish(workingDirectory);
  }

  /// Reads and writes nothing.
  explicit ChildSteps(const std::string& workingDirectory) : ChildSteps() {
    readNothing();
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO}) {
      posix_spawn_file_actions_addopen(&actions_, stream, "/dev/null", O_WRONLY, 0);
    }
    finish(workingDirectory);
  }

  ~ChildSteps() { posix_spawn_file_actions_destroy(&actions_); }
  ChildSteps(const ChildSteps&) = delete;
  ChildSteps& operator=(const ChildSteps&) = delete;

  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  ChildSteps() { posix_spawn_file_actions_init(&actions_); }

  void readNothing() {
    posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  }

  void finish(const std::string& workingDirectory) {
    posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
    if (!workingDirectory.empty()) {
      posix_spawn_file_actions_addchdir_np(&actions_, workingDirectory.c_str());
    }
  }

  posix_spawn_file_actions_t actions_;
};

/// Pointers to the strings, terminated by a nullptr. Valid while the strings are unchanged.
std::vector<char*> addressesOf(const std::vector<std::string>& texts) {
  std::vector<char*> addresses;
  addresses.reserve(texts.size() + 1);
  for (const std::string& text : texts) addresses.push_back(const_cast<char*>(text.c_str()));
  addresses.push_back(nullptr);
  return addresses;
}

std::vector<std::string> argumentVector(const Process& process) {
  std::vector<std::string> texts;
  texts.reserve(process.arguments.size() + 1);
  texts.push_back(process.executable);
  texts.insert(texts.end(), process.arguments.begin(), process.arguments.end());
  return texts;
}

std::vector<std::string> environmentVector(const Process& process) {
  std::vector<std::string> texts;
  texts.reserve(process.environment.size());
  for (const auto& [name, value] : process.environment) {
    texts.emplace_back(name).append("=").append(value);
  }
  return texts;
}

/// The program's path, independent of the working directory, which the child changes.
std::string absolutePath(const std::string& path) {
  if (path.empty() || path.starts_with('/')) return path;
  std::array<char, PATH_MAX> folder;
  return getcwd(folder.data(), folder.size()) ? std::string(folder.data()) + "/" + path : path;
}

struct Pipe {
  FileDescriptor readEnd;
  FileDescriptor writeEnd;
};

/// A pipe that does not use the reserved descriptors, or the reason why it could not be created.
/// The system allocates the lowest free number, so a high number means that all lower ones are in
/// use.
Result<Pipe, std::string> makePipe() {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) < 0) {
    if (errno == EMFILE || errno == ENFILE) return std::string("too many commands are running");
    return systemErrorText(errno);
  }
  Pipe pipe{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  const auto highest = static_cast<rlim_t>(std::max(ends[0], ends[1]));
  if (limit.rlim_cur != RLIM_INFINITY && highest + reservedDescriptors >= limit.rlim_cur) {
    return std::string("too many commands are running");
  }
  return pipe;
}

/// Why the folder cannot be a working directory; absent when it can.
std::optional<std::string> obstacleInWorkingDirectory(const std::string& path) {
  if (path.empty()) return std::nullopt;
  const std::string folder = "its working directory " + quotedPath(path);
  struct stat status {};
  if (stat(path.c_str(), &status) < 0) {
    if (errno == ENOENT) return folder + " does not exist";
    return folder + " cannot be entered (" + systemErrorText(errno) + ")";
  }
  if (!S_ISDIR(status.st_mode)) return folder + " is not a folder";
  if (access(path.c_str(), X_OK) < 0) {
    return folder + " cannot be entered (" + systemErrorText(errno) + ")";
  }
  return std::nullopt;
}

/// Why the program did not start. The system reports a missing program and a missing working
/// directory with the same error number, so both are examined here.
std::string launchObstacle(int error, const std::string& program,
                           const std::string& workingDirectory) {
  switch (error) {
    case EAGAIN:
    case ENOMEM:
      return "the system cannot create another process";
    case E2BIG:
      return "its arguments and environment are too long";
    case ENOEXEC:
      return "it is not a program, and it has no first line that names an interpreter, such as "
             "“#!/bin/sh”";
    default:
      break;
  }
  if (auto obstacle = obstacleInWorkingDirectory(workingDirectory)) return *std::move(obstacle);
  struct stat status {};
  const bool found = stat(program.c_str(), &status) == 0;
  if (error == ENOENT && found) return "the interpreter that its first line names does not exist";
  if (error == ENOENT) return "it does not exist";
  if (error == EACCES && found && S_ISDIR(status.st_mode)) return "it is a folder";
  if (error == EACCES && found) return "it is not executable";
  return systemErrorText(error);
}

/// Starts the child; its id, or the launch error.
Result<pid_t> spawn(const Process& process, const ChildSteps& steps,
                    const posix_spawnattr_t& attributes) {
  const std::string program = absolutePath(process.executable);
  const std::vector<std::string> arguments = argumentVector(process);
  const std::vector<std::string> environment = environmentVector(process);
  pid_t id = 0;
  const int error = posix_spawn(&id, program.c_str(), steps.get(), &attributes,
                                addressesOf(arguments).data(), addressesOf(environment).data());
  if (error == 0) return id;
  return launchError(process.executable, launchObstacle(error, program, process.workingDirectory));
}

/// Attributes of a child with the default signal handlers and mask.
void initialize(posix_spawnattr_t& attributes, PosixProcesses::Terminal terminal) {
  // sigfillset() omits the two signals that the C library reserves for itself; posix_spawn() would
  // then leave these ignored in the child.
  sigset_t all;
  std::memset(&all, 0xFF, sizeof all);
  sigset_t none;
  sigemptyset(&none);
  short flags = POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK;
  if (terminal == PosixProcesses::Terminal::detach) flags |= POSIX_SPAWN_SETSID;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setsigdefault(&attributes, &all);
  posix_spawnattr_setsigmask(&attributes, &none);
  posix_spawnattr_setflags(&attributes, flags);
}

}  // namespace

PosixProcesses::PosixProcesses(Terminal terminal, std::size_t outputLimit)
    : terminal_(terminal), outputLimit_(outputLimit) {
  struct sigaction current {};
  sigaction(SIGCHLD, nullptr, &current);
  if (current.sa_handler == SIG_IGN) std::signal(SIGCHLD, SIG_DFL);
  initialize(attributes_, terminal);
  initialize(detachedAttributes_, Terminal::detach);
}

PosixProcesses::~PosixProcesses() {
  posix_spawnattr_destroy(&attributes_);
  posix_spawnattr_destroy(&detachedAttributes_);
}

Result<std::unique_ptr<RunningProcess>> PosixProcesses::launch(const Process& process) {
  if (std::optional<Error> error = nullCharacterError(process)) return *std::move(error);
  const bool isMerged = process.standardError == StandardError::merged;
  Result<Pipe, std::string> output = makePipe();
  if (!output) return launchError(process.executable, output.error());
  Result<Pipe, std::string> errors = isMerged ? Pipe{} : makePipe();
  if (!errors) return launchError(process.executable, errors.error());

  const int outputEnd = output.value().writeEnd.number();
  const int errorEnd = isMerged ? outputEnd : errors.value().writeEnd.number();
  const Result<pid_t> child = spawn(
      process, ChildSteps(terminal_, outputEnd, errorEnd, process.workingDirectory), attributes_);
  if (!child) return child.error();
  return std::unique_ptr<RunningProcess>(
      std::make_unique<PosixRunningProcess>(child.value(), std::move(output.value().readEnd),
                                            std::move(errors.value().readEnd), outputLimit_));
}

Result<void> PosixProcesses::launchDetached(const Process& process) {
  if (std::optional<Error> error = nullCharacterError(process)) return *std::move(error);
  const Result<pid_t> child =
      spawn(process, ChildSteps(process.workingDirectory), detachedAttributes_);
  if (!child) return child.error();
  // Without a thread the child stays a zombie after its end, until this program ends.
  (void)startDetachedThread(
      [id = child.value()] {
        while (waitpid(id, nullptr, 0) < 0 && errno == EINTR) {
        }
      },
      "detached-child");
  return {};
}

}  // namespace quillmar
