// This process as the one running Quillmar of its session: it owns the program's name on the
// session bus, where other processes reach it, and runs the main loop. Main thread.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include <gio/gio.h>

#include "platform/application.h"
#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {

/// The program's name on the bus, of its desktop entry and of its icon.
inline constexpr const char* applicationId = "com.tovenworks.quillmar";

class ApplicationInstance final : public Application {
 public:
  /// What other processes ask for. Each may be empty.
  struct Handlers {
    /// The program was started again, or by way of its desktop entry.
    std::function<void()> activate;
    /// Put the text on the clipboard.
    std::function<void(std::string text)> setClipboard;
    /// Show a notification.
    std::function<void(std::string title, std::string body)> notify;
  };

  enum class Start {
    /// This process is the one.
    running,
    /// Another process is; this one should end.
    alreadyRunning,
    /// Nobody can tell: there is no session bus. The program can run all the same.
    noSessionBus,
  };

  /// From here on SIGTERM and SIGINT call terminate().
  explicit ApplicationInstance(Handlers handlers);

  /// Gives up the name.
  ~ApplicationInstance() override;
  ApplicationInstance(const ApplicationInstance&) = delete;
  ApplicationInstance& operator=(const ApplicationInstance&) = delete;

  /// Takes the name. Blocks for the bus. Called once.
  Start start();

  /// The session bus; null without one, and before start().
  GDBusConnection* connection() const { return connection_.get(); }

  /// Runs the main loop until terminate(), which may have been called already, or the end of the
  /// session bus. Called once; returns the exit status.
  int run();

  void terminate() override;

 private:
  void addAction(const char* name, const char* parameterType,
                 void (*activate)(GSimpleAction*, GVariant* parameter, gpointer self));

  Handlers handlers_;
  GObjectPtr<GApplication> application_;
  GObjectPtr<GDBusConnection> connection_;
  GMainLoopPtr loop_;
  std::vector<guint> signalSources_;
  bool terminated_ = false;
};

}  // namespace quillmar
