#include "platform/memory/memory_file_system.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "platform/error_text.h"

namespace quillmar {

namespace {

constexpr std::uint32_t mayRead = 0400;
constexpr std::uint32_t mayWrite = 0200;
constexpr std::uint32_t mayExecute = 0100;
constexpr std::uint32_t newFilePermissions = 0644;
constexpr int maximumLinks = 40;
constexpr std::size_t spareCapacity = 64;
constexpr std::size_t longestName = 255;
constexpr std::size_t longestPath = 4095;

constexpr std::string_view noSuchFile = "No such file or directory";
constexpr std::string_view notAFolder = "Not a directory";
constexpr std::string_view isAFolder = "Is a directory";
constexpr std::string_view notPermitted = "Permission denied";
constexpr std::string_view tooManyLinks = "Too many levels of symbolic links";
constexpr std::string_view nameTooLong = "File name too long";

ErrorKind kindOf(std::string_view reason) {
  return reason == notPermitted ? ErrorKind::notPermitted : ErrorKind::other;
}

Error failure(std::string_view path, std::string_view done, std::string_view reason) {
  return fileError(path, done, reason, kindOf(reason));
}

/// Appends the components of the path to `rest`, the last one first.
void pushComponents(std::vector<std::string>& rest, std::string_view path) {
  while (!path.empty()) {
    const std::size_t slash = path.rfind('/');
    const std::string_view last = slash == path.npos ? path : path.substr(slash + 1);
    if (!last.empty()) rest.emplace_back(last);
    path = slash == path.npos ? std::string_view() : path.substr(0, slash);
  }
}

/// The parent folder of the entry with this key; the root is its own parent.
std::string parentOf(const std::string& key) {
  const std::size_t slash = key.rfind('/');
  return slash == 0 || slash == std::string::npos ? "/" : key.substr(0, slash);
}

class MemoryFileOverwrite final : public FileOverwrite {
 public:
  MemoryFileOverwrite(std::shared_ptr<MemoryFileSystem::File> file,
                      std::shared_ptr<std::mutex> mutex)
      : file_(std::move(file)), mutex_(std::move(mutex)) {}

  Result<void> reserve(std::uint64_t) override { return {}; }

  Result<void> write(std::uint64_t offset, std::string_view bytes) override {
    if (bytes.empty()) return {};
    const std::lock_guard lock(*mutex_);
    std::string& content = file_->bytes;
    if (content.size() < offset + bytes.size()) content.resize(offset + bytes.size());
    std::copy(bytes.begin(), bytes.end(), content.begin() + static_cast<std::ptrdiff_t>(offset));
    return {};
  }

  Result<void> setLength(std::uint64_t size) override {
    const std::lock_guard lock(*mutex_);
    file_->bytes.resize(size);
    return {};
  }

  Result<void> finish() override { return {}; }

