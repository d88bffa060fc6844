// This process as the one running Quillmar of its session: it owns the program's name on the
// session bus, where other processes reach it as an org.freedesktop.Application, and runs the main
// loop. Main thread.

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include <gio/gio.h>

#include "platform/application.h"
#include "platform/environment.h"
#include "platform/linux/application/main_loop.h"
#include "platform/linux/application/termination_signals.h"
#include "platform/linux/bus/dbus_object.h"
#include "platform/linux/bus/glib_pointers.h"
#include "platform/result.h"

namespace quillmar {

/// The program's name on the bus, of its desktop entry and of its icon.
inline constexpr const char* applicationId = "com.tovenworks.quillmar";

/// Where the instance is found under that name.
inline constexpr const char* applicationPath = "/com/tovenworks/quillmar";
inline constexpr const char* applicationInterface = "org.freedesktop.Application";

/// The action that shows the menu; it takes no parameter.
inline constexpr const char* showMenuAction = "menu";

class ApplicationInstance final : public Application {
 public:
  /// What other processes ask for. Each may be empty.
  struct Handlers {
    /// The program was started again, or by way of its desktop entry. The caller's activation is
    /// this application's by then.
    std::function<void()> activate;
    /// Show the menu. The same holds for the activation; an error, a full sentence, goes back.
    std::function<Result<void>()> showMenu;
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
  };

  /// From here on SIGTERM and SIGINT end the program; see TerminationSignals.
  explicit ApplicationInstance(Handlers handlers);
  ~ApplicationInstance() override;
  ApplicationInstance(const ApplicationInstance&) = delete;
  ApplicationInstance& operator=(const ApplicationInstance&) = delete;

  /// Takes the name, for as long as there is a connection. Fails, and the program cannot run, when
  /// there is no session bus or it is of no use. Waits for the bus, which answers also for an
  /// instance that is busy, for some seconds at most. Called once.
  Result<Start> start(const Environment& environment);

  /// The session bus. Precondition for this and for run(): this process is the one.
  GDBusConnection* connection() const { return connection_.get(); }

  /// Runs the main loop until terminate(), which may have been called already, or the end of the
  /// session bus. Called once; returns the exit status. The process should end now; unless this
  /// object is destroyed, it does when TerminationSignals::graceSeconds are over.
  int run();

  void terminate() override;

  MainLoop& mainLoop() { return loop_; }

 private:
  void answer(const char* method, GVariant* arguments, GDBusMethodInvocation* invocation);
  void activateAction(GVariant* arguments, GDBusMethodInvocation* invocation);
  Result<void> showMenu(GVariant* platformData);
  bool handOver(std::string_view action, GVariant* parameter);

  Handlers handlers_;
  MainLoop loop_;
  TerminationSignals signals_;
  GObjectPtr<GDBusConnection> connection_;
  std::optional<DbusObject> object_;
};

}  // namespace quillmar
