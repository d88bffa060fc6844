// A fake application that records calls of terminate().

#pragma once

#include "platform/application.h"

namespace quillmar {

struct MemoryApplication final : Application {
  bool terminated = false;
  void terminate() override { terminated = true; }
};

}  // namespace quillmar