 private:
  std::shared_ptr<MemoryFileSystem::File> file_;
  std::shared_ptr<std::mutex> mutex_;
};

}  // namespace

MemoryFileSystem::MemoryFileSystem() {
  nodes_.emplace("/", Folder{});
}

MemoryFileSystem::Place MemoryFileSystem::resolve(const std::string& path) const {
  if (path.empty() || path.find('\0') != std::string::npos) return {"", noSuchFile};
  if (path.size() > longestPath) return {"", nameTooLong};
  std::vector<std::string> rest;
  pushComponents(rest, path);
  std::string key = "/";
  for (int links = 0; !rest.empty();) {
    const std::string name = std::move(rest.back());
    rest.pop_back();
    const auto here = nodes_.find(key);
    if (here == nodes_.end()) return {key, noSuchFile};
    const Folder* folder = std::get_if<Folder>(&here->second);
    if (!folder) return {key, notAFolder};
    if (!(folder->permissions & mayExecute)) return {key, notPermitted};
    if (name.size() > longestName) return {key, nameTooLong};
    if (name == ".") continue;
    if (name == "..") {
      key = parentOf(key);
      continue;
    }
    std::string child = (key == "/" ? "" : key) + "/" + name;
    const auto entry = nodes_.find(child);
    const Link* link = entry == nodes_.end() ? nullptr : std::get_if<Link>(&entry->second);
    if (!link) {
      key = std::move(child);
      continue;
    }
    if (++links > maximumLinks) return {key, tooManyLinks};
    if (link->target.starts_with('/')) key.resize(1);
    pushComponents(rest, link->target);
  }
  return {key};
}

const MemoryFileSystem::Node* MemoryFileSystem::find(const Place& place) const {
  if (!place.reason.empty()) return nullptr;
  const auto found = nodes_.find(place.key);
  return found == nodes_.end() ? nullptr : &found->second;
}

/// The file at the place; nullptr if there is none.
std::shared_ptr<MemoryFileSystem::File> MemoryFileSystem::fileAt(const Place& place) const {
  const Node* node = find(place);
  const auto* file = node ? std::get_if<std::shared_ptr<File>>(node) : nullptr;
  return file ? *file : nullptr;
}

/// Why the user cannot create or rename an entry there; empty if it is possible.
std::string_view MemoryFileSystem::reasonAgainstNewEntryAt(const Place& place) const {
  if (!place.reason.empty()) return place.reason;
  const auto parent = nodes_.find(parentOf(place.key));
  if (parent == nodes_.end()) return noSuchFile;
  const Folder* folder = std::get_if<Folder>(&parent->second);
  if (!folder) return notAFolder;
  return folder->permissions & mayWrite ? std::string_view() : notPermitted;
}

bool MemoryFileSystem::exists(const std::string& path) const {
  const std::lock_guard lock(*mutex_);
  const Place place = resolve(path);
  return find(place) || place.reason == notPermitted;
}

bool MemoryFileSystem::isExecutableFile(const std::string& path) const {
  const std::lock_guard lock(*mutex_);
  const std::shared_ptr<File> file = fileAt(resolve(path));
  return file && file->permissions & mayExecute;
}

Result<void> MemoryFileSystem::createDirectories(const std::string& path) {
  const std::lock_guard lock(*mutex_);
  for (std::size_t end = 0; end != std::string::npos;) {
    end = path.find('/', end + 1);
    const Place place = resolve(path.substr(0, end));
    const Node* node = find(place);
    if (node && std::holds_alternative<Folder>(*node)) continue;
    const std::string_view reason = node ? notAFolder : reasonAgainstNewEntryAt(place);
    if (!reason.empty()) return folderError(path, "created", reason, kindOf(reason));
    nodes_.emplace(place.key, Folder{});
  }
  return {};
}

Result<void> MemoryFileSystem::createPrivateDirectory(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash != std::string::npos && slash > 0) {
    if (Result<void> created = createDirectories(path.substr(0, slash)); !created) return created;
  }
  const std::lock_guard lock(*mutex_);
  // The parent's links are followed, the last component is not.
  const Place parent = resolve(slash == std::string::npos ? "/" : path.substr(0, slash + 1));
  const std::string key = (parent.key == "/" ? "" : parent.key) + "/" + path.substr(slash + 1);
  const auto found = nodes_.find(key);
  if (found == nodes_.end()) {
    const Place place = resolve(path);
    const std::string_view reason = reasonAgainstNewEntryAt(place);
    if (!reason.empty()) return folderError(path, "created", reason, kindOf(reason));
    nodes_.emplace(place.key, Folder{0700});
    return {};
  }
  const auto* folder = std::get_if<Folder>(&found->second);
  if (std::holds_alternative<Link>(found->second)) {
    return folderError(path, "used", symbolicLinkReason);
  }
  if (!folder) return folderError(path, "used", notAFolder);
  if (folder->isForeign) return folderError(path, "used", foreignFolderReason);
  if (folder->permissions == 0700) return {};
  return folderError(path, "used", openFolderReason(folder->permissions));
}

Result<std::string> MemoryFileSystem::read(const std::string& path) const {
  const std::lock_guard lock(*mutex_);
  const Place place = resolve(path);
  if (!find(place)) {
    return failure(path, "read", place.reason.empty() ? noSuchFile : place.reason);
  }
  const std::shared_ptr<File> file = fileAt(place);
  if (!file) return failure(path, "read", isAFolder);
  if (!(file->permissions & mayRead)) return failure(path, "read", notPermitted);
  if (file->bytes.size() > maximumFileSize) return fileTooLarge(path);
  std::string bytes;
  bytes.reserve(file->bytes.size() + spareCapacity);
  bytes = file->bytes;
  return bytes;
}

