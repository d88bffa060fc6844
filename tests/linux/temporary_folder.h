// A folder for one test, deleted with everything in it at the end.

#pragma once

#include <filesystem>
#include <string>

#include <stdlib.h>

namespace quillmar {

class TemporaryFolder {
 public:
  TemporaryFolder() : path_((std::filesystem::temp_directory_path() / "quillmar-XXXXXX").string()) {
    if (!mkdtemp(path_.data())) std::abort();
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace quillmar
