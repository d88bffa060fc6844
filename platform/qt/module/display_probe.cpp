#include "platform/qt/module/display_probe.h"

#include <QFile>
#include <QLibrary>
#include <QLibraryInfo>
#include <QStringList>
#include <chrono>
#include <cstring>
#include <future>
#include <memory>
#include <thread>
#include <utility>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace quillmar {

namespace {

constexpr std::chrono::seconds patience{5};

Error noWindows(const std::string& reason) {
  return {"Quillmar can show no windows, because " + reason + "."};
}

std::string valueOf(const Environment& environment, const std::string& name) {
  return environment.value(name).value_or("");
}

QStringList pluginFolders(const Environment& environment) {
  QStringList folders;
  const auto add = [&](const char* variable, const QString& suffix) {
    const QString paths = QString::fromStdString(valueOf(environment, variable));
    for (const QString& path : paths.split(QLatin1Char(':'), Qt::SkipEmptyParts)) {
      folders << path + suffix;
    }
  };
  add("QT_QPA_PLATFORM_PLUGIN_PATH", {});
  add("QT_PLUGIN_PATH", QStringLiteral("/platforms"));
  folders << QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms");
  return folders;
}

/// The toolkit's plugin can be loaded.
Result<void> hasPlugin(const Environment& environment, const std::string& platform) {
  // The plugin of "wayland" has a longer file name.
  const std::string name = platform == "wayland" ? "wayland-generic" : platform;
  for (const QString& folder : pluginFolders(environment)) {
    QLibrary plugin(folder + QStringLiteral("/libq") + QString::fromStdString(name) +
                    QStringLiteral(".so"));
    if (!QFile::exists(plugin.fileName())) continue;
    if (plugin.load()) return {};
    return noWindows("the toolkit's part for the display could not be loaded (" +
                     plugin.errorString().toStdString() + ")");
  }
  return noWindows("the toolkit's part for the display “" + platform + "” is not installed");
}

Result<void> xServerAnswers(const std::string& display) {
  // A server that is stopped never answers, and there is no limit to set; then the thread is left
  // behind.
  std::promise<bool> promise;
  std::future<bool> answer = promise.get_future();
  std::thread([display, promise = std::move(promise)]() mutable {
    xcb_connection_t* const connection = xcb_connect(display.c_str(), nullptr);
    const bool connected = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    promise.set_value(connected);
  }).detach();
  if (answer.wait_for(patience) != std::future_status::ready) {
    return noWindows("the display “" + display + "” does not answer");
  }
  if (!answer.get()) return noWindows("the display “" + display + "” could not be opened");
  return {};
}

Result<void> compositorAnswers(const Environment& environment, const std::string& display) {
  const std::string path =
      display.starts_with("/") ? display : valueOf(environment, "XDG_RUNTIME_DIR") + "/" + display;
  const Error failed = noWindows("the display “" + display + "” could not be opened");
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) return failed;
  std::memcpy(address.sun_path, path.data(), path.size());
  const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (connection < 0) return failed;
  const bool connected =
      connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  close(connection);
  if (!connected) return failed;
  return {};
}

}  // namespace

Result<std::string> findDisplay(const Environment& environment) {
  // Somebody's choice, maybe with options behind a colon, maybe several.
  const std::string chosen = valueOf(environment, "QT_QPA_PLATFORM");
  const std::string platform = chosen.substr(0, chosen.find_first_of(":;"));
  const std::string wayland = valueOf(environment, "WAYLAND_DISPLAY");
  const std::string x11 = valueOf(environment, "DISPLAY");

  Error reason = noWindows("there is no display (neither WAYLAND_DISPLAY nor DISPLAY is set)");
  if (!platform.empty() && platform != "xcb" && !platform.starts_with("wayland")) {
    if (auto plugin = hasPlugin(environment, platform); !plugin) return plugin.error();
    return platform;
  }
  if (!wayland.empty() && platform != "xcb") {
    Result<void> found = hasPlugin(environment, "wayland");
    if (found) found = compositorAnswers(environment, wayland);
    if (found) return std::string("wayland");
    reason = found.error();
  }
  if (!x11.empty() && !platform.starts_with("wayland")) {
    Result<void> found = hasPlugin(environment, "xcb");
    if (found) found = xServerAnswers(x11);
    if (found) return std::string("xcb");
    reason = found.error();
  }
  return reason;
}

}  // namespace quillmar
