// The running application as the desktop sees it. Main thread.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace quillmar {

/// The time of the event that a startup id was made for, which ends it; 0 for an id without one.
std::uint32_t timeOfStartupId(std::string_view startupId);

/// The leave to come to the front that an event of the user carries. Empty for an event that
/// carries none, which desktops take for a window that nobody asked for.
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

  /// Ends the program, with exit status 0, once the current turn of the main queue is over.
  virtual void terminate() = 0;

  /// What the user did last outside of the program's own windows: a click on an entry of the status
  /// menu, a hot key, a second start. Whoever shows a window in answer takes it along: a leave
  /// holds for one window. What comes next is the answer to something in that window.
  Activation takeActivation() { return std::exchange(activation_, {}); }
  void setActivation(Activation activation) { activation_ = std::move(activation); }

 private:
  Activation activation_;
};

}  // namespace quillmar
