#include "tests/linux/portal_service.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "tests/linux/bus_client.h"

namespace quillmar {

namespace {

constexpr const char* portalName = "org.freedesktop.portal.Desktop";
constexpr const char* portalPath = "/org/freedesktop/portal/desktop";
constexpr const char* shortcutsInterface = "org.freedesktop.portal.GlobalShortcuts";
constexpr const char* sessionInterface = "org.freedesktop.portal.Session";

constexpr const char* shortcutsXml =
    R"xml(<node><interface name="org.freedesktop.portal.GlobalShortcuts">
  <method name="CreateSession">
    <arg direction="in" type="a{sv}"/><arg direction="out" type="o"/>
  </method>
  <method name="BindShortcuts">
    <arg direction="in" type="o"/><arg direction="in" type="a(sa{sv})"/>
    <arg direction="in" type="s"/><arg direction="in" type="a{sv}"/>
    <arg direction="out" type="o"/>
  </method>
  <method name="ListShortcuts">
    <arg direction="in" type="o"/><arg direction="in" type="a{sv}"/>
    <arg direction="out" type="o"/>
  </method>
</interface></node>)xml";

constexpr const char* registryXml =
    R"xml(<node><interface name="org.freedesktop.host.portal.Registry">
  <method name="Register"><arg direction="in" type="s"/><arg direction="in" type="a{sv}"/></method>
</interface></node>)xml";

constexpr const char* sessionXml = R"xml(<node><interface name="org.freedesktop.portal.Session">
  <method name="Close"/>
</interface></node>)xml";

constexpr const char* accelXml = R"xml(<node><interface name="org.kde.KGlobalAccel">
  <method name="allComponents"><arg direction="out" type="ao"/></method>
  <method name="unregister">
    <arg direction="in" type="s"/><arg direction="in" type="s"/>
    <arg direction="out" type="b"/>
  </method>
</interface></node>)xml";

constexpr const char* componentXml =
    R"xml(<node><interface name="org.kde.kglobalaccel.Component">
  <method name="allShortcutInfos"><arg direction="out" type="a(ssssssaiai)"/></method>
</interface></node>)xml";

std::string senderPath(std::string name) {
  name.erase(0, 1);
  std::ranges::replace(name, '.', '_');
  return name;
}

std::string stringIn(GVariant* dictionary, const char* key) {
  const char* value = nullptr;
  return g_variant_lookup(dictionary, key, "&s", &value) ? value : "";
}

/// Ids and preferred triggers.
std::map<std::string, std::string> triggersIn(GVariant* list) {
  std::map<std::string, std::string> triggers;
  for (gsize i = 0; i < g_variant_n_children(list); ++i) {
    const char* id;
    GVariant* properties;
    g_variant_get_child(list, i, "(&s@a{sv})", &id, &properties);
    const GVariantPtr own(properties);
    EXPECT_NE(stringIn(properties, "description"), "");
    triggers[id] = stringIn(properties, "preferred_trigger");
  }
  return triggers;
}

std::string joined(const std::string& method, const std::map<std::string, std::string>& triggers) {
  std::string call = method;
  for (const auto& [id, trigger] : triggers) call += " " + trigger;
  return call;
}

void finish(GDBusMethodInvocation* invocation, GVariant* result = nullptr) {
  g_dbus_method_invocation_return_value(invocation, result);
}

std::string componentPath(std::string identity) {
  std::ranges::replace(identity, '.', '_');
  return "/component/" + identity;
}

}  // namespace

struct PortalService::Program {
  Program(const PrivateBus& bus, const char* programName)
      : connection(bus.connect()), name(programName) {}
  ~Program() {
    objects.clear();
    // The bus answers this before another program can ask for the name.
    releaseName(connection.get(), name);
    g_dbus_connection_close_sync(connection.get(), nullptr, nullptr);
  }
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  void add(const std::string& path, const char* xml, decltype(DbusObject::Handlers::call) handler) {
    objects.push_back(std::make_unique<DbusObject>(
        connection.get(), path.c_str(), xml,
        DbusObject::Handlers{.call = std::move(handler), .property = nullptr}));
  }
  /// Takes the name, once all objects are there.
  void start() const { EXPECT_TRUE(takeName(connection.get(), name)); }

