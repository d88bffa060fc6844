// Windows in the colours and the font of the desktop. On Plasma they are those of the user's
// settings file. Elsewhere the toolkit's own themes see to it; where there is no such theme, or it
// leaves windows light although the desktop says dark, windows get the light or dark default
// colours of this program and the font of the GTK settings. Follows the desktop while the program
// runs. Main thread.

#pragma once

#include <QFileSystemWatcher>
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
  void followKde();

  /// Empty on other desktops.
  QString kdeSettings_;
  QFileSystemWatcher files_;
  const bool darkBySettings_;
  std::optional<bool> darkByPortal_;
  /// True when the toolkit has no theme for the desktop.
  bool isUnthemed_ = false;
  /// What the toolkit came with, while its colours are not shown.
  QString ownStyle_;
  bool isDarkened_ = false;
};

}  // namespace quillmar
