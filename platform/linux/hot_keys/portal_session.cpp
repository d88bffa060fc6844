#include "platform/linux/hot_keys/portal_session.h"

#include <string_view>
#include <utility>

#include "platform/linux/application/application_instance.h"
#include "platform/text.h"

namespace quillmar {

namespace {

constexpr const char* shortcutsInterface = "org.freedesktop.portal.GlobalShortcuts";
constexpr const char* sessionInterface = "org.freedesktop.portal.Session";
constexpr const char* backendNamespace = "org.freedesktop.impl.portal.desktop";

using Dictionary = std::vector<std::pair<const char*, GVariant*>>;

/// Takes the floating values.
GVariant* dictionary(const Dictionary& entries) {
  GVariantBuilder builder;
  g_variant_builder_init(&builder, G_VARIANT_TYPE_VARDICT);
  for (const auto& [key, value] : entries) g_variant_builder_add(&builder, "{sv}", key, value);
  return g_variant_builder_end(&builder);
}

std::string stringIn(GVariant* dictionary, const char* key) {
  const char* value = nullptr;
  return g_variant_lookup(dictionary, key, "&s", &value) ? value : "";
}

/// Empty if there is no valid path. Documented as an object path, but most portals send a string.
std::string objectPathIn(GVariant* dictionary, const char* key) {
  const GVariantPtr value(g_variant_lookup_value(dictionary, key, nullptr));
  const bool isText = value && (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_OBJECT_PATH) ||
                                g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING));
  const char* const path = isText ? g_variant_get_string(value.get(), nullptr) : "";
  return g_variant_is_object_path(path) ? path : "";
}

/// The shortcuts in a list of the portal, with descriptions of their keys for the user.
std::map<std::string, std::string> keyTextsByID(GVariant* shortcuts) {
  std::map<std::string, std::string> texts;
  for (gsize i = 0; i < g_variant_n_children(shortcuts); ++i) {
    const char* id;
    GVariant* properties;
    g_variant_get_child(shortcuts, i, "(&s@a{sv})", &id, &properties);
    const GVariantPtr own(properties);
    texts[id] = stringIn(properties, "trigger_description");
  }
  return texts;
}

GVariantPtr listIn(GVariant* results) {
  return GVariantPtr(g_variant_lookup_value(results, "shortcuts", G_VARIANT_TYPE("a(sa{sv})")));
}

/// True if the signal NameOwnerChanged reports that a program has given up its name or ended.
bool hasEnded(GVariant* parameters) {
  const char* newOwner;
  g_variant_get(parameters, "(&s&s&s)", nullptr, nullptr, &newOwner);
  return *newOwner == '\0';
}

PortalSession* asSession(gpointer self) {
  return static_cast<PortalSession*>(self);
}

}  // namespace

PortalSession::PortalSession(const std::string& busAddress, Shortcuts shortcuts,
                             std::chrono::milliseconds responseTimeout, Handlers handlers)
    : shortcuts_(std::move(shortcuts)),
      responseTimeout_(responseTimeout),
      handlers_(std::move(handlers)) {
  const auto flags =
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  g_dbus_connection_new_for_address(busAddress.c_str(), flags, nullptr, connecting_.get(),
                                    connected, this);
}

PortalSession::~PortalSession() {
  g_cancellable_cancel(connecting_.get());
  if (!calls_) return;
  GDBusConnection* connection = calls_->connection();
  g_signal_handler_disconnect(connection, disconnection_);
  for (const guint subscription : subscriptions_) {
    g_dbus_connection_signal_unsubscribe(connection, subscription);
  }
  request_.reset();
  g_dbus_connection_close(connection, nullptr, nullptr, nullptr);
}

void PortalSession::connected(GObject*, GAsyncResult* result, gpointer self) {
  GError* error = nullptr;
  GObjectPtr<GDBusConnection> connection(g_dbus_connection_new_for_address_finish(result, &error));
  const GErrorPtr failure(error);
  // After a cancellation `self` is gone.
  if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED)) return;
  if (connection) {
    asSession(self)->start(std::move(connection));
  } else {
    asSession(self)->ended();
  }
}

