// The owner of a file descriptor.

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

  /// -1 if there is none.
  int number() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }

  /// Transfers ownership to the caller.
  int release() { return std::exchange(number_, -1); }

  /// Closes the descriptor. Preserves errno.
  void close();

  /// Closes the descriptor. Returns 0, or the error number if written data could not be stored.
  int finish();

 private:
  int number_ = -1;
};

}  // namespace quillmar
