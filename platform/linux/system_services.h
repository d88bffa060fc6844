// The services that need neither a session bus nor a display. The resident program and its
// command-line tools use the same ones.

#pragma once

#include <map>
#include <string>

#include "platform/environment.h"
#include "platform/linux/files/bundle_directory.h"
#include "platform/linux/files/password_database.h"
#include "platform/linux/files/posix_file_system.h"
#include "platform/linux/files/xdg_directories.h"
#include "platform/linux/processes/posix_processes.h"
#include "platform/linux/processes/shell_apple_script_engine.h"

namespace quillmar {

struct SystemServices {
  /// Returns the environment for a command that a script starts. Any thread.
  using CommandEnvironment = std::map<std::string, std::string>(const Environment& environment,
                                                                const std::string& homeDirectory,
                                                                const FileSystem& files);

  /// `processEnvironment` must outlive the services.
  SystemServices(const Environment& processEnvironment, PosixProcesses::Terminal terminal,
                 CommandEnvironment* commandEnvironment)
      : environment(processEnvironment),
        userDirectories(environment, userDatabase),
        bundle(BundleDirectory::ofThisProgram()),
        processes(terminal),
        appleScript(processes, [this, commandEnvironment] {
          return commandEnvironment(environment, userDirectories.homeDirectory(), files);
        }) {}

  SystemServices(const SystemServices&) = delete;
  SystemServices& operator=(const SystemServices&) = delete;

  const Environment& environment;
  PasswordDatabase userDatabase;
  XdgDirectories userDirectories;
  PosixFileSystem files;
  BundleDirectory bundle;
  PosixProcesses processes;
  ShellAppleScriptEngine appleScript;
};

}  // namespace quillmar
