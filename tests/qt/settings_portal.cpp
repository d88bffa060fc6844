#include "tests/qt/settings_portal.h"

#include <QDBusMessage>
#include <QDBusVariant>

#include <gtest/gtest.h>

namespace quillmar {

namespace {

constexpr unsigned prefersDark = 1;

}  // namespace

SettingsPortal::SettingsPortal()
    : connection_(QDBusConnection::connectToBus(QString::fromStdString(bus_.address()),
                                                QStringLiteral("portal"))) {
  settings_.moveToThread(&thread_);
  EXPECT_TRUE(connection_.registerVirtualObject(QStringLiteral("/org/freedesktop/portal/desktop"),
                                                &settings_));
  EXPECT_TRUE(connection_.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
  thread_.start();
}

SettingsPortal::~SettingsPortal() {
  thread_.quit();
  thread_.wait();
  QDBusConnection::disconnectFromBus(connection_.name());
}

QString SettingsPortal::Settings::introspect(const QString& /*path*/) const {
  return {};
}

bool SettingsPortal::Settings::handleMessage(const QDBusMessage& message,
                                             const QDBusConnection& connection) {
  if (message.member() != QLatin1String("Read")) return false;
  // A variant in a variant, as portals answer.
  const QDBusVariant value(QVariant::fromValue(QDBusVariant(prefersDark)));
  return connection.send(message.createReply(QVariant::fromValue(value)));
}

}  // namespace quillmar
