#include "platform/linux/files/bundle_directory.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/linux/files/posix_file_system.h"

namespace quillmar {

namespace {

namespace fs = std::filesystem;

}  // namespace

BundleDirectory::BundleDirectory(std::string shareDirectory)
    : shareDirectory_(std::move(shareDirectory)) {}

BundleDirectory BundleDirectory::ofThisProgram() {
  std::error_code ignored;
  const fs::path program = fs::read_symlink("/proc/self/exe", ignored);
  return BundleDirectory((program.parent_path().parent_path() / "share").string());
}

std::optional<std::string> BundleDirectory::pathForResource(const std::string& name,
                                                            const std::string& extension,
                                                            const std::string& subfolder) const {
  fs::path path = fs::path(shareDirectory_) / "quillmar" / subfolder / name;
  if (!extension.empty()) path += "." + extension;
  std::error_code ignored;
  if (!fs::is_regular_file(path, ignored)) return std::nullopt;
  return path.string();
}

const BundleInformation& BundleDirectory::informationDictionary() const {
  if (!information_) {
    const auto json = PosixFileSystem().read(shareDirectory_ + "/quillmar/information.json");
    information_ = json ? parseBundleInformation(json.value()) : BundleInformation();
  }
  return *information_;
}

}  // namespace quillmar
