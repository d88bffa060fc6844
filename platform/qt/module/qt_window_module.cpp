#include "platform/qt/module/qt_window_module.h"

#include <QIcon>
#include <clocale>
#include <utility>

#include "platform/qt/module/display_platform.h"
#include "platform/qt/module/unexpected_exit.h"

namespace quillmar {

namespace {

/// Disables toolkit features that affect the whole program. The variables are set in this process
/// only; commands get the environment that the program was started with.
void restrainToolkit() {
  // Its loop must serve GLib's main context.
  qunsetenv("QT_NO_GLIB");
  // A session manager would start the program again, with arguments of its own, and ask its windows
  // whether the session may end. Without a window the program doesn't know of sessions either.
  qunsetenv("SESSION_MANAGER");
}

/// The toolkit applies the user's locale to the whole process. Only its character type is needed,
/// for dead keys; numbers and messages keep the previous locale.
class LocaleKeeper {
 public:
  LocaleKeeper() : before_(std::setlocale(LC_ALL, nullptr)) {}
  ~LocaleKeeper() {
    const std::string characters = std::setlocale(LC_CTYPE, nullptr);
    std::setlocale(LC_ALL, before_.c_str());
    std::setlocale(LC_CTYPE, characters.c_str());
  }
  LocaleKeeper(const LocaleKeeper&) = delete;
  LocaleKeeper& operator=(const LocaleKeeper&) = delete;

 private:
  std::string before_;
};

std::vector<char*> pointersTo(std::vector<std::string>& arguments) {
  std::vector<char*> pointers;
  pointers.reserve(arguments.size() + 1);
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

Result<QtWindowModule*> QtWindowModule::start(const WindowModuleHost& host) {
  // Holds the probe's connection until the toolkit has its own.
  const Result<UsablePlatform> platform = usablePlatform(host.environment);
  if (!platform) return platform.error();
  restrainToolkit();
  const LocaleKeeper localeKeeper;
  return new QtWindowModule(host, platform.value().name);
}

QtWindowModule::QtWindowModule(const WindowModuleHost& host, std::string platform)
    : arguments_({"quillmar", "-platform", std::move(platform)}),
      argumentValues_(pointersTo(arguments_)),
      argumentCount_(static_cast<int>(arguments_.size())),
      application_(argumentCount_, argumentValues_.data()),
      colorScheme_(host.environment),
      windows_(host.mainQueue) {
  watchForUnexpectedExit(host.log, host.restart);
  QApplication::setQuitOnLastWindowClosed(false);
  // No display name: the toolkit would add it to every title.
  QApplication::setApplicationName(QString::fromStdString(host.applicationName));
  QApplication::setApplicationVersion(QString::fromStdString(host.applicationVersion));
  QApplication::setDesktopFileName(QString::fromStdString(host.applicationId));
  const QString icons = QString::fromStdString(host.iconThemePath);
  QStringList folders = QIcon::themeSearchPaths();
  if (!icons.isEmpty() && !folders.contains(icons)) folders.append(icons);
  QIcon::setThemeSearchPaths(folders);
  // A desktop without an icon theme has this one, in which the program's icons are.
  if (QIcon::themeName().isEmpty()) QIcon::setThemeName(QStringLiteral("hicolor"));
  QApplication::setWindowIcon(QIcon::fromTheme(QString::fromStdString(host.applicationId)));
}

void QtWindowModule::run() {
  QApplication::exec();
  expectExit();
}

void QtWindowModule::quit() {
  // Not quit(), which asks the windows first.
  QApplication::exit();
}

}  // namespace quillmar
