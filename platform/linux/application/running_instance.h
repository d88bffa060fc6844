// The running Quillmar of the session, as another, short-lived process of the program sees it: what
// only a process that stays can do, owning the clipboard and speaking to the user, is handed over
// to it. Main thread; each call waits for the other process.

#pragma once

#include <functional>
#include <optional>
#include <string>

#include <gio/gio.h>

#include "platform/linux/bus/glib_pointers.h"
#include "platform/pasteboard.h"
#include "platform/task_queue.h"
#include "platform/user_notifications.h"

namespace quillmar {

class RunningInstance {
 public:
  /// Looks for the instance on the session bus.
  RunningInstance();

  /// The same on this bus, which may be null for none.
  explicit RunningInstance(GDBusConnection* bus);

  bool isRunning();

  /// Lets the instance do what the action says; `parameter` is taken over when floating. The error
  /// begins a sentence: "Quillmar is not running", for example.
  Result<void> activateAction(const char* action, GVariant* parameter);

 private:
  GObjectPtr<GDBusConnection> bus_;
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