  GObjectPtr<GDBusConnection> connection;
  const char* name;
  std::vector<std::unique_ptr<DbusObject>> objects;
};

PortalService::PortalService(const PrivateBus& bus, Kind kind) : bus_(bus), kind_(kind) {
  if (kind_ == Kind::plasma) startKde();
  startPortal();
}

PortalService::~PortalService() {
  session_.reset();
}

void PortalService::startPortal() {
  portal_ = std::make_unique<Program>(bus_, portalName);
  if (kind_ != Kind::withoutShortcuts) {
    portal_->add(portalPath, shortcutsXml,
                 [this](const char* method, GVariant* arguments, GDBusMethodInvocation* call) {
                   handlePortal(method, arguments, call);
                 });
  }
  if (hasRegistry_) {
    portal_->add(portalPath, registryXml,
                 [this](const char*, GVariant* arguments, GDBusMethodInvocation* call) {
                   const char* id;
                   g_variant_get_child(arguments, 0, "&s", &id);
                   calls_.push_back(std::string("Register ") + id);
                   finish(call);
                 });
  }
  portal_->start();
  startBackend();
}

void PortalService::stopPortal() {
  session_.reset();
  portal_.reset();
}

void PortalService::exportRegistry() {
  hasRegistry_ = true;
  stopPortal();
  startPortal();
}

void PortalService::startBackend() {
  if (backend_) return;
  backend_ = std::make_unique<Program>(bus_, "org.freedesktop.impl.portal.desktop.test");
  backend_->start();
}

void PortalService::stopBackend() {
  backend_.reset();
  backendSessions_.clear();
  if (session_) session_->isAlive = false;
}

void PortalService::handlePortal(const std::string& method, GVariant* arguments,
                                 GDBusMethodInvocation* invocation) {
  if (method == "CreateSession") return createSession(arguments, invocation);
  if (method == "BindShortcuts") return bindShortcuts(arguments, invocation);
  calls_.emplace_back("ListShortcuts");
  const bool isAlive = session_ && session_->isAlive;
  startBackend();
  const GVariantPtr options(g_variant_get_child_value(arguments, 1));
  respond(invocation, options.get(), isAlive ? success : failed,
          isAlive ? g_variant_new_parsed("{'shortcuts': <%@a(sa{sv})>}", shortcutList()) : nullptr);
}

void PortalService::createSession(GVariant* arguments, GDBusMethodInvocation* invocation) {
  startBackend();
  const GVariantPtr options(g_variant_get_child_value(arguments, 0));
  const GVariantPtr list(
      g_variant_lookup_value(options.get(), "shortcuts", G_VARIANT_TYPE("a(sa{sv})")));
  const bool isPlasma = kind_ == Kind::plasma;
  const auto wanted = isPlasma && list ? triggersIn(list.get()) : decltype(triggersIn(nullptr)){};
  calls_.push_back(joined("CreateSession", wanted));
  if (kind_ == Kind::mute) return finish(invocation, g_variant_new("(o)", portalPath));

  const std::string sender = g_dbus_method_invocation_get_sender(invocation);
  const std::string token = stringIn(options.get(), "session_handle_token");
  const std::string path = std::string(portalPath) + "/session/" + senderPath(sender) + "/" + token;
  // A backend that still has the session of a portal that was restarted refuses its path.
  const bool fails = kind_ == Kind::failing || sessionsToFail_-- > 0;
  if (fails || !backendSessions_.insert(path).second) {
    return respond(invocation, options.get(), failed, nullptr);
  }
  if (replacedHandle_) {
    return respond(invocation, options.get(), success, g_variant_new_parsed(replacedHandle_));
  }
  EXPECT_FALSE(session_ && session_->isAlive) << "Another session is open.";
  session_ = Session();
  session_->path = path;
  session_->sender = sender;
  session_->identity = applicationID_ + token;
  session_->object = std::make_unique<DbusObject>(
      portal_->connection.get(), path.c_str(), sessionXml,
      DbusObject::Handlers{.call =
                               [this](const char*, GVariant*, GDBusMethodInvocation* call) {
                                 calls_.emplace_back("Close");
                                 finish(call);
                                 backendSessions_.erase(session_->path);
                                 session_.reset();
                               },
                           .property = nullptr});
  if (isPlasma) {
    store(wanted);
    respond(invocation, options.get(), success,
            g_variant_new_parsed("{'session_handle': <%s>, 'shortcuts': <%@a(sa{sv})>}",
                                 path.c_str(), shortcutList()));
  } else {
    respond(invocation, options.get(), success, g_variant_new_parsed(handleFormat_, path.c_str()));
  }
}

