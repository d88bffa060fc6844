// Colours and fonts that come from the desktop's settings files.

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QStyle>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include "platform/qt/module/color_scheme.h"
#include "platform/qt/module/default_palettes.h"
#include "platform/qt/module/gtk_settings.h"
#include "platform/qt/module/kde_palette.h"
#include "tests/qt/pictures.h"

namespace quillmar {
namespace {

constexpr const char* darkColors =
    "[Colors:Header][Inactive]\nBackgroundNormal=1,2,3\n\n[Colors:Selection]\n"
    "BackgroundNormal=61,174,233\nForegroundNormal=252,252,252\n\n[Colors:View]\n"
    "BackgroundNormal=27,30,32\nForegroundNormal=252,252,252\n\n[Colors:Window]\n"
    "BackgroundNormal=42,46,50\nForegroundNormal=252,252,251\n";

class DesktopColorsTest : public testing::Test {
 protected:
  DesktopColorsTest() : style_(QApplication::style()->name()), font_(QApplication::font()) {}
  ~DesktopColorsTest() override {
    QApplication::setPalette(QPalette());
    QApplication::setStyle(style_);
    QApplication::setFont(font_);
  }

  QString path(const QString& name) const { return folder_.filePath(name); }
  /// As desktops do it: another file takes the place of the old one.
  void write(const QString& name, const QByteArray& text) const {
    QFile file(path(name + QStringLiteral(".new")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    QFile::remove(path(name));
    ASSERT_TRUE(file.rename(path(name)));
  }
  Environment environment(const std::string& desktop) const {
    return {.variables = {{"XDG_CURRENT_DESKTOP", desktop},
                          {"XDG_CONFIG_HOME", folder_.path().toStdString()}}};
  }
  static QColor window() { return QApplication::palette().color(QPalette::Window); }

 private:
  QTemporaryDir folder_;
  QString style_;
  QFont font_;
};

TEST_F(DesktopColorsTest, WithoutAColourSchemePlasmaIsNeutralAndLight) {
  const QPalette palette = kdePalette(path(QStringLiteral("missing")));
  EXPECT_EQ(palette.color(QPalette::Window), QColor(239, 240, 241));
  EXPECT_EQ(palette.color(QPalette::Base), QColor(Qt::white));
}

TEST_F(DesktopColorsTest, ThoseOfPlasmasSettingsFileCount) {
  write(QStringLiteral("kdeglobals"), darkColors);
  const QPalette palette = kdePalette(path(QStringLiteral("kdeglobals")));
  EXPECT_EQ(palette.color(QPalette::Window), QColor(42, 46, 50));
  EXPECT_EQ(palette.color(QPalette::WindowText), QColor(252, 252, 251));
  EXPECT_EQ(palette.color(QPalette::Base), QColor(27, 30, 32));
}

TEST_F(DesktopColorsTest, SelectedTextsAndSymbolsCanBeRead) {
  write(QStringLiteral("kdeglobals"), darkColors);
  for (const QPalette& palette :
       {kdePalette(path(QStringLiteral("missing"))), kdePalette(path(QStringLiteral("kdeglobals"))),
        lightPalette(), darkPalette()}) {
    EXPECT_GE(
        contrast(palette.color(QPalette::HighlightedText), palette.color(QPalette::Highlight)), 3);
    EXPECT_GE(contrast(palette.color(QPalette::WindowText), palette.color(QPalette::Window)), 4.5);
  }
}

TEST_F(DesktopColorsTest, WindowsFollowPlasmasSettingsFile) {
  const ColorScheme scheme(environment("KDE"));
  EXPECT_EQ(window(), QColor(239, 240, 241));
  write(QStringLiteral("kdeglobals"), darkColors);
  EXPECT_TRUE(QTest::qWaitFor([] { return window() == QColor(42, 46, 50); }, 60000));
}

TEST_F(DesktopColorsTest, WithoutAThemeWindowsHaveTheFontAndTheColoursOfGtk) {
  ASSERT_TRUE(QDir(path(QString())).mkdir(QStringLiteral("gtk-3.0")));
  write(QStringLiteral("gtk-3.0/settings.ini"), "[Settings]\ngtk-font-name=DejaVu Sans 17\n");
  const ColorScheme scheme(environment("sway"));
  EXPECT_EQ(window(), lightPalette().color(QPalette::Window));
  EXPECT_EQ(QApplication::font().family(), QStringLiteral("DejaVu Sans"));
  EXPECT_EQ(QApplication::font().pointSizeF(), 17);
}

TEST(FontNames, EndInASize) {
  const auto font = fontNamed(QStringLiteral("Noto Sans Bold 10.5"));
  ASSERT_TRUE(font);
  EXPECT_EQ(font->family(), QStringLiteral("Noto Sans"));
  EXPECT_TRUE(font->bold());
  EXPECT_EQ(font->pointSizeF(), 10.5);
  for (const char* const name : {"", "10", "Noto Sans", "Noto Sans 0"}) {
    EXPECT_FALSE(fontNamed(QString::fromLatin1(name))) << name;
  }
}

}  // namespace
}  // namespace quillmar