void PortalSession::start(GObjectPtr<GDBusConnection> connection) {
  disconnection_ = g_signal_connect(connection.get(), "closed", G_CALLBACK(disconnected), this);
  calls_ = std::make_unique<BusCalls>(connection.get());
  kde_.emplace(*calls_, token);
  subscribe(portalName, shortcutsInterface, portalPath, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
            signalArrived);
  subscribe(portalName, sessionInterface, nullptr, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
            closedByDesktop);
  subscribe("org.freedesktop.DBus", "org.freedesktop.DBus", "/org/freedesktop/DBus", portalName,
            G_DBUS_SIGNAL_FLAGS_NONE, portalOwnerChanged);
  // The portal does not report that a backend has ended.
  subscribe("org.freedesktop.DBus", "org.freedesktop.DBus", "/org/freedesktop/DBus",
            backendNamespace, G_DBUS_SIGNAL_FLAGS_MATCH_ARG0_NAMESPACE, backendOwnerChanged);
  // Tells the application id, whichever way the program was started. Must be the connection's
  // first call; older portals do not have it.
  calls_->call({portalName, portalPath, "org.freedesktop.host.portal.Registry", "Register"},
               g_variant_new("(s@a{sv})", applicationId, dictionary({})), "()",
               [this](GVariant*, const GError*) {
                 kde_->find([this](bool isKde) {
                   if (isKde) {
                     removeUnwantedKeys();
                   } else {
                     setDialect(TriggerDialect::documented);
                     create();
                   }
                 });
               });
}

void PortalSession::subscribe(const char* sender, const char* interface, const char* path,
                              const char* argument, GDBusSignalFlags flags,
                              GDBusSignalCallback handler) {
  subscriptions_.push_back(g_dbus_connection_signal_subscribe(calls_->connection(), sender,
                                                              interface, nullptr, path, argument,
                                                              flags, handler, this, nullptr));
}

void PortalSession::setDialect(TriggerDialect dialect) {
  for (const auto& [keys, shortcut] : shortcuts_) {
    const auto trigger = portalTrigger(shortcut.symbols, keys.modifiers, dialect);
    if (!trigger) {
      refused_[keys] = HotKeyStatus::noSuchKey;
    } else if (!ids_.try_emplace(*trigger, keys).second) {
      refused_[keys] = HotKeyStatus::keyTaken;
    }
  }
}

void PortalSession::removeUnwantedKeys() {
  setDialect(TriggerDialect::kde);
  kde_->list([this](const std::vector<KdeShortcut>& stored) {
    for (const auto& shortcut : stored) {
      if (!ids_.contains(shortcut.id)) kde_->remove(shortcut);
    }
    create();
  });
}

void PortalSession::create() {
  if (ids_.empty()) {
    // The reply comes after the bus has received all earlier calls.
    return kde_->find([this](bool) { finishStart(); });
  }
  isCreating_ = true;
  request(
      "CreateSession",
      [this](const char* handleToken) {
        return g_variant_new("(@a{sv})",
                             dictionary({{"handle_token", g_variant_new_string(handleToken)},
                                         {"session_handle_token", g_variant_new_string(token)},
                                         {"shortcuts", shortcutList()}}));
      },
      responseTimeout_,
      [this](PortalRequest::Outcome outcome, GVariant* results) {
        isCreating_ = false;
        if (outcome != PortalRequest::Outcome::success) return ended();
        created(results);
      });
}

void PortalSession::created(GVariant* results) {
  handle_ = objectPathIn(results, "session_handle");
  if (handle_.empty()) return ended();
  if (closed_) return sendClose();
  const GVariantPtr granted = listIn(results);
  keysComeWithSession_ = granted != nullptr;
  if (!granted) return bind();
  updateRefusals(granted.get());
  verify();
}

