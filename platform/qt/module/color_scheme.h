// Dark windows on a dark desktop. The toolkit's own themes see to that on some desktops; where they
// leave windows light although the desktop says dark, they are drawn in dark colours here. Follows
// the desktop's portal while the program runs. Main thread.

#pragma once

#include <QObject>
#include <QPalette>
#include <QString>
#include <optional>

#include "platform/environment.h"

class QDBusVariant;

namespace quillmar {

class ColorScheme final : public QObject {
  Q_OBJECT

 public:
  /// Precondition: a QApplication.
  explicit ColorScheme(const Environment& environment);

 private:
  Q_SLOT void portalChanged(const QString& group, const QString& key, const QDBusVariant& value);

  void askPortal();
  /// Absent when the portal has no preference.
  void setFromPortal(std::optional<bool> dark);
  void apply();

  const bool darkBySettings_;
  std::optional<bool> darkByPortal_;
  /// What the toolkit came with, while its colours are not shown.
  QString ownStyle_;
  bool isDarkened_ = false;
};

}  // namespace quillmar
