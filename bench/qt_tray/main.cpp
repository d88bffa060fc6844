// The program that Quillmar is compared with: a tray icon with a menu of 50 entries, the usual way
// in Qt.

#include <QApplication>
#include <QMenu>
#include <QPixmap>
#include <QSystemTrayIcon>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setQuitOnLastWindowClosed(false);

  QMenu menu;
  for (int folder = 0; folder < 5; ++folder) {
    QMenu* submenu = menu.addMenu(QStringLiteral("Folder %1").arg(folder));
    for (int item = 0; item < 10; ++item) {
      submenu->addAction(QStringLiteral("Item %1").arg(item), [] {});
    }
  }
  menu.addSeparator();
  menu.addAction(QStringLiteral("Quit"), &application, &QApplication::quit);

  QPixmap pixmap(22, 22);
  pixmap.fill(Qt::gray);
  QSystemTrayIcon icon{QIcon(pixmap)};
  icon.setContextMenu(&menu);
  icon.show();
  return QApplication::exec();
}
