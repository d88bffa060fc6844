#include "platform/linux/status_item/status_notifier_item.h"

#include <string_view>

#include "platform/linux/bus/markup.h"
#include "platform/linux/status_item/icon_pixmaps.h"
#include "platform/menu_label.h"
#include "platform/text.h"

namespace quillmar {

namespace {

// There is no Scroll method: turning the wheel over the icon does nothing.
constexpr const char* introspection = R"xml(<node>
  <interface name="org.kde.StatusNotifierItem">
    <property name="Category" type="s" access="read"/>
    <property name="Id" type="s" access="read"/>
    <property name="Title" type="s" access="read"/>
    <property name="Status" type="s" access="read"/>
    <property name="WindowId" type="i" access="read"/>
    <property name="IconThemePath" type="s" access="read"/>
    <property name="Menu" type="o" access="read"/>
    <property name="ItemIsMenu" type="b" access="read"/>
    <property name="IconName" type="s" access="read"/>
    <property name="IconPixmap" type="a(iiay)" access="read"/>
    <property name="IconAccessibleDesc" type="s" access="read"/>
    <property name="OverlayIconName" type="s" access="read"/>
    <property name="OverlayIconPixmap" type="a(iiay)" access="read"/>
    <property name="AttentionIconName" type="s" access="read"/>
    <property name="AttentionIconPixmap" type="a(iiay)" access="read"/>
    <property name="AttentionMovieName" type="s" access="read"/>
    <property name="ToolTip" type="(sa(iiay)ss)" access="read"/>
    <method name="Activate">
      <arg type="i" name="x" direction="in"/>
      <arg type="i" name="y" direction="in"/>
    </method>
    <method name="SecondaryActivate">
      <arg type="i" name="x" direction="in"/>
      <arg type="i" name="y" direction="in"/>
    </method>
    <method name="ContextMenu">
      <arg type="i" name="x" direction="in"/>
      <arg type="i" name="y" direction="in"/>
    </method>
    <method name="ProvideXdgActivationToken">
      <arg type="s" name="token" direction="in"/>
    </method>
    <signal name="NewTitle"/>
    <signal name="NewIcon"/>
    <signal name="NewAttentionIcon"/>
    <signal name="NewOverlayIcon"/>
    <signal name="NewToolTip"/>
    <signal name="NewStatus">
      <arg type="s" name="status"/>
    </signal>
  </interface>
</node>)xml";

GVariant* noPixmaps() {
  return g_variant_new_array(G_VARIANT_TYPE("(iiay)"), nullptr, 0);
}

StatusNotifierItemOptions sendable(StatusNotifierItemOptions options) {
  options.id = text::replacingInvalidCharacters(options.id);
  options.title = menuLabel(options.title);
  return options;
}

}  // namespace

StatusNotifierItem::StatusNotifierItem(GDBusConnection* connection, TaskQueue& mainQueue,
                                       StatusNotifierItemOptions options)
    : mainQueue_(mainQueue),
      options_(sendable(std::move(options))),
      pictures_(options_.pixmapDirectory + "/symbols.gresource"),
      self_(std::make_shared<StatusNotifierItem*>(this)),
      menu_(connection, {.iconThemePath = options_.iconThemePath, .style = menuStyle()},
            [this](const ActionEntry& entry, std::uint32_t timestamp) {
              runLater(entry, timestamp);
            }),
      object_(
          connection, objectPath, introspection,
          {.call =
               [this](const char* method, GVariant* arguments, GDBusMethodInvocation* invocation) {
                 answer(method, arguments, invocation);
               },
           .property = [this](const char* name) { return property(name); }}),
      registration_(connection, [this](StatusNotifierHost host) {
        if (hostHandler_) hostHandler_(host);
      }) {}

void StatusNotifierItem::setImage(std::optional<Image> image) {
  std::string name = image ? std::move(image->name) : std::string();
  if (name == iconName_) return;
  iconName_ = std::move(name);
  object_.emit("NewIcon", nullptr);
}

void StatusNotifierItem::setAppearance(Appearance appearance) {
  if (appearance == appearance_) return;
  appearance_ = appearance;
  if (!iconName_.empty()) object_.emit("NewIcon", nullptr);
  if (sendsPictures()) menu_.picturesChanged();
}

