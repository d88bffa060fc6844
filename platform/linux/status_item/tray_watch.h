// Whether there is a tray of the older kind, which takes windows in (XEmbed). Main thread.

#pragma once

#include <functional>

namespace quillmar {

class TrayWatch {
 public:
  virtual ~TrayWatch() = default;

  /// Watches until stop(). `changed` is called whenever there is a tray after there was none, and
  /// the other way round, beginning with none; perhaps before this call returns. It must not call
  /// stop(). Precondition: not started.
  virtual void start(std::function<void(bool hasTray)> changed) = 0;

  /// Watches no longer. Does nothing when it was not started.
  virtual void stop() = 0;
};

}  // namespace quillmar