void PortalService::bindShortcuts(GVariant* arguments, GDBusMethodInvocation* invocation) {
  const GVariantPtr list(g_variant_get_child_value(arguments, 1));
  calls_.push_back(joined("BindShortcuts", triggersIn(list.get())));
  if (keepsDialogsOpen_) {
    dialog_ = invocation;
  } else {
    respondToBinding(invocation);
  }
}

void PortalService::respondToBinding(GDBusMethodInvocation* invocation) {
  GVariant* const arguments = g_dbus_method_invocation_get_parameters(invocation);
  const GVariantPtr list(g_variant_get_child_value(arguments, 1));
  const GVariantPtr options(g_variant_get_child_value(arguments, 3));
  const auto wanted = triggersIn(list.get());
  if (bindingResponse_ != success) {
    return respond(invocation, options.get(), bindingResponse_, nullptr);
  }
  for (const auto& [id, trigger] : wanted) {
    if (!taken_.contains(trigger) && !denied_.contains(trigger)) session_->shortcuts[id] = trigger;
  }
  respond(invocation, options.get(), success,
          kind_ == Kind::silentBind
              ? nullptr
              : g_variant_new_parsed("{'shortcuts': <%@a(sa{sv})>}", shortcutList()));
}

void PortalService::respond(GDBusMethodInvocation* invocation, GVariant* options, unsigned response,
                            GVariant* results) {
  const std::string sender = g_dbus_method_invocation_get_sender(invocation);
  const std::string path = std::string(portalPath) + "/request/" + senderPath(sender) + "/" +
                           stringIn(options, "handle_token");
  finish(invocation, g_variant_new("(o)", path.c_str()));
  if (!results) results = g_variant_new_array(G_VARIANT_TYPE("{sv}"), nullptr, 0);
  g_dbus_connection_emit_signal(portal_->connection.get(), sender.c_str(), path.c_str(),
                                "org.freedesktop.portal.Request", "Response",
                                g_variant_new("(u@a{sv})", response, results), nullptr);
}

GVariant* PortalService::shortcutList() const {
  GVariantBuilder list;
  g_variant_builder_init(&list, G_VARIANT_TYPE("a(sa{sv})"));
  for (const auto& [id, keys] : session_->shortcuts) {
    g_variant_builder_add(&list, "(s@a{sv})", id.c_str(),
                          g_variant_new_parsed("{'trigger_description': <%s>}", keys.c_str()));
  }
  return g_variant_builder_end(&list);
}

void PortalService::startKde() {
  kde_ = std::make_unique<Program>(bus_, "org.kde.kglobalaccel");
  kde_->add("/kglobalaccel", accelXml,
            [this](const std::string& method, GVariant* arguments, GDBusMethodInvocation* call) {
              if (method == "allComponents") {
                GVariantBuilder paths;
                g_variant_builder_init(&paths, G_VARIANT_TYPE("ao"));
                for (const auto& [identity, shortcuts] : stored_) {
                  g_variant_builder_add(&paths, "o", componentPath(identity).c_str());
                }
                return finish(call, g_variant_new("(ao)", &paths));
              }
              const char *identity, *id;
              g_variant_get(arguments, "(&s&s)", &identity, &id);
              calls_.push_back(std::string("unregister ") + identity + " " + id);
              finish(call, g_variant_new("(b)", stored_[identity].erase(id) > 0));
            });
  kde_->start();
}

