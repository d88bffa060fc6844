#include "tests/linux/child_programs.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/linux/main_loop.h"

namespace quillmar {

namespace {

constexpr int readyDescriptor = 3;
constexpr int failureMilliseconds = 60'000;

[[noreturn]] void fail(const std::string& what) {
  std::fprintf(stderr, "%s\n", what.c_str());
  std::abort();
}

GObjectPtr<GSubprocessLauncher> makeLauncher(int flags,
                                             const std::vector<std::string>& environment) {
  GObjectPtr<GSubprocessLauncher> launcher(
      g_subprocess_launcher_new(static_cast<GSubprocessFlags>(flags)));
  for (const auto& assignment : environment) {
    const auto equals = assignment.find('=');
    g_subprocess_launcher_setenv(launcher.get(), assignment.substr(0, equals).c_str(),
                                 assignment.substr(equals + 1).c_str(), true);
  }
  return launcher;
}

GObjectPtr<GSubprocess> spawn(GSubprocessLauncher* launcher,
                              const std::vector<std::string>& command) {
  std::vector<const char*> arguments;
  for (const auto& argument : command) arguments.push_back(argument.c_str());
  arguments.push_back(nullptr);
  GError* error = nullptr;
  GObjectPtr<GSubprocess> process(g_subprocess_launcher_spawnv(launcher, arguments.data(), &error));
  if (!process) fail(error->message);
  return process;
}

std::string readLine(int descriptor) {
  std::string line;
  while (true) {
    pollfd ready{descriptor, POLLIN, 0};
    char next = 0;
    if (poll(&ready, 1, failureMilliseconds) <= 0 || read(descriptor, &next, 1) <= 0) {
      fail("A server that the test needs did not become ready.");
    }
    if (next == '\n') return line;
    line += next;
  }
}

std::vector<std::string> serverCommand(const std::string& display) {
  return {"Xvfb",    display,   "-displayfd", std::to_string(readyDescriptor),
          "-screen", "0",       "640x480x24", "-nolisten",
          "tcp",     "-noreset"};
}

/// A display that stays unreachable once its server has ended. A server that looks for a number
/// itself counts from 0, and would soon take that of one which has just ended.
std::string displayOfThisProcess() {
  return ":" + std::to_string(10'000 + getpid() % 40'000);
}

struct Communication {
  bool over = false;
  GBytes* output = nullptr;
};

CommandOutput communicate(GSubprocess* process, const std::string& input) {
  Communication communication;
  const GBytesPtr bytes(g_bytes_new(input.data(), input.size()));
  g_subprocess_communicate_async(
      process, bytes.get(), nullptr,
      [](GObject* source, GAsyncResult* result, gpointer data) {
        auto* own = static_cast<Communication*>(data);
        g_subprocess_communicate_finish(G_SUBPROCESS(source), result, &own->output, nullptr,
                                        nullptr);
        own->over = true;
      },
      &communication);
  if (!runMainLoopUntil([&] { return communication.over; })) fail("A command did not end.");
  const GBytesPtr output(communication.output);
  if (!g_subprocess_get_successful(process)) return std::nullopt;
  if (!output) return std::string();
  gsize size = 0;
  const auto* data = static_cast<const char*>(g_bytes_get_data(output.get(), &size));
  return std::string(data, size);
}

}  // namespace

ServerProgram::ServerProgram(const std::vector<std::string>& command,
                             const std::vector<std::string>& environment) {
  int descriptors[2];
  if (pipe(descriptors) != 0) fail("No pipe.");
  const auto launcher = makeLauncher(
      G_SUBPROCESS_FLAGS_STDOUT_SILENCE | G_SUBPROCESS_FLAGS_STDERR_SILENCE, environment);
  g_subprocess_launcher_take_fd(launcher.get(), descriptors[1], readyDescriptor);
  // A test that ends early leaves no server behind.
  g_subprocess_launcher_set_child_setup(
      launcher.get(), [](gpointer) { prctl(PR_SET_PDEATHSIG, SIGKILL); }, nullptr, nullptr);
  process_ = spawn(launcher.get(), command);
  g_subprocess_launcher_close(launcher.get());
  readyLine_ = readLine(descriptors[0]);
  close(descriptors[0]);
}

ServerProgram::~ServerProgram() {
  kill();
}

void ServerProgram::kill() {
  g_subprocess_force_exit(process_.get());
  g_subprocess_wait(process_.get(), nullptr, nullptr);
}

void ServerProgram::signal(int number) {
  g_subprocess_send_signal(process_.get(), number);
  if (number != SIGSTOP) return;
  const char* id = g_subprocess_get_identifier(process_.get());
  siginfo_t stopped{};
  if (!id || waitid(P_PID, std::stoul(id), &stopped, WSTOPPED | WNOWAIT) != 0) fail("Not stopped.");
}

std::optional<int> ServerProgram::end(int signal) {
  if (signal != 0) this->signal(signal);
  g_subprocess_wait(process_.get(), nullptr, nullptr);
  if (!g_subprocess_get_if_exited(process_.get())) return std::nullopt;
  return g_subprocess_get_exit_status(process_.get());
}

XServer::XServer() : XServer(displayOfThisProcess()) {}

XServer::XServer(const std::string& display)
    : server_(serverCommand(display)), display_(":" + server_.readyLine()) {}

XServer::~XServer() {
  end();
}

void XServer::end() {
  // Where it is stopped it ends before it answers anybody.
  server_.signal(SIGTERM);
  server_.end(SIGCONT);
}

WaylandServer::WaylandServer() {
  const GStringPtr folder(g_dir_make_tmp("quillmar-wayland-XXXXXX", nullptr));
  folder_ = folder.get();
  const std::string configuration = folder_ + "/config";
  std::ofstream(configuration) << "xwayland disable\nexec sh -c 'echo $WAYLAND_DISPLAY >&3'\n";
  std::vector<std::string> command{"sway", "--config", configuration};
  // It refuses to run as root.
  constexpr uid_t nobody = 65534;
  if (geteuid() == 0) {
    const std::string id = std::to_string(nobody);
    command.insert(command.begin(), {"setpriv", "--reuid=" + id, "--regid=" + id, "--clear-groups",
                                     "--pdeathsig=KILL"});
    if (chown(folder_.c_str(), nobody, nobody) != 0) fail("No folder for the compositor.");
  }
  server_ = std::make_unique<ServerProgram>(
      command, std::vector<std::string>{"XDG_RUNTIME_DIR=" + folder_, "WLR_BACKENDS=headless",
                                        "WLR_RENDERER=pixman", "WLR_LIBINPUT_NO_DEVICES=1"});
}

WaylandServer::~WaylandServer() {
  server_.reset();
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

CommandOutput runCommand(const std::vector<std::string>& command,
                         const std::vector<std::string>& environment, const std::string& input) {
  const auto launcher =
      makeLauncher(G_SUBPROCESS_FLAGS_STDIN_PIPE | G_SUBPROCESS_FLAGS_STDOUT_PIPE |
                       G_SUBPROCESS_FLAGS_STDERR_SILENCE,
                   environment);
  return communicate(spawn(launcher.get(), command).get(), input);
}

bool runDetachingCommand(const std::vector<std::string>& command,
                         const std::vector<std::string>& environment, const std::string& input) {
  const auto launcher =
      makeLauncher(G_SUBPROCESS_FLAGS_STDIN_PIPE | G_SUBPROCESS_FLAGS_STDOUT_SILENCE |
                       G_SUBPROCESS_FLAGS_STDERR_SILENCE,
                   environment);
  return communicate(spawn(launcher.get(), command).get(), input).has_value();
}

}  // namespace quillmar
