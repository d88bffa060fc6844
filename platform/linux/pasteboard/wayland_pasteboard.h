// The clipboard of a Wayland session, through the program wl-copy of wl-clipboard: the protocol
// wants a surface with the focus, or privileges, and wl-copy knows how to get by with either. It
// stays behind to serve the text, also after this program. Main thread.

#pragma once

#include <chrono>
#include <optional>
#include <string>

#include <gio/gio.h>

#include "platform/environment.h"
#include "platform/linux/bus/glib_pointers.h"
#include "platform/log.h"
#include "platform/pasteboard.h"

namespace quillmar {

class WaylandPasteboard final : public Pasteboard {
 public:
  /// `environment` is wl-copy's. `log` gets a line when a text could not be put on the clipboard.
  /// `program` stands in for wl-copy: a path, or a name that is searched for in PATH.
  WaylandPasteboard(Environment environment, LogLine log, std::string program = "wl-copy");

  /// A wl-copy that still runs is left to itself; it has its text.
  ~WaylandPasteboard() override;

  /// Starts wl-copy with the text. Of several texts handed over while one runs the last one
  /// follows it, when the main loop has learnt of its end.
  void setString(std::string text) override;

  /// True until wl-copy has taken every text, as far as the main loop knows.
  bool isBusy() const { return running_ != nullptr; }

  /// Sees to it that a text that waits gets its wl-copy, for which it waits for `timeout` at most.
  /// Dispatches nothing.
  void saveForQuit(std::chrono::milliseconds timeout);

 private:
  void start(const std::string& text);
  void startNext();
  void ended(GSubprocess* subprocess);
  void logFailure(const std::string& reason) const;

  Environment environment_;
  LogLine log_;
  std::string program_;
  GObjectPtr<GCancellable> cancellable_{g_cancellable_new()};
  GObjectPtr<GSubprocess> running_;
  std::optional<std::string> next_;
};

}  // namespace quillmar
