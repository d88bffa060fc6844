#include "platform/platform.h"

#include <cstdio>
#include <cstdlib>

namespace quillmar {

namespace {

Platform* installedPlatform = nullptr;

}  // namespace

Platform& Platform::shared() {
  if (!installedPlatform) {
    std::fputs("A shared object was used before the platform was installed.\n", stderr);
    std::abort();
  }
  return *installedPlatform;
}

void Platform::install(Platform& platform) {
  installedPlatform = &platform;
}

}  // namespace quillmar
