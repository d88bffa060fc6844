// The clipboard of the session's display: Wayland's if there is one, otherwise X11's. Main thread.

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
  /// Chooses by WAYLAND_DISPLAY and DISPLAY; does not connect yet. `log` receives a line for each
  /// text that could not be copied to the clipboard, also if there is no display.
  DesktopPasteboard(const Environment& environment, LogLine log);
  ~DesktopPasteboard() override;

  void setString(std::string text) override;

  /// Hands the text over, where possible, so that it outlives this program. Blocks for at most
  /// `timeout`.
  void saveForQuit(std::chrono::milliseconds timeout = std::chrono::seconds(1));

 private:
  LogLine log_;
  /// At most one is not null.
  std::unique_ptr<WaylandPasteboard> wayland_;
  std::unique_ptr<X11Pasteboard> x11_;
};

}  // namespace quillmar
