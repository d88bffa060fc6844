// Windows on a screen that has four pixels where others have one. Every test has an application of
// its own: the scale is one for life.

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QTextLayout>
#include <QWidget>
#include <array>
#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_task_queues.h"
#include "platform/qt/menus/menu_widget.h"
#include "platform/widgets/image_view.h"
#include "platform/widgets/label.h"
#include "platform/widgets/stack_view.h"
#include "tests/qt/icon_theme.h"
#include "tests/qt/menus.h"
#include "tests/qt/pictures.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

class DenseScreen {
 public:
  DenseScreen() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", "2");
    application_.emplace(argumentCount_, arguments_.data());
    QApplication::setQuitOnLastWindowClosed(false);
  }

 private:
  std::array<char, 5> name_{"test"};
  std::array<char*, 2> arguments_{name_.data(), nullptr};
  int argumentCount_ = 1;
  std::optional<QApplication> application_;
};

class SharpnessTest : public testing::Test {
 protected:
  SharpnessTest() { stack.setAlignment(StackAlignment::leading); }

  /// The icon "checkers", drawn for 16 x 16 and, another picture, for twice as many pixels.
  void addCheckers() {
    theme.add("checkers", 16, 1, plainPicture(16, Qt::green));
    theme.add("checkers", 16, 2, checkeredPicture(32, Qt::red, Qt::blue));
  }
  QImage pictureOfCheckers(bool isTemplate) {
    ImageView& image = stack.add<ImageView>(
        Image{.name = "checkers", .isTemplate = isTemplate, .pointSize = {}, .weight = {}});
    image.setWidth(16);
    image.setHeight(16);
    show();
    return pictureOf(image);
  }
  void show() {
    ASSERT_TRUE(window.show({}).ok());
    user.settle();
  }

  DenseScreen screen;
  QtUser user;
  IconTheme theme;
  Window window{user.windows()};
  StackView& stack = window.setContent<StackView>(Orientation::vertical);
};

TEST_F(SharpnessTest, AnIconIsDrawnInThePixelsOfTheScreen) {
  addCheckers();
  const QImage picture = pictureOfCheckers(false);
  EXPECT_EQ(picture.convertToFormat(QImage::Format_RGB32),
            checkeredPicture(32, Qt::red, Qt::blue).convertToFormat(QImage::Format_RGB32));
}

TEST_F(SharpnessTest, ATemplateIsTintedInThePixelsOfTheScreen) {
  theme.add("checkers", 16, 2, checkeredPicture(32, Qt::red, Qt::transparent));
  const QImage picture = pictureOfCheckers(true);
  const QPalette palette = QApplication::palette();
  EXPECT_EQ(
      picture.convertToFormat(QImage::Format_RGB32),
      checkeredPicture(32, palette.color(QPalette::WindowText), palette.color(QPalette::Window))
          .convertToFormat(QImage::Format_RGB32));
}

TEST_F(SharpnessTest, AnIconOfAMenuIsDrawnInThePixelsOfTheScreen) {
  addCheckers();
  ActionEntry entry = commandEntry("Title", "1");
  entry.image = Image{.name = "checkers", .isTemplate = false, .pointSize = {}, .weight = {}};
  MemoryTaskQueues queues;
  ScrollingMenu menu;
  const auto pictureOfEntry = [&] {
    menu.clear();
    fillMenu(menu, Menu{.title = "", .entries = {entry}},
             {.mainQueue = queues.mainQueue(), .choose = {}});
    return menu.actions().front()->icon().pixmap(QSize(16, 16)).toImage();
  };
  EXPECT_EQ(pictureOfEntry().convertToFormat(QImage::Format_RGB32),
            checkeredPicture(32, Qt::red, Qt::blue).convertToFormat(QImage::Format_RGB32));
  entry.image->isTemplate = true;
  EXPECT_EQ(pictureOfEntry().size(), QSize(32, 32));
}

TEST_F(SharpnessTest, ATextIsDrawnInThePixelsOfTheScreen) {
  const Label& label = stack.add<Label>("Sharp & clear: @%~");
  show();
  const QImage shown = pictureOf(label).convertToFormat(QImage::Format_RGB32);

  const QWidget& widget = widgetOf(label);
  QImage drawn(widget.size() * 2, QImage::Format_RGB32);
  drawn.setDevicePixelRatio(2);
  drawn.fill(widget.palette().color(QPalette::Window));
  QTextLayout layout(QString::fromStdString(label.text()), widget.font());
  layout.beginLayout();
  layout.createLine().setLineWidth(widget.width());
  layout.endLayout();
  QPainter painter(&drawn);
  painter.setPen(widget.palette().color(QPalette::WindowText));
  layout.draw(&painter, QPointF(0, 0));
  painter.end();
  EXPECT_EQ(shown, drawn);
}

}  // namespace
}  // namespace quillmar