bool StatusNotifierItem::sendsPictures() const {
  return !options_.panel.recoloursIcons ||
         (!options_.panel.findsIconsInThemePath && !options_.areIconsRegistered);
}

DbusMenuStyle StatusNotifierItem::menuStyle() const {
  DbusMenuStyle style{.keyNames = options_.panel.shortcutKeyNames, .pictureOf = nullptr};
  if (!sendsPictures()) return style;
  style.pictureOf = [this](const std::string& iconName) {
    return pictures_.png(iconName, options_.panel.hasDarkMenus || appearance_ == Appearance::dark);
  };
  return style;
}

void StatusNotifierItem::answer(const char* method, GVariant* arguments,
                                GDBusMethodInvocation* invocation) {
  if (std::string_view(method) == "ProvideXdgActivationToken") {
    const char* token = nullptr;
    g_variant_get(arguments, "(&s)", &token);
    activationToken_ = token;
    g_dbus_method_invocation_return_value(invocation, nullptr);
    return;
  }
  if (options_.panel.opensMenuItself) {
    g_dbus_method_invocation_return_error(invocation, G_DBUS_ERROR, G_DBUS_ERROR_UNKNOWN_METHOD,
                                          "A panel of this desktop opens the menu itself.");
    return;
  }
  ScreenPoint position;
  g_variant_get(arguments, "(ii)", &position.x, &position.y);
  g_dbus_method_invocation_return_value(invocation, nullptr);
  openLater(position);
}

void StatusNotifierItem::openLater(ScreenPoint position) {
  // Panels that do not know the position send zeros.
  const bool isKnown = position != ScreenPoint{};
  mainQueue_.async([weakSelf = std::weak_ptr(self_), position, isKnown,
                    activation = Activation{0, std::exchange(activationToken_, {})}] {
    const auto self = weakSelf.lock();
    if (!self || !(*self)->openHandler_) return;
    (*self)->openHandler_(isKnown ? std::optional(position) : std::nullopt, activation);
  });
}

void StatusNotifierItem::runLater(const ActionEntry& entry, std::uint32_t timestamp) {
  Activation activation{timestamp, std::exchange(activationToken_, {})};
  mainQueue_.async([weakSelf = std::weak_ptr(self_), entry, activation = std::move(activation)] {
    if (const auto self = weakSelf.lock()) (*self)->sendAction(entry, activation);
  });
}

GVariant* StatusNotifierItem::property(const char* name) const {
  const std::string_view wanted = name;
  if (wanted == "Category") return g_variant_new_string("ApplicationStatus");
  if (wanted == "Id") return g_variant_new_string(options_.id.c_str());
  // Some panels parse titles as markup.
  if (wanted == "Title") return g_variant_new_string(escapedMarkup(options_.title).c_str());
  if (wanted == "Status") return g_variant_new_string("Active");
  if (wanted == "WindowId") return g_variant_new_int32(0);
  if (wanted == "IconThemePath") {
    return g_variant_new_string(text::replacingInvalidCharacters(options_.iconThemePath).c_str());
  }
  if (wanted == "Menu") return g_variant_new_object_path(DbusMenu::objectPath);
  // A click with any button opens the menu.
  if (wanted == "ItemIsMenu") return g_variant_new_boolean(TRUE);
  if (wanted == "IconName") {
    return g_variant_new_string(text::replacingInvalidCharacters(iconName_).c_str());
  }
  if (wanted == "IconPixmap") {
    return iconName_.empty() ? noPixmaps()
                             : loadIconPixmaps(options_.pixmapDirectory, iconName_, appearance_);
  }
  if (wanted == "IconAccessibleDesc") return g_variant_new_string(options_.title.c_str());
  if (wanted == "ToolTip") {
    return g_variant_new("(s@a(iiay)ss)", "", noPixmaps(), escapedMarkup(options_.title).c_str(),
                         "");
  }
  if (g_str_has_suffix(name, "Pixmap")) return noPixmaps();
  return g_variant_new_string("");
}

}  // namespace quillmar
