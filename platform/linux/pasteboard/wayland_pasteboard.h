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

  /// A wl-copy that has not read its text to the end is left to itself.
  ~WaylandPasteboard() override;

  /// Feeds the text to wl-copy while the main loop runs. Of several texts handed over while one is
  /// being fed the last one follows it.
  void setString(std::string text) override;

  /// True while a text is on its way to wl-copy.
  bool isBusy() const { return running_ != nullptr; }

  /// Runs the main context until every text is with wl-copy, at most for `timeout`: the end of this
  /// program would cut it short.
  void saveForQuit(std::chrono::milliseconds timeout);

 private:
  void start(const std::string& text);
  void finished(GAsyncResult* result);
  void logFailure(const std::string& reason) const;

  Environment environment_;
  LogLine log_;
  std::string program_;
  GObjectPtr<GCancellable> cancellable_{g_cancellable_new()};
  GObjectPtr<GSubprocess> running_;
  std::optional<std::string> next_;
};

}  // namespace quillmar
