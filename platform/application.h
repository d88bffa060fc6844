// The running application as the desktop sees it. Main thread.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace quillmar {

/// The X server time at the end of a startup id ("..._TIME12345"); 0 if it has none.
std::uint32_t timeOfStartupId(std::string_view startupId);

/// Permission to raise a window, taken from the user action that requested it. Empty if the action
/// carries none; desktops then treat the window as unsolicited.
struct Activation {
  /// Time of the event in milliseconds of the X server's clock; 0 when unknown.
  std::uint32_t timestamp = 0;
  /// Activation token (Wayland) or startup id (X11); empty when there is none.
  std::string token;

  bool operator==(const Activation&) const = default;
};

class Application {
 public:
  virtual ~Application() = default;

  /// Exits with status 0 after the current task of the main queue.
  virtual void terminate() = 0;

  /// The activation of the last user action outside the program's own windows: a click on an entry
  /// of the status menu, a hot key, a second launch. Code that shows a window in response takes it.
  /// An activation is valid for one window, so it is empty afterwards.
  Activation takeActivation() { return std::exchange(activation_, {}); }
  void setActivation(Activation activation) { activation_ = std::move(activation); }

 private:
  Activation activation_;
};

}  // namespace quillmar
