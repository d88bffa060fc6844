// The running Quillmar of the session, as another, short-lived process of the program sees it: what
// only a process that stays can do, owning the clipboard and speaking to the user, is handed over
// to it. Main thread; calls wait for the bus, with a limit, and but for showMenu() never for the
// other process, which a command in the foreground may hold.

#pragma once

#include <chrono>
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
  static constexpr std::chrono::milliseconds menuPatience = std::chrono::seconds(30);

  /// Connects to the environment's session bus when it is first needed. Waits for `patience` at
  /// most for each answer of the bus. `environment` must outlive it.
  explicit RunningInstance(const Environment& environment,
                           std::chrono::milliseconds patience = busPatience,
                           std::chrono::milliseconds forMenu = menuPatience)
      : environment_(environment), patience_(patience), menuPatience_(forMenu) {}

  bool isRunning() { return find().ok(); }

  /// Tells the instance that the program was started again. One that does not hear it within the
  /// patience forgets it. The error begins a sentence.
  Result<void> activate();

  /// Has the instance show its menu. Waits for the patience at most until it listens, and from then
  /// on as long as a menu may take; an instance that hears of it late shows nothing. The error is a
  /// full sentence.
  Result<void> showMenu();

  /// Hands the action over, which the instance does as soon as it can: actions in the order in
  /// which they were handed over. `parameter` is taken over when floating. The error begins a
  /// sentence: "Quillmar is not running", for example.
  Result<void> activateAction(const char* action, GVariant* parameter);

 private:
  /// Asks the bus whether there is an instance; the error says why not.
  Result<void> find();

  /// Calls a method of the instance's object on the way to its menu, and waits for the answer. The
  /// error is a full sentence.
  Result<void> call(const char* interface, const char* method, GVariant* arguments,
                    std::chrono::milliseconds patience);

  /// Calls a method of the instance and waits until the bus has taken the call.
  Result<void> send(const char* method, GVariant* arguments);

  const Environment& environment_;
  std::chrono::milliseconds patience_;
  std::chrono::milliseconds menuPatience_;
  /// Absent until it is needed. A bus that did not answer is not asked again.
  std::optional<Result<GObjectPtr<GDBusConnection>>> bus_;
};

/// What could not be handed over, for the one line that the user gets about it in the end.
struct LeftOut {
  bool clipboard = false;
  bool notification = false;
  /// Why the first of them was left out: a sentence without its end.
  std::string cause;

  /// One sentence; nothing when nothing was left out.
  std::optional<std::string> sentence() const;
};

/// The clipboard that the running instance owns. `instance` and `leftOut` must outlive it.
class RemotePasteboard final : public Pasteboard {
 public:
  RemotePasteboard(RunningInstance& instance, LeftOut& leftOut)
      : instance_(instance), leftOut_(leftOut) {}

  /// What a bus cannot carry, U+0000, is replaced by U+FFFD.
  void setString(std::string text) override;

 private:
  RunningInstance& instance_;
  LeftOut& leftOut_;
};

/// Notifications that the running instance shows. `instance`, `leftOut` and the main queue must
/// outlive it.
class RemoteNotifications final : public UserNotificationCenter {
 public:
  RemoteNotifications(RunningInstance& instance, LeftOut& leftOut, TaskQueue& mainQueue)
      : instance_(instance), leftOut_(leftOut), mainQueue_(mainQueue) {}

  /// Granted when there is an instance.
  void requestAuthorization(AuthorizationOptions options,
                            std::function<void(bool granted)> completion) override;

  /// The completion never gets an error: what could not be handed over is in the record, for the
  /// one line about it all.
  void add(UserNotification notification,
           std::function<void(std::optional<Error>)> completion) override;

 private:
  RunningInstance& instance_;
  LeftOut& leftOut_;
  TaskQueue& mainQueue_;
};

}  // namespace quillmar
