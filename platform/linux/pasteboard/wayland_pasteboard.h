// The clipboard of a Wayland session, through the program wl-copy of wl-clipboard: the protocol
// requires a focused surface or a privileged protocol, and wl-copy handles both. It keeps running
// to serve the text, also after this program has ended. Main thread.

#pragma once

#include <chrono>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <gio/gio.h>

#include "platform/environment.h"
#include "platform/file_descriptor.h"
#include "platform/linux/bus/glib_pointers.h"
#include "platform/log.h"
#include "platform/pasteboard.h"

namespace quillmar {

class WaylandPasteboard final : public Pasteboard {
 public:
  /// `environment` is wl-copy's. `log` receives a line when a text could not be copied to the
  /// clipboard. `program` replaces wl-copy: a path, or a name that is searched for in PATH.
  WaylandPasteboard(Environment environment, LogLine log, std::string program = "wl-copy");

  /// A running wl-copy continues to serve its text.
  ~WaylandPasteboard() override;

  /// Starts wl-copy with the text. If one is running already, the last text set meanwhile follows
  /// when the main loop has noticed its end. A long text is stored on another thread first.
  void setString(std::string text) override;

  /// True until wl-copy has received every text, as far as the main loop knows.
  bool isBusy() const { return running_ != nullptr || stored_.valid(); }

  /// Starts wl-copy for a waiting text; blocks for `timeout` at most. Dispatches no events.
  void saveForQuit(std::chrono::milliseconds timeout);

 private:
  /// An unnamed file that holds a text and is read from its start, or the error number.
  struct StoredText {
    FileDescriptor file;
    int error = 0;
  };
  static StoredText store(std::string_view text);

  void start(std::string text);
  /// Starts wl-copy with the stored text; waits until it is stored.
  void launch();
  void startNext();
  void ended(GSubprocess* subprocess);
  void logFailure(const std::string& reason) const;

  Environment environment_;
  LogLine log_;
  std::string program_;
  GObjectPtr<GCancellable> cancellable_{g_cancellable_new()};
  GObjectPtr<GSubprocess> running_;
  std::optional<std::string> next_;
  /// The text that waits for the next wl-copy.
  std::future<StoredText> stored_;
  /// Tells tasks in the main loop whether this object still exists.
  std::shared_ptr<const bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace quillmar