void PortalSession::bind() {
  request(
      "BindShortcuts",
      [this](const char* handleToken) {
        constexpr const char* noParentWindow = "";
        return g_variant_new("(o@a(sa{sv})s@a{sv})", handle_.c_str(), shortcutList(),
                             noParentWindow,
                             dictionary({{"handle_token", g_variant_new_string(handleToken)}}));
      },
      std::nullopt,
      [this](PortalRequest::Outcome outcome, GVariant* results) {
        switch (outcome) {
          case PortalRequest::Outcome::success:
            return bound(results);
          case PortalRequest::Outcome::cancelledByUser:
            return refuseAll(HotKeyStatus::notGranted);
          case PortalRequest::Outcome::failed:
            // Another attempt might open another dialog.
            return refuseAll(HotKeyStatus::serviceFailed);
        }
      });
}

void PortalSession::bound(GVariant* results) {
  const GVariantPtr granted = listIn(results);
  // Some versions of KDE's backend do not tell which keys they have granted.
  if (!granted) return list(&PortalSession::finishStart, &PortalSession::finishStart);
  updateRefusals(granted.get());
  finishStart();
}

void PortalSession::refuseAll(HotKeyStatus status) {
  for (const auto& [id, keys] : ids_) refused_[keys] = status;
  finishStart();
}

void PortalSession::list(void (PortalSession::*listed)(), void (PortalSession::*failed)()) {
  request(
      "ListShortcuts",
      [this](const char* handleToken) {
        return g_variant_new("(o@a{sv})", handle_.c_str(),
                             dictionary({{"handle_token", g_variant_new_string(handleToken)}}));
      },
      responseTimeout_,
      [this, listed, failed](PortalRequest::Outcome outcome, GVariant* results) {
        if (outcome != PortalRequest::Outcome::success) return (this->*failed)();
        if (const GVariantPtr granted = listIn(results)) updateRefusals(granted.get());
        (this->*listed)();
      });
}

void PortalSession::updateRefusals(GVariant* granted) {
  const std::map<std::string, std::string> keyTexts = keyTextsByID(granted);
  for (const auto& [id, keys] : ids_) {
    const auto found = keyTexts.find(id);
    // As documented, a desktop may leave the text empty.
    const bool isGranted =
        found != keyTexts.end() && !(keysComeWithSession_ && found->second.empty());
    if (!isGranted) {
      refused_[keys] = HotKeyStatus::notGranted;
    } else if (const auto refusal = refused_.find(keys);
               refusal != refused_.end() && refusal->second == HotKeyStatus::notGranted) {
      refused_.erase(refusal);
    }
  }
}

void PortalSession::verify() {
  kde_->list([this](const std::vector<KdeShortcut>& stored) { verified(stored); });
}

void PortalSession::verified(const std::vector<KdeShortcut>& stored) {
  if (isClosing_) return;
  std::map<std::string, std::vector<KdeShortcut>> storedByID;
  for (const auto& shortcut : stored) storedByID[shortcut.id].push_back(shortcut);

  bool hasOtherIdentity = false;
  for (const auto& [id, keys] : ids_) {
    const std::vector<KdeShortcut>& found = storedByID[id];
    hasOtherIdentity = hasOtherIdentity || found.size() > 1;
    if (found.size() != 1 || found[0].hasKey || refused_.contains(keys)) continue;
    refused_[keys] = HotKeyStatus::keyTaken;
    // Otherwise it would stay without a key after the other program has freed the key.
    kde_->remove(found[0]);
  }
  if (!hasOtherIdentity) return finishStart();
  removeAll(stored);
  close(handlers_.ended);
}

void PortalSession::removeAll(const std::vector<KdeShortcut>& stored) {
  for (const auto& shortcut : stored) kde_->remove(shortcut);
}

void PortalSession::finishStart() {
  // The portal does not tell whether it was the backend of this session.
  if (std::exchange(hasBackendEnded_, false) && !handle_.empty()) {
    return list(&PortalSession::finishStart, &PortalSession::ended);
  }
  isStarted_ = true;
  const auto started = handlers_.started;
  started(refused_);
}

void PortalSession::reportRefusals() {
  const auto changed = handlers_.refusalsChanged;
  changed(refused_);
}

