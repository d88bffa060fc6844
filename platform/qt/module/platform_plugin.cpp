#include "platform/qt/module/platform_plugin.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>

namespace quillmar {

namespace {

/// In the toolkit's order.
QStringList pluginFolders() {
  QStringList folders = {qEnvironmentVariable("QT_QPA_PLATFORM_PLUGIN_PATH")};
  for (const QString& path : QCoreApplication::libraryPaths()) {
    folders.append(path + QStringLiteral("/platforms"));
  }
  folders.removeAll(QString());
  return folders;
}

bool serves(const QPluginLoader& plugin, const QString& name) {
  const QJsonArray keys = plugin.metaData()
                              .value(QStringLiteral("MetaData"))
                              .toObject()
                              .value(QStringLiteral("Keys"))
                              .toArray();
  for (const auto& key : keys) {
    if (key.toString().compare(name, Qt::CaseInsensitive) == 0) return true;
  }
  return false;
}

}  // namespace

std::optional<std::string> problemWithPlugin(const std::string& name) {
  std::string problem = "Qt's plugin “" + name + "” for this display is not installed";
  for (const QString& folder : pluginFolders()) {
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files);
    for (const QFileInfo& file : files) {
      QPluginLoader plugin(file.absoluteFilePath());
      if (!serves(plugin, QString::fromStdString(name))) continue;
      if (plugin.load()) return std::nullopt;
      problem = "Qt's plugin “" + name + "” for this display could not be loaded (" +
                plugin.errorString().toStdString() + ")";
    }
  }
  return problem;
}

}  // namespace quillmar