void PortalService::exportComponent(const std::string& identity) {
  if (stored_.contains(identity)) return;
  stored_[identity];
  kde_->add(componentPath(identity), componentXml,
            [this, identity](const char*, GVariant*, GDBusMethodInvocation* call) {
              GVariantBuilder infos;
              g_variant_builder_init(&infos, G_VARIANT_TYPE("a(ssssssaiai)"));
              for (const auto& [id, keys] : stored_[identity]) {
                constexpr gint32 anyKey = 301989963;
                const gint32 key = keys.empty() ? 0 : anyKey;
                const auto array = [](gint32 value) {
                  return g_variant_new_fixed_array(G_VARIANT_TYPE_INT32, &value, 1, sizeof value);
                };
                g_variant_builder_add(&infos, "(ssssss@ai@ai)", id.c_str(), "Title",
                                      identity.c_str(), identity.c_str(), "default",
                                      "Default Context", array(key), array(anyKey));
              }
              finish(call, g_variant_new("(a(ssssssaiai))", &infos));
            });
}

void PortalService::store(const std::map<std::string, std::string>& wanted) {
  exportComponent(session_->identity);
  auto& stored = stored_[session_->identity];
  for (const auto& [id, trigger] : wanted) {
    const auto known = stored.find(id);
    // The portal claims new keys without knowing whether it got them.
    session_->shortcuts[id] = known == stored.end() ? trigger : known->second;
    if (known == stored.end()) stored[id] = isFree(trigger) ? trigger : "";
  }
}

bool PortalService::isFree(const std::string& keys) const {
  if (taken_.contains(keys)) return false;
  if (kind_ != Kind::plasma) return !session_ || !session_->shortcuts.contains(keys);
  return std::ranges::none_of(stored_, [&](const auto& component) {
    return std::ranges::any_of(component.second,
                               [&](const auto& entry) { return entry.second == keys; });
  });
}

bool PortalService::take(const std::string& keys) {
  return isFree(keys) && taken_.insert(keys).second;
}

void PortalService::reassign(const std::string& id, const std::string& keys) {
  ASSERT_TRUE(session_);
  if (kind_ == Kind::plasma) {
    stored_[session_->identity][id] = keys;
    session_->shortcuts[id] = keys;
  } else if (keys.empty()) {
    session_->shortcuts.erase(id);
  } else {
    session_->shortcuts[id] = keys;
  }
  emit("ShortcutsChanged", g_variant_new("(o@a(sa{sv}))", session_->path.c_str(), shortcutList()));
}

void PortalService::closeSession() {
  ASSERT_TRUE(session_);
  const Session closed = *std::exchange(session_, std::nullopt);
  backendSessions_.erase(closed.path);
  g_dbus_connection_emit_signal(portal_->connection.get(), closed.sender.c_str(),
                                closed.path.c_str(), sessionInterface, "Closed",
                                g_variant_new_parsed("(@a{sv} {},)"), nullptr);
}

void PortalService::press(const std::string& keys) {
  activate(keys);
  deactivate(keys);
}

void PortalService::activate(const std::string& keys, std::uint64_t timestamp,
                             const std::string& activationToken) {
  emitKey("Activated", keys, timestamp, activationToken);
}

void PortalService::deactivate(const std::string& keys) {
  emitKey("Deactivated", keys, 0, {});
}

void PortalService::emitKey(const char* signal, const std::string& keys, std::uint64_t timestamp,
                            const std::string& activationToken) {
  if (!session_ || !session_->isAlive) return;
  for (const auto& [id, claimed] : session_->shortcuts) {
    const std::string& actual = kind_ == Kind::plasma ? stored_[session_->identity][id] : claimed;
    if (actual != keys) continue;
    GVariant* options =
        activationToken.empty()
            ? g_variant_new_array(G_VARIANT_TYPE("{sv}"), nullptr, 0)
            : g_variant_new_parsed("{'activation_token': <%s>}", activationToken.c_str());
    emit(signal,
         g_variant_new("(ost@a{sv})", session_->path.c_str(), id.c_str(), timestamp, options));
    return;
  }
}

void PortalService::emit(const char* signal, GVariant* parameters) {
  const std::string program = session_->sender;
  g_dbus_connection_emit_signal(portal_->connection.get(), program.c_str(), portalPath,
                                shortcutsInterface, signal, parameters, nullptr);
  // The program handles messages in order.
  callOnBus(portal_->connection.get(), {program, "/", "org.freedesktop.DBus.Peer"}, "Ping",
            nullptr);
}

}  // namespace quillmar
