#include "platform/linux/files/file_descriptor.h"

#include <cerrno>

namespace quillmar {

void FileDescriptor::close() {
  if (number_ < 0) return;
  const int before = errno;
  ::close(std::exchange(number_, -1));
  errno = before;
}

}  // namespace quillmar
