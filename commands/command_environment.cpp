#include "commands/command_environment.h"

#include <algorithm>
#include <vector>

#include "commands/script_launch.h"

namespace quillmar {

namespace {

constexpr std::string_view fallbackPath = "/usr/bin:/bin:/usr/sbin:/sbin";

std::vector<std::string_view> nonEmptyComponents(std::string_view path) {
  std::vector<std::string_view> components;
  while (!path.empty()) {
    const std::string_view component = path.substr(0, path.find(':'));
    if (!component.empty()) components.push_back(component);
    path.remove_prefix(std::min(path.size(), component.size() + 1));
  }
  return components;
}

}  // namespace

std::map<std::string, std::string> augmentedEnvironment(const Environment& environment,
                                                        const std::string& homeDirectory,
                                                        const FileSystem& files) {
  std::map<std::string, std::string> variables = environment.variables;
  const std::string path = environment.value("PATH").value_or(std::string(fallbackPath));
  const std::vector<std::string_view> present = nonEmptyComponents(path);

  std::string augmented;
  for (const std::string_view extra : extraPathDirectories) {
    const std::string directory = expandingTilde(std::string(extra), homeDirectory);
    if (std::ranges::find(present, directory) != present.end()) continue;
    if (!files.exists(directory)) continue;
    augmented += directory + ":";
  }
  variables["PATH"] = augmented + path;
  return variables;
}

}  // namespace quillmar
