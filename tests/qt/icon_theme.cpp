#include "tests/qt/icon_theme.h"

#include <QDir>
#include <QFile>
#include <QIcon>

#include <gtest/gtest.h>

namespace quillmar {

namespace {

constexpr QLatin1String themeName("quillmar-test");

}  // namespace

IconTheme::IconTheme() : pathsBefore_(QIcon::themeSearchPaths()), nameBefore_(QIcon::themeName()) {}

IconTheme::~IconTheme() {
  QIcon::setThemeSearchPaths(pathsBefore_);
  QIcon::setThemeName(nameBefore_);
}

void IconTheme::add(const QString& name, int side, int scale, const QImage& picture) {
  const QString theme = folder_.filePath(themeName);
  const QString folder = QStringLiteral("%1@%2").arg(side).arg(scale);
  QDir().mkpath(theme + QLatin1Char('/') + folder);
  EXPECT_TRUE(picture.save(QStringLiteral("%1/%2/%3.png").arg(theme, folder, name)));
  if (!folders_.contains(folder)) folders_.append(folder);

  QString index = QStringLiteral("[Icon Theme]\nName=Test\nComment=Test\nDirectories=%1\n")
                      .arg(folders_.join(QLatin1Char(',')));
  for (const QString& each : folders_) {
    const QStringList parts = each.split(QLatin1Char('@'));
    index += QStringLiteral("[%1]\nSize=%2\nScale=%3\nType=Fixed\n").arg(each, parts[0], parts[1]);
  }
  QFile file(theme + QStringLiteral("/index.theme"));
  EXPECT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(index.toUtf8());
  file.close();
  QIcon::setThemeSearchPaths({folder_.path()});
  QIcon::setThemeName(themeName);
}

QImage plainPicture(int side, const QColor& color) {
  return checkeredPicture(side, color, color);
}

QImage checkeredPicture(int side, const QColor& one, const QColor& other) {
  QImage picture(side, side, QImage::Format_ARGB32);
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) picture.setPixelColor(x, y, (x + y) % 2 == 0 ? one : other);
  }
  return picture;
}

}  // namespace quillmar
