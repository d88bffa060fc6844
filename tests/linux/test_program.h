// The program that tests launch to see what a child process sees and does; its first argument says
// what it is to do (test_program.cpp).

#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/processes.h"

namespace quillmar {

inline Process testProgram(std::vector<std::string> arguments) {
  return {QUILLMAR_TEST_PROGRAM, std::move(arguments), {}, "/"};
}

}  // namespace quillmar
