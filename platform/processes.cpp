#include "platform/processes.h"

#include "platform/error_text.h"

namespace quillmar {

namespace {

bool containsNull(const std::string& text) {
  return text.find('\0') != std::string::npos;
}

}  // namespace

std::optional<Error> nullCharacterError(const Process& process) {
  const auto error = [&](const char* where) {
    return launchError(process.executable, std::string(where) + " contains a U+0000 character");
  };
  if (containsNull(process.executable)) return error("its path");
  if (containsNull(process.workingDirectory)) return error("the path of the working directory");
  for (const std::string& argument : process.arguments) {
    if (containsNull(argument)) return error("an argument");
  }
  for (const auto& [name, value] : process.environment) {
    if (containsNull(name) || containsNull(value)) return error("an environment variable");
  }
  return std::nullopt;
}

}  // namespace quillmar
