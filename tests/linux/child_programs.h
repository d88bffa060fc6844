// Other programs that a test needs: servers that live as long as the test, and commands that run
// while the main loop does.

#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gio/gio.h>

#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {

/// A server that writes a line to descriptor 3 when it is ready. It is killed with this object.
class ServerProgram {
 public:
  /// Starts it and waits for the line; a failure ends the test program.
  explicit ServerProgram(const std::vector<std::string>& command,
                         const std::vector<std::string>& environment = {});
  ~ServerProgram();
  ServerProgram(const ServerProgram&) = delete;
  ServerProgram& operator=(const ServerProgram&) = delete;

  /// What it wrote, without the line feed.
  const std::string& readyLine() const { return readyLine_; }

  /// Kills it and waits for its end.
  void kill();

  /// Sends it the signal; after SIGSTOP it has stopped.
  void signal(int number);

  /// Sends it the signal, none when 0, and waits for its end. Returns its exit status, or nothing
  /// when a signal ended it.
  std::optional<int> end(int signal);

 private:
  GObjectPtr<GSubprocess> process_;
  std::string readyLine_;
};

/// An X server of the test's own; a test has one at a time.
class XServer {
 public:
  XServer();
  /// One that takes the place of an earlier one.
  explicit XServer(const std::string& display);
  ~XServer();
  XServer(const XServer&) = delete;
  XServer& operator=(const XServer&) = delete;

  /// As the variable DISPLAY names it.
  const std::string& display() const { return display_; }
  /// It takes its lock file and its socket along.
  void end();
  void signal(int number) { server_.signal(number); }

 private:
  ServerProgram server_;
  std::string display_;
};

/// A Wayland compositor of the test's own, without a screen.
class WaylandServer {
 public:
  WaylandServer();
  ~WaylandServer();
  WaylandServer(const WaylandServer&) = delete;
  WaylandServer& operator=(const WaylandServer&) = delete;

  const std::string& runtimeFolder() const { return folder_; }
  /// As the variable WAYLAND_DISPLAY names it.
  const std::string& display() const { return server_->readyLine(); }

 private:
  std::string folder_;
  std::unique_ptr<ServerProgram> server_;
};

/// What a command wrote to its standard output; nothing when it failed.
using CommandOutput = std::optional<std::string>;

/// Runs the command to its end, and the main loop meanwhile. `environment` holds assignments that
/// are added to this process's; `input` is its standard input.
CommandOutput runCommand(const std::vector<std::string>& command,
                         const std::vector<std::string>& environment = {},
                         const std::string& input = {});

/// The same for a command that leaves a process behind: its output is not read.
bool runDetachingCommand(const std::vector<std::string>& command,
                         const std::vector<std::string>& environment, const std::string& input);

}  // namespace quillmar
