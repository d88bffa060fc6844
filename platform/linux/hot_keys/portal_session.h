// One session of the portal org.freedesktop.portal.GlobalShortcuts: a set of shortcuts that the
// desktop reports when they are pressed. To change the set, close the session and start another.
//
// Each session has a bus connection of its own. KDE stores keys under the session's token, so the
// token is always the same, and a portal that was restarted rejects a token that the connection
// used before.
//
// Nothing here blocks. Main thread.

#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gio/gio.h>

#include "platform/application.h"
#include "platform/hot_keys.h"
#include "platform/linux/bus/bus_calls.h"
#include "platform/linux/bus/glib_pointers.h"
#include "platform/linux/hot_keys/kde_global_accel.h"
#include "platform/linux/hot_keys/portal_request.h"
#include "platform/linux/hot_keys/portal_trigger.h"

namespace quillmar {

struct KeyCombination {
  /// Virtual key code (platform/virtual_key_codes.h).
  std::uint32_t keyCode = 0;
  /// Bits of hot_key_modifiers.
  std::uint32_t modifiers = 0;

  bool operator==(const KeyCombination&) const = default;
  bool operator<(const KeyCombination& other) const {
    return std::pair(keyCode, modifiers) < std::pair(other.keyCode, other.modifiers);
  }
};

class PortalSession {
 public:
  /// Identifies the session. KDE shows it in its settings.
  static constexpr const char* token = "Quillmar";

  struct Shortcut {
    /// For the desktop's settings. UTF-8.
    std::string description;
    /// What the key types. Empty if the keyboard does not have it.
    KeySymbols symbols;
  };
  using Shortcuts = std::map<KeyCombination, Shortcut>;
  using Refusals = std::map<KeyCombination, HotKeyStatus>;

  /// A handler may destroy the session.
  struct Handlers {
    /// The desktop has answered. All shortcuts work except those that were refused.
    std::function<void(Refusals refused)> started;
    /// The session could not be started, because there is no portal or it failed. Or the session
    /// ended although nobody closed it: the desktop closed it, or the portal ended.
    std::function<void()> ended;
    /// A shortcut was pressed or repeats.
    std::function<void(const KeyCombination& keys, const Activation& activation)> activated;
    std::function<void(const KeyCombination& keys)> deactivated;
    /// The user has changed keys in the desktop's settings. Replaces the earlier refusals.
    std::function<void(Refusals refused)> refusalsChanged;
  };

  /// Starts the session. Without any shortcuts it only removes those that KDE has stored, and
  /// reports `started`. Requests that ask the user nothing fail after `responseTimeout`.
  PortalSession(const std::string& busAddress, Shortcuts shortcuts,
                std::chrono::milliseconds responseTimeout, Handlers handlers);

  /// Closes the connection. The portal then ends the session at some later time.
  ~PortalSession();
  PortalSession(const PortalSession&) = delete;
  PortalSession& operator=(const PortalSession&) = delete;

  /// Ends the session and calls `closed` when its keys are free. No other handler is called any
  /// more. Call it at most once.
  void close(std::function<void()> closed);

  /// True if the desktop grants keys without asking the user.
  bool isSilent() const { return keysComeWithSession_; }

 private:
  static void connected(GObject*, GAsyncResult* result, gpointer self);
  static void signalArrived(GDBusConnection*, const char*, const char*, const char*,
                            const char* signal, GVariant* parameters, gpointer self);
  static void closedByDesktop(GDBusConnection*, const char*, const char*, const char*, const char*,
                              GVariant*, gpointer self);
  static void portalOwnerChanged(GDBusConnection*, const char*, const char*, const char*,
                                 const char*, GVariant* parameters, gpointer self);
  static void backendOwnerChanged(GDBusConnection*, const char*, const char*, const char*,
                                  const char*, GVariant* parameters, gpointer self);
  static void disconnected(GDBusConnection*, gboolean, GError*, gpointer self);

  void start(GObjectPtr<GDBusConnection> connection);
  void subscribe(const char* sender, const char* interface, const char* path, const char* argument,
                 GDBusSignalFlags flags, GDBusSignalCallback handler);
  void setDialect(TriggerDialect dialect);
  void removeUnwantedKeys();
  void removeAll(const std::vector<KdeShortcut>& stored);
  void create();
  void created(GVariant* results);
  void bind();
  void bound(GVariant* results);
  void refuseAll(HotKeyStatus status);
  void list(void (PortalSession::*listed)(), void (PortalSession::*failed)());
  void verify();
  void verified(const std::vector<KdeShortcut>& stored);
  void finishStart();
  void sendClose();
  void finishClose();
  void reportRefusals();
  void ended();

  void request(const char* method, const PortalRequest::Arguments& arguments,
               PortalRequest::Timeout timeout, PortalRequest::Completion completion);
  GVariant* shortcutList() const;
  void updateRefusals(GVariant* granted);

  Shortcuts shortcuts_;
  std::chrono::milliseconds responseTimeout_;
  Handlers handlers_;
  GObjectPtr<GCancellable> connecting_{g_cancellable_new()};
  std::unique_ptr<BusCalls> calls_;
  std::vector<guint> subscriptions_;
  gulong disconnection_ = 0;
  std::optional<KdeGlobalAccel> kde_;
  /// The shortcuts by the portal's ids, which are their triggers: an id always means the same key,
  /// so the key that a desktop has stored for it is right.
  std::map<std::string, KeyCombination> ids_;
  Refusals refused_;
  std::unique_ptr<PortalRequest> request_;
  std::string handle_;
  /// Plasma 5.27: the reply to CreateSession grants the keys. BindShortcuts ignores them there, and
  /// opens a settings window.
  bool keysComeWithSession_ = false;
  bool isCreating_ = false;
  bool isStarted_ = false;
  /// A backend ended while the session started.
  bool hasBackendEnded_ = false;
  bool isClosing_ = false;
  std::function<void()> closed_;
};

}  // namespace quillmar
