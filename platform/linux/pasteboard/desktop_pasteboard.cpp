#include "platform/linux/pasteboard/desktop_pasteboard.h"

#include <string>
#include <utility>

#include "platform/linux/pasteboard/wayland_pasteboard.h"
#include "platform/linux/pasteboard/x11_pasteboard.h"

namespace quillmar {

DesktopPasteboard::DesktopPasteboard(const Environment& environment, LogLine log)
    : log_(std::move(log)) {
  const std::string wayland = environment.value("WAYLAND_DISPLAY").value_or("");
  const std::string display = environment.value("DISPLAY").value_or("");
  if (!wayland.empty()) {
    wayland_ = std::make_unique<WaylandPasteboard>(environment, log_);
  } else if (!display.empty()) {
    x11_ = std::make_unique<X11Pasteboard>(display, log_);
  }
}

DesktopPasteboard::~DesktopPasteboard() = default;

void DesktopPasteboard::setString(std::string text) {
  if (wayland_) {
    wayland_->setString(std::move(text));
  } else if (x11_) {
    x11_->setString(std::move(text));
  } else {
    log_(
        "The text was not copied to the clipboard: there is no display (neither WAYLAND_DISPLAY "
        "nor "
        "DISPLAY is set).");
  }
}

void DesktopPasteboard::saveForQuit(std::chrono::milliseconds timeout) {
  if (wayland_) wayland_->saveForQuit(timeout);
  if (x11_) x11_->saveForQuit(timeout);
}

}  // namespace quillmar
