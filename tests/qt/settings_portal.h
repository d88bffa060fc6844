// A settings portal on a bus of its own, which says that the user prefers dark windows. It answers
// in its own thread, so that a program that waits for it can run in the test's process.

#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QThread>
#include <string>

#include "tests/linux/private_bus.h"

namespace quillmar {

class SettingsPortal {
 public:
  SettingsPortal();
  ~SettingsPortal();
  SettingsPortal(const SettingsPortal&) = delete;
  SettingsPortal& operator=(const SettingsPortal&) = delete;

  const std::string& busAddress() const { return bus_.address(); }

 private:
  class Settings final : public QDBusVirtualObject {
   public:
    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
  };

  PrivateBus bus_;
  QDBusConnection connection_;
  Settings settings_;
  QThread thread_;
};

}  // namespace quillmar
