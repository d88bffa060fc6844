// Detects an XEmbed tray, the older kind, which embeds windows. Main thread.

#pragma once

#include <functional>

namespace quillmar {

class TrayWatch {
 public:
  virtual ~TrayWatch() = default;

  /// Watches until stop(). `changed` is called whenever a tray appears or disappears; at first
  /// there is none. The call may come before start() returns. It must not call stop().
  /// Precondition: not started.
  virtual void start(std::function<void(bool hasTray)> changed) = 0;

  /// Stops watching. Does nothing if not started.
  virtual void stop() = 0;
};

}  // namespace quillmar
