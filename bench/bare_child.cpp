#include "bench/bare_child.h"

#include <array>
#include <cstdlib>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quillmar {

BareChild spawnBare(std::string program, char** environment) {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) < 0) std::abort();
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
  std::array<char*, 2> arguments = {program.data(), nullptr};
  BareChild child{0, ends[0]};
  if (posix_spawn(&child.id, program.c_str(), &actions, nullptr, arguments.data(), environment) !=
      0) {
    std::abort();
  }
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  return child;
}

bool readBare(BareChild& child) {
  std::array<char, 65536> buffer;
  if (read(child.output, buffer.data(), buffer.size()) > 0) return true;
  close(child.output);
  waitpid(child.id, nullptr, 0);
  return false;
}

}  // namespace quillmar
