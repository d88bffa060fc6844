#include "platform/qt/widgets/fonts.h"

#include <QApplication>
#include <QFontDatabase>
#include <algorithm>

namespace quillmar {

QFont desktopFont(const Font& font, const QWidget& widget) {
  QFont wanted = font.monospaced ? QFontDatabase::systemFont(QFontDatabase::FixedFont)
                                 : QApplication::font(&widget);
  const double scale = font.size / Font::defaultSize;
  if (wanted.pointSizeF() > 0) {
    wanted.setPointSizeF(wanted.pointSizeF() * scale);
  } else {
    wanted.setPixelSize(std::max(1, qRound(wanted.pixelSize() * scale)));
  }
  if (font.weight == FontWeight::semibold) wanted.setWeight(QFont::DemiBold);
  if (font.weight == FontWeight::bold) wanted.setWeight(QFont::Bold);
  return wanted;
}

}  // namespace quillmar
