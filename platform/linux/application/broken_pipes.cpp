#include "platform/linux/application/broken_pipes.h"

#include <csignal>

namespace quillmar {

void ignoreBrokenPipes() {
  std::signal(SIGPIPE, SIG_IGN);
}

}  // namespace quillmar
