#include "platform/qt/module/desktop_appearance.h"

#include <QApplication>
#include <QPalette>
#include <QSettings>
#include <QStyleFactory>
#include <string>

namespace quillmar {

namespace {

bool prefersDark(const Environment& environment) {
  std::string folder = environment.value("XDG_CONFIG_HOME").value_or("");
  if (folder.empty()) folder = environment.value("HOME").value_or("") + "/.config";
  const QSettings settings(QString::fromStdString(folder + "/gtk-3.0/settings.ini"),
                           QSettings::IniFormat);
  const QString theme = settings.value(QStringLiteral("Settings/gtk-theme-name")).toString();
  return settings.value(QStringLiteral("Settings/gtk-application-prefer-dark-theme")).toBool() ||
         theme.endsWith(QStringLiteral("-dark"), Qt::CaseInsensitive);
}

QPalette darkPalette() {
  const QColor window(0x30, 0x30, 0x30);
  const QColor base(0x24, 0x24, 0x24);
  const QColor text(0xee, 0xee, 0xee);
  const QColor dimmed(0x8c, 0x8c, 0x8c);
  const QColor accent(0x35, 0x84, 0xe4);
  QPalette palette(QColor(0x3c, 0x3c, 0x3c), window);
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::AlternateBase, window);
  palette.setColor(QPalette::Text, text);
  palette.setColor(QPalette::ButtonText, text);
  palette.setColor(QPalette::BrightText, Qt::white);
  palette.setColor(QPalette::PlaceholderText, dimmed);
  palette.setColor(QPalette::ToolTipBase, base);
  palette.setColor(QPalette::ToolTipText, text);
  palette.setColor(QPalette::Highlight, accent);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, QColor(0x78, 0xae, 0xed));
  palette.setColor(QPalette::LinkVisited, QColor(0x78, 0xae, 0xed));
  for (const QPalette::ColorRole role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(QPalette::Disabled, role, dimmed);
  }
  return palette;
}

}  // namespace

void followDesktopAppearance(const Environment& environment) {
  constexpr int darkest = 128;
  if (QApplication::palette().color(QPalette::Window).lightness() < darkest) return;
  if (!prefersDark(environment)) return;
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  QApplication::setPalette(darkPalette());
}

}  // namespace quillmar
