#include "platform/qt/module/color_scheme.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusReply>
#include <QDBusVariant>
#include <QFileInfo>
#include <QStyle>
#include <QStyleFactory>

#include "platform/qt/module/default_palettes.h"
#include "platform/qt/module/gtk_settings.h"
#include "platform/qt/module/kde_palette.h"

namespace quillmar {

namespace {

constexpr QLatin1String service("org.freedesktop.portal.Desktop");
constexpr QLatin1String path("/org/freedesktop/portal/desktop");
constexpr QLatin1String interface("org.freedesktop.portal.Settings");
constexpr QLatin1String appearance("org.freedesktop.appearance");
constexpr QLatin1String colorScheme("color-scheme");

/// In milliseconds. A portal that runs answers sooner.
constexpr int firstAnswerTimeout = 100;

/// The portal's values.
enum Preference : unsigned { none = 0, dark = 1, light = 2 };

std::optional<bool> preferenceOf(QVariant value) {
  // Variants lie in variants here.
  while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
  switch (value.toUInt()) {
    case dark:
      return true;
    case light:
      return false;
    default:
      return std::nullopt;
  }
}

bool isDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() <
         palette.color(QPalette::WindowText).lightness();
}

}  // namespace

ColorScheme::ColorScheme(const Environment& environment)
    : darkBySettings_(settingsAskForDark(environment)),
      // A theme would have other colours than the style by itself.
      isUnthemed_(QApplication::palette().color(QPalette::Window) ==
                  QApplication::style()->standardPalette().color(QPalette::Window)) {
  if (isKde(environment)) {
    kdeSettings_ = kdeSettingsFile(environment);
    // The file is replaced by another with each change.
    connect(&files_, &QFileSystemWatcher::directoryChanged, this, &ColorScheme::followKde);
    files_.addPath(QFileInfo(kdeSettings_).path());
    followKde();
    return;
  }
  if (isUnthemed_) {
    if (const auto font = fontOfSettings(environment)) QApplication::setFont(*font);
  }
  apply();
  askPortal();
}

void ColorScheme::followKde() {
  // Not every style takes its colours from the palette; this one does.
  if (QApplication::style()->name() != QLatin1String("fusion")) {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  }
  QApplication::setPalette(kdePalette(kdeSettings_));
}

void ColorScheme::askPortal() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return;
  // Without its name the bus does not find the slot, which takes one.
  qRegisterMetaType<QDBusVariant>("QDBusVariant");
  bus.connect(service, path, interface, QStringLiteral("SettingChanged"), this,
              SLOT(portalChanged(QString, QString, QDBusVariant)));
  QDBusMessage read =
      QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
  read << QString(appearance) << QString(colorScheme);
  // Waits, because the title bars that the toolkit draws on Wayland keep their first colours.
  const QDBusReply<QDBusVariant> answer = bus.call(read, QDBus::Block, firstAnswerTimeout);
  if (answer.isValid()) {
    setFromPortal(preferenceOf(QVariant::fromValue(answer.value())));
    return;
  }
  if (answer.error().type() != QDBusError::NoReply) return;
  auto* const watcher = new QDBusPendingCallWatcher(bus.asyncCall(read), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
    const QDBusPendingReply<QDBusVariant> reply = *watcher;
    watcher->deleteLater();
    if (reply.isValid()) setFromPortal(preferenceOf(QVariant::fromValue(reply.value())));
  });
}

void ColorScheme::portalChanged(const QString& group, const QString& key,
                                const QDBusVariant& value) {
  if (group == appearance && key == colorScheme) setFromPortal(preferenceOf(value.variant()));
}

void ColorScheme::setFromPortal(std::optional<bool> dark) {
  darkByPortal_ = dark;
  apply();
}

void ColorScheme::apply() {
  const bool wantsDark = darkByPortal_.value_or(darkBySettings_);
  if (wantsDark && !isDarkened_ && !isDark(QApplication::palette())) {
    ownStyle_ = QApplication::style()->name();
    isDarkened_ = true;
    // Not every style takes its colours from the palette; this one does.
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(darkPalette());
  } else if (!wantsDark && isDarkened_) {
    isDarkened_ = false;
    QApplication::setPalette(isUnthemed_ ? lightPalette() : QPalette());
    QApplication::setStyle(QStyleFactory::create(ownStyle_));
  } else if (!wantsDark && isUnthemed_) {
    QApplication::setPalette(lightPalette());
  }
}

}  // namespace quillmar
