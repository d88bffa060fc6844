// The running Quillmar of the session, as used by a short-lived process such as “quillmar run”: it
// sets the clipboard and shows notifications, which only a resident process can do. Main thread.
// Calls wait for the bus, with a timeout. Only showMenu() waits for the other process, which may be
// busy with a foreground command.

#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include <gio/gio.h>

#include "platform/environment.h"
#include "platform/linux/bus/glib_pointers.h"
#include "platform/linux/bus/session_bus.h"
#include "platform/pasteboard.h"
#include "platform/result.h"
#include "platform/task_queue.h"
#include "platform/user_notifications.h"

namespace quillmar {

class RunningInstance {
 public:
  /// For a menu that has to be loaded first, from a slow disk.
  static constexpr std::chrono::milliseconds defaultMenuTimeout = std::chrono::seconds(30);

  /// Connects to the environment's session bus when it is first needed. Waits for `timeout` at
  /// most for each answer of the bus. `environment` must outlive it.
  explicit RunningInstance(const Environment& environment,
                           std::chrono::milliseconds timeout = busTimeout,
                           std::chrono::milliseconds menuTimeout = defaultMenuTimeout)
      : environment_(environment), timeout_(timeout), menuTimeout_(menuTimeout) {}

  bool isRunning() { return find().ok(); }

  /// Tells the instance that the program was started again. One that does not hear it within the
  /// timeout forgets it. The error begins a sentence.
  Result<void> activate();

  /// Has the instance show its menu. Waits for the timeout at most until it listens, and from then
  /// on as long as a menu may take; an instance that hears of it late shows nothing. The error is a
  /// full sentence.
  Result<void> showMenu();

  /// The largest parameter of an action. A bus without other settings limits messages to 32 MiB,
  /// and ends the connection of a program that exceeds this.
  static constexpr std::size_t mostParameterBytes = std::size_t{30} << 20;

  /// Sends an action, which the instance executes as soon as it can; actions keep their order.
  /// Consumes a floating `parameter`. The error is a sentence without its full stop, such as
  /// "Quillmar is not running".
  Result<void> activateAction(const char* action, GVariant* parameter);

 private:
  /// Asks the bus whether there is an instance; the error says why not.
  Result<void> find();

  /// Calls a method of the instance's object on the way to its menu, and waits for the answer. The
  /// error is a full sentence.
  Result<void> call(const char* interface, const char* method, GVariant* arguments,
                    std::chrono::milliseconds timeout);

  /// Calls a method of the instance and waits until the bus has taken the call.
  Result<void> send(const char* method, GVariant* arguments);

  const Environment& environment_;
  std::chrono::milliseconds timeout_;
  std::chrono::milliseconds menuTimeout_;
  /// Absent until it is needed. A bus that did not answer is not asked again.
  std::optional<Result<GObjectPtr<GDBusConnection>>> bus_;
};

/// What could not be delivered to the running instance.
struct DeliveryFailures {
  bool clipboard = false;
  bool notification = false;
  /// Why the first of them failed: a sentence without its full stop.
  std::string cause;

  /// One sentence about all of them; absent if there are none.
  std::optional<std::string> sentence() const;
};

/// The clipboard that the running instance owns. `instance` and `failures` must outlive it.
class RemotePasteboard final : public Pasteboard {
 public:
  RemotePasteboard(RunningInstance& instance, DeliveryFailures& failures)
      : instance_(instance), failures_(failures) {}

  /// What a bus cannot carry, U+0000, is replaced by U+FFFD.
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

  /// Granted when there is an instance.
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
