#include "platform/processes.h"

#include "platform/error_text.h"

namespace quillmar {

namespace {

bool holdsNull(const std::string& text) {
  return text.find('\0') != std::string::npos;
}

}  // namespace

std::optional<Error> unusableTextIn(const Process& process) {
  const auto error = [&](const char* where) {
    return launchError(process.executable, std::string(where) + " holds a U+0000 character");
  };
  if (holdsNull(process.executable)) return error("its path");
  if (holdsNull(process.workingDirectory)) return error("the path of the working directory");
  for (const std::string& argument : process.arguments) {
    if (holdsNull(argument)) return error("an argument");
  }
  for (const auto& [name, value] : process.environment) {
    if (holdsNull(name) || holdsNull(value)) return error("an environment variable");
  }
  return std::nullopt;
}

}  // namespace quillmar
