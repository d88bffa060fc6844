// The minimum that a program needs to start a child and read its output, to compare with.

#pragma once

#include <string>

#include <sys/types.h>

namespace quillmar {

struct BareChild {
  pid_t id = 0;
  /// The end of the pipe that gets the child's output.
  int output = -1;
};

/// Starts the program without arguments. `environment` is an array that ends with null. Aborts if
/// that fails.
BareChild spawnBare(std::string program, char** environment);

/// Reads once. At the end of the output, reaps the child and returns false.
bool readBare(BareChild& child);

}  // namespace quillmar
