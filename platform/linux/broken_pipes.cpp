#include "platform/linux/broken_pipes.h"

#include <csignal>

namespace quillmar {

void ignoreBrokenPipes() {
  std::signal(SIGPIPE, SIG_IGN);
}

}  // namespace quillmar
