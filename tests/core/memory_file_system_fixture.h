// The file system in memory, as the conformance suite wants it.

#pragma once

#include <string>
#include <vector>

#include "platform/memory/memory_file_system.h"

namespace quillmar {

class MemoryFileSystemFixture {
 public:
  MemoryFileSystemFixture() { files_.addFolder("/root"); }

  MemoryFileSystem& files() { return files_; }
  std::string root() { return "/root"; }
  void addSymbolicLink(const std::string& path, const std::string& target) {
    files_.addSymbolicLink(path, target);
  }
  bool isSymbolicLink(const std::string& path) { return files_.isSymbolicLink(path); }
  std::vector<std::string> names() {
    std::vector<std::string> names;
    for (const std::string& path : files_.paths()) {
      if (path.starts_with("/root/")) names.push_back(path.substr(6));
    }
    return names;
  }

 protected:
  MemoryFileSystem files_;
};

}  // namespace quillmar
