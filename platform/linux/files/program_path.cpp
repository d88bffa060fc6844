#include "platform/linux/files/program_path.h"

#include "platform/text.h"

namespace quillmar {

namespace {

constexpr const char* fallbackPath = "/usr/local/bin:/usr/bin:/bin";

}  // namespace

std::optional<std::string> findProgram(const std::string& name, const Environment& environment,
                                       const FileSystem& files) {
  if (name.find('/') != std::string::npos) {
    return files.isExecutableFile(name) ? std::optional(name) : std::nullopt;
  }
  if (name.empty()) return std::nullopt;
  const std::string path = environment.value("PATH").value_or(fallbackPath);
  for (const std::string& folder : text::split(path, ':')) {
    std::string program = folder;
    program.append("/").append(name);
    if (files.isExecutableFile(program)) return program;
  }
  return std::nullopt;
}

}  // namespace quillmar
