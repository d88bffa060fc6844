// Windows in the colours and the font of the desktop. On Plasma the colours are those of the user's
// settings file. On other desktops the toolkit's theme decides. If there is no theme, windows use
// this program's light or dark palette and the GTK font. If the theme ignores the desktop's dark
// preference, they use this program's dark palette. Follows the desktop while the program runs.
// Main thread.

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
  /// Absent if the portal has no preference.
  void setFromPortal(std::optional<bool> dark);
  void apply();
  void followKde();

  /// Empty on other desktops.
  QString kdeSettings_;
  QFileSystemWatcher files_;
  const bool darkBySettings_;
  std::optional<bool> darkByPortal_;
  /// True if the toolkit has no theme for the desktop.
  bool isUnthemed_ = false;
  /// The name of the desktop's style, while windows use the dark palette instead.
  QString ownStyle_;
  bool isDarkened_ = false;
};

}  // namespace quillmar
