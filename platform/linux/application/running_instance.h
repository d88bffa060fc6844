// The running Quillmar of the session, as used by a short-lived process: “quillmar run” lets it set
// the clipboard and show notifications, which only a resident process can do; a second start passes
// on the files that it was started with. Main thread.
// Calls wait for the bus, with a timeout. Only showMenu() and hotKeyReport() wait for the other
// process, which may be busy with a foreground command.

#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <gio/gio.h>

#include "platform/environment.h"
#include "platform/linux/bus/glib_pointers.h"
#include "platform/linux/bus/session_bus.h"
#include "platform/pasteboard.h"
#include "platform/result.h"
#include "platform/task_queue.h"
#include "platform/user_notifications.h"
#include "shortcuts/unregistered_hot_key.h"

namespace quillmar {

class RunningInstance {
 public:
  /// Long enough to load the window module from a slow disk.
  static constexpr std::chrono::milliseconds defaultMenuTimeout = std::chrono::seconds(30);

  /// Connects to the environment's session bus on first use. Waits at most `timeout` for each reply
  /// of the bus. `environment` must outlive it.
  explicit RunningInstance(const Environment& environment,
                           std::chrono::milliseconds timeout = busTimeout,
                           std::chrono::milliseconds menuTimeout = defaultMenuTimeout)
      : environment_(environment), timeout_(timeout), menuTimeout_(menuTimeout) {}

  bool isRunning() { return find().ok(); }

  /// Tells the instance that the program was started again. The request expires after the timeout.
  /// The error begins a sentence.
  Result<void> activate();

  /// Passes URLs on to the instance, which opens them as soon as it can. The error is a sentence
  /// without its full stop, such as "Quillmar is not running".
  Result<void> open(const std::vector<std::string>& urls);

  /// Makes the instance show its menu. Waits at most the timeout until the instance replies, and
  /// then as long as a menu may take to open. The request expires if the instance receives it late.
  /// The error is a full sentence.
  Result<void> showMenu();

  /// The hot keys of the instance that do not work. Waits at most the timeout until the instance
  /// replies. The error is a full sentence. Precondition: isRunning().
  Result<HotKeyReport> hotKeyReport();

  /// The largest parameter of an action. By default a bus limits messages to 32 MiB, and
  /// disconnects a program that exceeds the limit.
  static constexpr std::size_t maximumParameterBytes = std::size_t{30} << 20;

  /// Sends an action, which the instance executes as soon as it can; actions keep their order.
  /// Consumes a floating `parameter`. The error is a sentence without its full stop, such as
  /// "Quillmar is not running".
  Result<void> activateAction(const char* action, GVariant* parameter);

 private:
  /// Asks the bus whether an instance is running. If not, the error says why.
  Result<void> find();

  /// What a call that failed means for the user, after the cause: ", so there is no menu".
  struct Consequences {
    const char* notRunning;
    const char* busy;
  };

  /// Calls a method of the instance and waits for the reply. The error is a full sentence.
  Result<GVariantPtr> call(const char* interface, const char* method, GVariant* arguments,
                           std::chrono::milliseconds timeout, const Consequences& consequences);

  /// Calls a method of the instance and waits until the bus has received the call.
  Result<void> send(const char* method, GVariant* arguments);

  const Environment& environment_;
  std::chrono::milliseconds timeout_;
  std::chrono::milliseconds menuTimeout_;
  /// Absent until first used. A bus that did not reply is not tried again.
  std::optional<Result<GObjectPtr<GDBusConnection>>> bus_;
};

/// What could not be delivered to the running instance.
struct DeliveryFailures {
  bool clipboard = false;
  bool notification = false;
  /// Cause of the first failure: a sentence without its full stop.
  std::string cause;

  /// One sentence about all of them; absent if there are none.
  std::optional<std::string> sentence() const;
};

/// The clipboard that the running instance owns. `instance` and `failures` must outlive it.
class RemotePasteboard final : public Pasteboard {
 public:
  RemotePasteboard(RunningInstance& instance, DeliveryFailures& failures)
      : instance_(instance), failures_(failures) {}

  /// Replaces U+0000, which a bus cannot carry, by U+FFFD.
  void setString(std::string text) override;

 private:
  RunningInstance& instance_;
  DeliveryFailures& failures_;
};

/// Notifications that the running instance shows. `instance`, `failures` and the main queue must
/// outlive it.
class RemoteNotifications final : public UserNotificationCenter {
 public:
  RemoteNotifications(RunningInstance& instance, DeliveryFailures& failures, TaskQueue& mainQueue)
      : instance_(instance), failures_(failures), mainQueue_(mainQueue) {}

  /// Granted if an instance is running.
  void requestAuthorization(AuthorizationOptions options,
                            std::function<void(bool granted)> completion) override;

  /// The completion never receives an error: failures are recorded in the DeliveryFailures.
  void add(UserNotification notification,
           std::function<void(std::optional<Error>)> completion) override;

 private:
  RunningInstance& instance_;
  DeliveryFailures& failures_;
  TaskQueue& mainQueue_;
};

}  // namespace quillmar
