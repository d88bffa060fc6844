// A file system in memory with folders, files and symbolic links. One user owns all entries but the
// foreign folders; the owner's permission bits apply. Relative paths resolve against the root. Any
// thread.

#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/file_system.h"

namespace quillmar {

class MemoryFileSystem final : public FileSystem {
 public:
  MemoryFileSystem();

  // Set-up. Missing parent folders are created; an existing entry is replaced.

  void addFile(const std::string& path, std::string bytes, std::uint32_t permissions = 0644);
  void addFolder(const std::string& path, std::uint32_t permissions = 0755);
  /// A folder of another user, with any permissions.
  void addForeignFolder(const std::string& path);
  /// A relative target resolves against the link's folder. The target need not exist.
  void addSymbolicLink(const std::string& path, std::string target);
  /// Removes the entry and everything below it. Links are not followed.
  void removeEntry(const std::string& path);

  // Inspection.

  /// The file's bytes, ignoring permissions; absent if there is no file.
  std::optional<std::string> contents(const std::string& path) const;
  /// True if the entry itself is a link.
  bool isSymbolicLink(const std::string& path) const;
  /// The path of every entry except the root, sorted.
  std::vector<std::string> paths() const;

  bool exists(const std::string& path) const override;
  bool isExecutableFile(const std::string& path) const override;
  Result<void> createDirectories(const std::string& path) override;
  Result<void> createPrivateDirectory(const std::string& path) override;
  Result<std::string> read(const std::string& path) const override;
  Result<std::uint32_t> permissions(const std::string& path) const override;
  Result<void> replace(const std::string& path, std::string_view bytes,
                       std::optional<std::uint32_t> permissions) override;
  Result<std::unique_ptr<FileOverwrite>> openForOverwriting(const std::string& path) override;

  /// Like an inode: an open file lives on after its name is removed.
  struct File {
    std::string bytes;
    std::uint32_t permissions = 0;
  };

 private:
  struct Folder {
    std::uint32_t permissions = 0755;
    bool isForeign = false;
  };
  struct Link {
    std::string target;
  };
  using Node = std::variant<Folder, std::shared_ptr<File>, Link>;

  /// A resolved path: a key of `nodes_` that exists or could be created, or the reason why it does
  /// not resolve.
  struct Place {
    std::string key;
    std::string_view reason = {};
  };

  Place resolve(const std::string& path) const;
  const Node* find(const Place& place) const;
  std::shared_ptr<File> fileAt(const Place& place) const;
  std::string_view reasonAgainstNewEntryAt(const Place& place) const;
  void add(const std::string& path, Node node);
  static void erase(std::map<std::string, Node>& nodes, const std::string& key);

  std::shared_ptr<std::mutex> mutex_ = std::make_shared<std::mutex>();
  /// By absolute path without "." or ".."; the root is "/".
  std::map<std::string, Node> nodes_;
};

}  // namespace quillmar
