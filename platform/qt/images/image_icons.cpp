#include "platform/qt/images/image_icons.h"

#include <QApplication>
#include <QCache>
#include <QPainter>
#include <QString>
#include <QStyle>

namespace quillmar {

namespace {

/// The toolkit has some pictures of its own.
QIcon standardIcon(const std::string& name) {
  const QStyle& style = *QApplication::style();
  if (name == "dialog-warning") return style.standardIcon(QStyle::SP_MessageBoxWarning);
  if (name == "dialog-information") return style.standardIcon(QStyle::SP_MessageBoxInformation);
  return {};
}

}  // namespace

QIcon iconOf(const std::optional<Image>& image) {
  if (!image) return {};
  const QIcon icon = QIcon::fromTheme(QString::fromStdString(image->name));
  return icon.isNull() ? standardIcon(image->name) : icon;
}

void tint(QPixmap& pixmap, const QColor& color) {
  QPainter painter(&pixmap);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(pixmap.rect(), color);
}

QIcon tintedIcon(const Image& image, const TemplateColors& colors, int side,
                 qreal devicePixelRatio) {
  constexpr qsizetype maximumIcons = 500;
  static QCache<QString, QIcon> made(maximumIcons);
  const QString key =
      QStringLiteral("%1 %2 %3 %4 %5 %6")
          .arg(QString::fromStdString(image.name), QIcon::themeName(),
               colors.text.name(QColor::HexArgb), colors.selectedText.name(QColor::HexArgb))
          .arg(side)
          .arg(devicePixelRatio);
  if (const QIcon* const known = made.object(key)) return *known;
  QIcon icon = iconOf(image);
  if (icon.isNull()) return icon;
  QPixmap pixmap = icon.pixmap(QSize(side, side), devicePixelRatio);
  tint(pixmap, colors.text);
  icon = QIcon(pixmap);
  tint(pixmap, colors.selectedText);
  // Styles differ in what they call the selected entry of a menu.
  icon.addPixmap(pixmap, QIcon::Active);
  icon.addPixmap(pixmap, QIcon::Selected);
  made.insert(key, new QIcon(icon));
  return icon;
}

}  // namespace quillmar
