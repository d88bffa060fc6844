#include "platform/qt/module/kde_palette.h"

#include <QColor>
#include <QSettings>
#include <QStringList>

#include "platform/qt/module/settings_folder.h"
#include "platform/qt/widgets/colors.h"
#include "platform/text.h"

namespace quillmar {

namespace {

/// Of the text's colour in that of disabled texts, the rest being the background's.
constexpr float disabledShare = 0.4F;

class KdeColors {
 public:
  explicit KdeColors(const QString& file) : settings_(file, QSettings::IniFormat) {}

  /// `group` and `key` as in the file. Colours are three or four numbers with commas.
  QColor color(const char* group, const char* key, const QColor& fallback) const {
    const QStringList parts =
        settings_
            .value(QStringLiteral("Colors:%1/%2").arg(QLatin1String(group), QLatin1String(key)))
            .toStringList();
    if (parts.size() < 3) return fallback;
    const QColor found(parts[0].toInt(), parts[1].toInt(), parts[2].toInt());
    return found.isValid() ? found : fallback;
  }

 private:
  QSettings settings_;
};

}  // namespace

bool isKde(const Environment& environment) {
  for (const std::string& desktop :
       text::split(environment.value("XDG_CURRENT_DESKTOP").value_or(""), ':')) {
    if (desktop == "KDE") return true;
  }
  return false;
}

QString kdeSettingsFile(const Environment& environment) {
  return QString::fromStdString(settingsFolder(environment) + "/kdeglobals");
}

QPalette kdePalette(const QString& settingsFile) {
  const KdeColors colors(settingsFile);
  const QColor dark(35, 38, 41);
  const QColor window = colors.color("Window", "BackgroundNormal", QColor(239, 240, 241));
  const QColor text = colors.color("Window", "ForegroundNormal", dark);
  const QColor button = colors.color("Button", "BackgroundNormal", QColor(252, 252, 252));
  const QColor base = colors.color("View", "BackgroundNormal", Qt::white);
  const QColor baseText = colors.color("View", "ForegroundNormal", dark);
  const QColor selected = colors.color("Selection", "BackgroundNormal", QColor(61, 174, 233));
  const QColor selectedText = colors.color("Selection", "ForegroundNormal", Qt::white);

  QPalette palette(button, window);
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::AlternateBase,
                   colors.color("View", "BackgroundAlternate", QColor(247, 247, 247)));
  palette.setColor(QPalette::Text, baseText);
  palette.setColor(QPalette::PlaceholderText,
                   colors.color("View", "ForegroundInactive", QColor(112, 125, 138)));
  palette.setColor(QPalette::ButtonText, colors.color("Button", "ForegroundNormal", dark));
  palette.setColor(QPalette::ToolTipBase,
                   colors.color("Tooltip", "BackgroundNormal", QColor(247, 247, 247)));
  palette.setColor(QPalette::ToolTipText, colors.color("Tooltip", "ForegroundNormal", dark));
  // White on the desktop's own blue has a contrast of 2.4:1.
  palette.setColor(QPalette::Highlight, readableColor(selected, selectedText, Qt::black));
  palette.setColor(QPalette::HighlightedText, selectedText);
  palette.setColor(QPalette::Link, colors.color("View", "ForegroundLink", QColor(41, 128, 185)));
  palette.setColor(QPalette::LinkVisited,
                   colors.color("View", "ForegroundVisited", QColor(155, 89, 182)));
  palette.setColor(QPalette::Disabled, QPalette::WindowText, mixed(window, text, disabledShare));
  palette.setColor(QPalette::Disabled, QPalette::Text, mixed(base, baseText, disabledShare));
  palette.setColor(QPalette::Disabled, QPalette::ButtonText,
                   mixed(button, palette.color(QPalette::ButtonText), disabledShare));
  palette.setColor(QPalette::Disabled, QPalette::Highlight, mixed(window, text, disabledShare));
  palette.setColor(QPalette::Disabled, QPalette::HighlightedText, window);
  return palette;
}

}  // namespace quillmar