Result<std::uint32_t> MemoryFileSystem::permissions(const std::string& path) const {
  const std::lock_guard lock(*mutex_);
  const Place place = resolve(path);
  const Node* node = find(place);
  if (!node) return failure(path, "examined", place.reason.empty() ? noSuchFile : place.reason);
  if (const std::shared_ptr<File> file = fileAt(place)) return file->permissions;
  return std::get<Folder>(*node).permissions;
}

Result<void> MemoryFileSystem::replace(const std::string& path, std::string_view bytes,
                                       std::optional<std::uint32_t> permissions) {
  const std::lock_guard lock(*mutex_);
  const Place place = resolve(path);
  const Node* node = find(place);
  const std::string_view reason =
      node && std::holds_alternative<Folder>(*node) ? isAFolder : reasonAgainstNewEntryAt(place);
  if (!reason.empty()) return failure(path, "written", reason);
  nodes_.insert_or_assign(
      place.key,
      std::make_shared<File>(File{std::string(bytes), permissions.value_or(newFilePermissions)}));
  return {};
}

Result<std::unique_ptr<FileOverwrite>> MemoryFileSystem::openForOverwriting(
    const std::string& path) {
  const std::lock_guard lock(*mutex_);
  const Place place = resolve(path);
  std::shared_ptr<File> file = fileAt(place);
  if (!file) {
    const std::string_view reason = find(place) ? isAFolder : reasonAgainstNewEntryAt(place);
    if (!reason.empty()) return failure(path, "written", reason);
    file = std::make_shared<File>(File{"", newFilePermissions});
    nodes_.emplace(place.key, file);
  } else if (!(file->permissions & mayWrite)) {
    return failure(path, "written", notPermitted);
  }
  return std::unique_ptr<FileOverwrite>(
      std::make_unique<MemoryFileOverwrite>(std::move(file), mutex_));
}

void MemoryFileSystem::addFile(const std::string& path, std::string bytes,
                               std::uint32_t permissions) {
  add(path, std::make_shared<File>(File{std::move(bytes), permissions}));
}

void MemoryFileSystem::addFolder(const std::string& path, std::uint32_t permissions) {
  add(path, Folder{permissions});
}

void MemoryFileSystem::addForeignFolder(const std::string& path) {
  add(path, Folder{0700, true});
}

void MemoryFileSystem::addSymbolicLink(const std::string& path, std::string target) {
  add(path, Link{std::move(target)});
}

/// Puts the node at the path, ignoring permissions.
void MemoryFileSystem::add(const std::string& path, Node node) {
  const std::lock_guard lock(*mutex_);
  std::string key;
  std::vector<std::string> rest;
  for (pushComponents(rest, path); !rest.empty(); rest.pop_back()) {
    if (!key.empty()) nodes_.try_emplace(key, Folder{});
    key += "/" + rest.back();
  }
  const auto* folder = std::get_if<Folder>(&node);
  const auto old = nodes_.find(key);
  const bool keepsContent =
      folder && old != nodes_.end() && std::holds_alternative<Folder>(old->second);
  if (!keepsContent) erase(nodes_, key);
  nodes_.insert_or_assign(key, std::move(node));
}

void MemoryFileSystem::removeEntry(const std::string& path) {
  const std::lock_guard lock(*mutex_);
  erase(nodes_, path);
}

/// Removes the entry and everything below it.
void MemoryFileSystem::erase(std::map<std::string, Node>& nodes, const std::string& key) {
  nodes.erase(key);
  std::erase_if(nodes, [&](const auto& entry) { return entry.first.starts_with(key + "/"); });
}

std::optional<std::string> MemoryFileSystem::contents(const std::string& path) const {
  const std::lock_guard lock(*mutex_);
  const std::shared_ptr<File> file = fileAt(resolve(path));
  return file ? std::optional(file->bytes) : std::nullopt;
}

bool MemoryFileSystem::isSymbolicLink(const std::string& path) const {
  const std::lock_guard lock(*mutex_);
  const auto found = nodes_.find(path);
  return found != nodes_.end() && std::holds_alternative<Link>(found->second);
}

std::vector<std::string> MemoryFileSystem::paths() const {
  const std::lock_guard lock(*mutex_);
  std::vector<std::string> paths;
  for (const auto& [key, node] : nodes_) {
    if (key != "/") paths.push_back(key);
  }
  return paths;
}

}  // namespace quillmar
