#include "platform/file_descriptor.h"

#include <cerrno>

namespace quillmar {

void FileDescriptor::close() {
  if (number_ < 0) return;
  const int before = errno;
  ::close(std::exchange(number_, -1));
  errno = before;
}

int FileDescriptor::finish() {
  // After EINTR the descriptor is closed all the same.
  return ::close(std::exchange(number_, -1)) < 0 && errno != EINTR ? errno : 0;
}

}  // namespace quillmar
