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
  // On Linux the descriptor is closed even after EINTR.
  return ::close(std::exchange(number_, -1)) < 0 && errno != EINTR ? errno : 0;
}

}  // namespace quillmar
