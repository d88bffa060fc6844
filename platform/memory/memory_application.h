// An application that only remembers that it was to end.

#pragma once

#include "platform/application.h"

namespace quillmar {

struct MemoryApplication final : Application {
  bool terminated = false;
  void terminate() override { terminated = true; }
};

}  // namespace quillmar
