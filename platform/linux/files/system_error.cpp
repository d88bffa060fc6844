#include "platform/linux/files/system_error.h"

#include <string.h>

namespace quillmar {

std::string systemErrorText(int number) {
  if (const char* text = strerrordesc_np(number)) return text;
  return "System error " + std::to_string(number);
}

}  // namespace quillmar
