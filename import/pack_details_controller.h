// A sheet that shows everything a pack contains, with the whole text of each command. Main thread.

#pragma once

#include "config/quillmar_config.h"
#include "platform/widgets/window.h"

namespace quillmar {

class PackDetailsController final {
 public:
  /// Builds the window without showing it. The window system is not owned and must outlive the
  /// controller.
  PackDetailsController(WindowSystem& windows, const QuillmarConfig& current,
                        const QuillmarConfig& pack);

  PackDetailsController(const PackDetailsController&) = delete;
  PackDetailsController& operator=(const PackDetailsController&) = delete;

  Window& window() { return window_; }

 private:
  Window window_;
};

}  // namespace quillmar
