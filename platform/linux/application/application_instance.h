// The only running Quillmar of the session. It owns the program's name on the session bus, where
// other processes reach it as an org.freedesktop.Application, and runs the main loop. Main thread.

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gio/gio.h>

#include "platform/application.h"
#include "platform/environment.h"
#include "platform/linux/application/main_loop.h"
#include "platform/linux/application/termination_signals.h"
#include "platform/linux/bus/dbus_object.h"
#include "platform/linux/bus/glib_pointers.h"
#include "platform/result.h"
#include "shortcuts/unregistered_hot_key.h"

namespace quillmar {

/// The application id: bus name, name of the desktop entry and of the icon.
inline constexpr const char* applicationId = "com.tovenworks.quillmar";

/// Object path of the instance.
inline constexpr const char* applicationPath = "/com/tovenworks/quillmar";
inline constexpr const char* applicationInterface = "org.freedesktop.Application";

/// The interface of the instance with what is not part of the standard one. Its property holds the
/// path of the settings file, and for each hot key that does not work the item's id and title and
/// the status.
inline constexpr const char* instanceInterface = "com.tovenworks.quillmar";
inline constexpr const char* hotKeyReportProperty = "UnregisteredHotKeys";
inline constexpr const char* hotKeyReportType = "(sa(ssi))";

/// The action that shows the menu; it takes no parameter.
inline constexpr const char* showMenuAction = "menu";

class ApplicationInstance final : public Application {
 public:
  /// Requests from other processes. Those that arrive before run() wait for it, so the handlers may
  /// use what is created in between. Each handler may be empty.
  struct Handlers {
    /// The program was started again, or through its desktop entry. The caller's activation is
    /// already this application's.
    std::function<void()> activate;
    /// Opens files and links, given as URLs, in this order. The caller's activation is already set.
    std::function<void(const std::vector<std::string>& urls)> open;
    /// Shows the menu; the caller's activation is already set. An error, a full sentence, is
    /// returned to the caller.
    std::function<Result<void>()> showMenu;
    /// Puts the text on the clipboard.
    std::function<void(std::string text)> setClipboard;
    /// Shows a notification.
    std::function<void(std::string title, std::string body)> notify;
    /// Returns the hot keys that do not work.
    std::function<HotKeyReport()> hotKeyReport;
  };

  enum class Start {
    /// This process is the instance.
    running,
    /// Another process is the instance; this one should exit.
    alreadyRunning,
  };

  /// From here on SIGTERM and SIGINT end the program; see TerminationSignals.
  explicit ApplicationInstance(Handlers handlers);
  ~ApplicationInstance() override;
  ApplicationInstance(const ApplicationInstance&) = delete;
  ApplicationInstance& operator=(const ApplicationInstance&) = delete;

  /// Acquires the name, for as long as the connection lasts. Fails if there is no usable session
  /// bus; the program then cannot run. Waits a few seconds at most for the bus, which replies even
  /// if a running instance is busy. Called once.
  Result<Start> start(const Environment& environment);

  /// The session bus. Precondition of this and of run(): this process is the instance.
  GDBusConnection* connection() const { return connection_.get(); }

  /// Runs the main loop until terminate(), which may have been called already, or until the session
  /// bus closes. Called once. Returns the exit status. The process should then exit: it is ended
  /// after TerminationSignals::graceSeconds unless this object is destroyed before.
  int run();

  void terminate() override;

  MainLoop& mainLoop() { return loop_; }

 private:
  void answer(const char* method, GVariant* arguments, GDBusMethodInvocation* invocation);
  void open(GVariant* arguments);
  void activateAction(GVariant* arguments, GDBusMethodInvocation* invocation);
  Result<void> showMenu(GVariant* platformData);
  GVariant* hotKeyReport() const;
  bool handOver(std::string_view action, GVariant* parameter);

  Handlers handlers_;
  MainLoop loop_;
  TerminationSignals signals_;
  GObjectPtr<GDBusConnection> connection_;
  std::optional<DbusObject> object_;
  std::optional<DbusObject> ownInterface_;
};

}  // namespace quillmar