void PortalSession::ended() {
  if (closed_) return finishClose();
  const auto call = handlers_.ended;
  call();
}

void PortalSession::close(std::function<void()> closed) {
  closed_ = std::move(closed);
  if (isClosing_ || isCreating_) return;
  if (handle_.empty()) return finishClose();
  sendClose();
}

void PortalSession::sendClose() {
  isClosing_ = true;
  request_.reset();
  // The portal replies when the backend has closed the session.
  calls_->call({portalName, handle_.c_str(), sessionInterface, "Close"}, nullptr, "()",
               [this](GVariant*, const GError*) { finishClose(); });
}

void PortalSession::finishClose() {
  const auto closed = std::exchange(closed_, nullptr);
  closed();
}

void PortalSession::signalArrived(GDBusConnection*, const char*, const char*, const char*,
                                  const char* signal, GVariant* parameters, gpointer self) {
  PortalSession& session = *asSession(self);
  if (!session.isStarted_ || session.closed_) return;
  const std::string_view name = signal;
  if (name == "ShortcutsChanged") {
    if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(oa(sa{sv}))"))) return;
    const GVariantPtr granted(g_variant_get_child_value(parameters, 1));
    session.updateRefusals(granted.get());
    session.reportRefusals();
    return;
  }
  if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(osta{sv})"))) return;
  const char* id;
  guint64 timestamp;
  GVariant* options;
  g_variant_get(parameters, "(o&st@a{sv})", nullptr, &id, &timestamp, &options);
  const GVariantPtr own(options);
  const auto found = session.ids_.find(id);
  if (found == session.ids_.end()) return;
  const KeyCombination keys = found->second;
  if (name == "Activated") {
    const auto activated = session.handlers_.activated;
    activated(keys, {static_cast<std::uint32_t>(timestamp), stringIn(options, "activation_token")});
  } else if (name == "Deactivated") {
    const auto deactivated = session.handlers_.deactivated;
    deactivated(keys);
  }
}

void PortalSession::closedByDesktop(GDBusConnection*, const char*, const char*, const char*,
                                    const char*, GVariant*, gpointer self) {
  if (!asSession(self)->isClosing_) asSession(self)->ended();
}

void PortalSession::portalOwnerChanged(GDBusConnection*, const char*, const char*, const char*,
                                       const char*, GVariant* parameters, gpointer self) {
  if (hasEnded(parameters)) asSession(self)->ended();
}

void PortalSession::backendOwnerChanged(GDBusConnection*, const char*, const char*, const char*,
                                        const char*, GVariant* parameters, gpointer self) {
  PortalSession& session = *asSession(self);
  if (!hasEnded(parameters) || session.closed_) return;
  if (!session.isStarted_) {
    session.hasBackendEnded_ = true;
    return;
  }
  session.list(&PortalSession::reportRefusals, &PortalSession::ended);
}

void PortalSession::disconnected(GDBusConnection*, gboolean, GError*, gpointer self) {
  asSession(self)->ended();
}

void PortalSession::request(const char* method, const PortalRequest::Arguments& arguments,
                            PortalRequest::Timeout timeout, PortalRequest::Completion completion) {
  request_ =
      std::make_unique<PortalRequest>(*calls_, method, arguments, timeout, std::move(completion));
}

GVariant* PortalSession::shortcutList() const {
  GVariantBuilder list;
  g_variant_builder_init(&list, G_VARIANT_TYPE("a(sa{sv})"));
  for (const auto& [id, keys] : ids_) {
    const std::string description =
        text::replacingInvalidCharacters(shortcuts_.at(keys).description);
    g_variant_builder_add(
        &list, "(s@a{sv})", id.c_str(),
        // KDE ignores shortcuts without a description.
        dictionary({{"description",
                     g_variant_new_string(description.empty() ? id.c_str() : description.c_str())},
                    {"preferred_trigger", g_variant_new_string(id.c_str())}}));
  }
  return g_variant_builder_end(&list);
}

}  // namespace quillmar
