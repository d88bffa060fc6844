// The clipboard of whichever display the session has: Wayland's before X11's, which under Wayland
// is a guest. Main thread.

#pragma once

#include <chrono>
#include <memory>

#include "platform/environment.h"
#include "platform/log.h"
#include "platform/pasteboard.h"

namespace quillmar {

class WaylandPasteboard;
class X11Pasteboard;

class DesktopPasteboard final : public Pasteboard {
 public:
  /// Chooses by WAYLAND_DISPLAY and DISPLAY; connects to nothing yet. `log` gets a line for each
  /// text that could not be put on the clipboard, also when there is no display.
  DesktopPasteboard(const Environment& environment, LogLine log);
  ~DesktopPasteboard() override;

  void setString(std::string text) override;

  /// Sees to it, where possible, that the text outlives this program; blocks for `timeout` at most.
  void saveForQuit(std::chrono::milliseconds timeout = std::chrono::seconds(1));

 private:
  LogLine log_;
  /// One of them at most.
  std::unique_ptr<WaylandPasteboard> wayland_;
  std::unique_ptr<X11Pasteboard> x11_;
};

}  // namespace quillmar
