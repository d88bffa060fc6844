// A settings window over a document in memory.

#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "about/updater_manager.h"
#include "config/document_decoder.h"
#include "config/settings_manager.h"
#include "platform/memory/memory_platform.h"
#include "platform/widgets/button.h"
#include "settings_ui/editor_sheet_controller.h"
#include "settings_ui/settings_window_controller.h"
#include "tests/collaborators.h"
#include "tests/core/window_contents.h"

namespace quillmar {

inline MenuItem itemWith(const std::string& id, const std::string& title) {
  MenuItem item;
  item.id = id;
  item.title = title;
  item.command.value = "echo " + title;
  return item;
}

inline MenuItem separatorItem(const std::string& id) {
  MenuItem item;
  item.id = id;
  item.isSeparator = true;
  return item;
}

inline MenuCategory folderWith(const std::string& id, std::int64_t sortOrder,
                               std::vector<MenuItem> items = {}) {
  MenuCategory category;
  category.id = id;
  category.name = "Folder " + id;
  category.sortOrder = sortOrder;
  category.items = std::move(items);
  return category;
}

inline MenuCategory separatorFolder(const std::string& id, std::int64_t sortOrder) {
  MenuCategory category = folderWith(id, sortOrder);
  category.isSeparator = true;
  return category;
}

class SettingsWindowFixture : public testing::Test {
 protected:
  static constexpr const char* settingsPath = "/home/user/.config/Quillmar/settings.json";

  SettingsWindowFixture() {
    memory.files.addFile(settingsPath, "{}");
    settings.emplace(SettingsManager::Collaborators{
        .environment = memory.environment,
        .userDirectories = memory.userDirectories,
        .files = memory.files,
        .notificationCenter = center,
        .log = [this](std::string_view line) { log.emplace_back(line); }});
    observation = center.addObserver(menuItemSettingsChanged, [this] { ++posts; });
  }

  /// Opens the window with these folders. Called once.
  void open(std::vector<MenuCategory> categories) {
    settings->config.categories = std::move(categories);
    settings->save();
    updaterManager.emplace(memory.bundle, memory.updaters);
    importCoordinator.emplace(importCollaborators(
        memory.platform, *settings, [this](std::string_view line) { log.emplace_back(line); }));
    importCoordinator->settingsWindowProvider = [this] {
      EXPECT_TRUE(controller->window().show({}));
      return &controller->window();
    };
    controller.emplace(SettingsWindowController::Collaborators{
        .settings = *settings,
        .updaterManager = *updaterManager,
        .importCoordinator = *importCoordinator,
        .files = memory.files,
        .mainQueue = memory.queues.mainQueue(),
        .windows = memory.windows,
        .images = memory.images,
        .loginItem = memory.loginItem,
        .workspace = memory.workspace,
        .notificationCenter = center,
        .log = [this](std::string_view line) { log.emplace_back(line); }});
    EXPECT_TRUE(controller->window().show({}));
    posts = 0;
    log.clear();
  }

  void press(const std::string& title) { pressIn(controller->window(), title); }
  void pressInSheet(const std::string& title) {
    ASSERT_NE(sheet(), nullptr);
    pressIn(*sheet(), title);
  }

  /// The editor or alert that is open; null if there is none.
  Window* sheet() { return controller->window().sheet(); }

  OutlineView& outline() { return controller->outlineView(); }

  void select(const std::string& row) {
    const auto index = outline().indexOf(row);
    ASSERT_TRUE(index) << row;
    outline().select(*index);
  }

  std::string selectedRow() {
    return outline().selectedRow() == nullptr ? "" : *outline().selectedRow();
  }

  /// All visible rows.
  std::vector<std::string> rows() {
    std::vector<std::string> all;
    for (std::size_t i = 0; i < outline().rowCount(); ++i) all.push_back(outline().row(i));
    return all;
  }

  /// The document in the settings file.
  QuillmarConfig onDisk() const {
    return decodeDocument(memory.files.contents(settingsPath).value()).value();
  }

  /// The folder with the id, of the live document, which the file matches.
  MenuCategory folder(const std::string& id) {
    EXPECT_EQ(onDisk(), settings->config);
    return settings->getCategory(id).value();
  }

  MenuItem item(const std::string& id) {
    EXPECT_EQ(onDisk(), settings->config);
    return settings->getItem(id).value().item;
  }

  MemoryPlatform memory;
  NotificationCenter center;
  std::vector<std::string> log;
  int posts = 0;
  std::optional<SettingsManager> settings;
  std::optional<UpdaterManager> updaterManager;
  std::optional<ImportCoordinator> importCoordinator;
  std::optional<SettingsWindowController> controller;

 private:
  static void pressIn(const Window& window, const std::string& title) {
    Button* const button = buttonTitled(window, title);
    ASSERT_NE(button, nullptr) << title;
    button->press();
  }

  NotificationCenter::Observation observation;
};

}  // namespace quillmar
