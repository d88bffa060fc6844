#include "platform/linux/files/system_error.h"

#include <cerrno>

#include <string.h>

namespace quillmar {

std::string systemErrorText(int number) {
  if (const char* text = strerrordesc_np(number)) return text;
  return "System error " + std::to_string(number);
}

ErrorKind systemErrorKind(int number) {
  switch (number) {
    case EACCES:
    case EPERM:
    case EROFS:
      return ErrorKind::notPermitted;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      return ErrorKind::noSpace;
    case EIO:
      return ErrorKind::deviceFailure;
    default:
      return ErrorKind::other;
  }
}

}  // namespace quillmar
