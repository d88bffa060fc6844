// A descriptor of the system and the duty to close it.

#pragma once

#include <utility>

#include <unistd.h>

namespace quillmar {

class FileDescriptor {
 public:
  FileDescriptor() = default;
  explicit FileDescriptor(int number) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~FileDescriptor() { close(); }

  /// -1 when it holds none.
  int number() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }

  /// Leaves it to the caller to close it.
  int release() { return std::exchange(number_, -1); }

  /// Closes it now. The errno of whatever failed before stays.
  void close();

  /// Closes it now; 0, or the error number of what was written and could not be kept.
  int finish();

 private:
  int number_ = -1;
};

}  // namespace quillmar
