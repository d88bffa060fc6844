// The tests of windows need one application for all of them. Without other wishes its windows are
// on a screen in memory.

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // File dialogs are those of the toolkit, whose widgets the tests know.
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  const QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);
  // Tests click at once, so early clicks must count.
  QApplication::setDoubleClickInterval(0);
  return RUN_ALL_TESTS();
}
