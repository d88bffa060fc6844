// The part of a Wayland desktop that grants shortcuts to programs: the portal, its backend, and on
// KDE the service that stores the keys. Each is a program of its own on the bus. Its calls arrive
// while the main loop runs.

#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gio/gio.h>

#include "platform/linux/bus/dbus_object.h"
#include "platform/linux/bus/glib_pointers.h"
#include "tests/linux/private_bus.h"

namespace quillmar {

class PortalService {
 public:
  enum class Kind {
    /// As documented: BindShortcuts grants keys.
    documented,
    /// As documented, but the reply to BindShortcuts does not list the shortcuts.
    silentBind,
    /// Plasma 5.27: CreateSession grants keys, claims those of other programs too, and stores them.
    plasma,
    /// A portal without the interface GlobalShortcuts.
    withoutShortcuts,
    /// A portal whose backend fails.
    failing,
    /// A portal that accepts CreateSession and never responds.
    mute,
  };

  PortalService(const PrivateBus& bus, Kind kind);
  ~PortalService();
  PortalService(const PortalService&) = delete;
  PortalService& operator=(const PortalService&) = delete;

  /// Exports the host registry, too.
  void exportRegistry();

  /// Sends Activated and Deactivated, and returns when the program has handled them. Keys are
  /// written as triggers.
  void press(const std::string& keys);
  void activate(const std::string& keys, std::uint64_t timestamp = 0,
                const std::string& activationToken = {});
  void deactivate(const std::string& keys);

  /// Another program gets the keys; false if they are taken.
  bool take(const std::string& keys);
  void releaseTaken() { taken_.clear(); }

  /// The user denies the shortcuts with these keys.
  void deny(const std::string& keys) { denied_.insert(keys); }
  void cancelDialogs() { bindingResponse_ = cancelled; }
  void failDialogs() { bindingResponse_ = failed; }
  /// Dialogs stay open until answerDialog().
  void keepDialogsOpen() { keepsDialogsOpen_ = true; }
  bool hasDialog() const { return dialog_ != nullptr; }
  void answerDialog() {
    keepsDialogsOpen_ = false;
    respondToBinding(std::exchange(dialog_, nullptr));
  }
  /// The user changes the keys of a shortcut in the settings; empty for none.
  void reassign(const std::string& id, const std::string& keys);

  /// The next sessions cannot be started.
  void failSessions(int count) { sessionsToFail_ = count; }
  /// Responses to CreateSession contain this instead of the path of a session, in the text format
  /// of GVariant.
  void replaceSessionHandle(const char* handle) { replacedHandle_ = handle; }
  void sendHandlesAsObjectPaths() { handleFormat_ = "{'session_handle': <%o>}"; }
  void closeSession();
  void stopPortal();
  void startPortal();
  void stopBackend();
  /// The application id of programs that start sessions from now on.
  void setApplicationID(std::string id) { applicationID_ = std::move(id); }

  /// Every call, such as "CreateSession LOGO+a LOGO+b", since the last time.
  std::vector<std::string> takeCalls() { return std::exchange(calls_, {}); }
  bool hasSession() const { return session_.has_value(); }
  /// Ids of the stored shortcuts by identity, with their keys.
  std::map<std::string, std::map<std::string, std::string>> stored() const { return stored_; }

 private:
  // Values of the signal Response.
  static constexpr unsigned success = 0;
  static constexpr unsigned cancelled = 1;
  static constexpr unsigned failed = 2;

  struct Session {
    std::string path;
    std::string sender;
    std::string identity;
    /// Ids with the keys that the portal claims.
    std::map<std::string, std::string> shortcuts;
    /// False after the end of the backend.
    bool isAlive = true;
    std::unique_ptr<DbusObject> object;
  };
  /// One program on the bus.
  struct Program;

  void handlePortal(const std::string& method, GVariant* arguments,
                    GDBusMethodInvocation* invocation);
  void createSession(GVariant* arguments, GDBusMethodInvocation* invocation);
  void bindShortcuts(GVariant* arguments, GDBusMethodInvocation* invocation);
  void respondToBinding(GDBusMethodInvocation* invocation);
  void respond(GDBusMethodInvocation* invocation, GVariant* options, unsigned response,
               GVariant* results);
  void startBackend();
  void startKde();
  void store(const std::map<std::string, std::string>& wanted);
  void exportComponent(const std::string& identity);
  bool isFree(const std::string& keys) const;
  GVariant* shortcutList() const;
  void emit(const char* signal, GVariant* parameters);
  void emitKey(const char* signal, const std::string& keys, std::uint64_t timestamp,
               const std::string& activationToken);

  const PrivateBus& bus_;
  Kind kind_;
  bool hasRegistry_ = false;
  std::unique_ptr<Program> portal_;
  std::unique_ptr<Program> backend_;
  std::unique_ptr<Program> kde_;
  std::string applicationID_;
  std::optional<Session> session_;
  /// Paths of the sessions that the backend has; it outlives the portal.
  std::set<std::string> backendSessions_;
  std::map<std::string, std::map<std::string, std::string>> stored_;
  std::set<std::string> taken_;
  std::set<std::string> denied_;
  unsigned bindingResponse_ = success;
  bool keepsDialogsOpen_ = false;
  GDBusMethodInvocation* dialog_ = nullptr;
  int sessionsToFail_ = 0;
  const char* replacedHandle_ = nullptr;
  const char* handleFormat_ = "{'session_handle': <%s>}";
  std::vector<std::string> calls_;
};

}  // namespace quillmar
