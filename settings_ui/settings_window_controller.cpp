#include "settings_ui/settings_window_controller.h"

#include <optional>
#include <utility>

#include "import/import_coordinator.h"
#include "platform/file_system.h"
#include "platform/pack_file_type.h"
#include "platform/task_queue.h"
#include "platform/widgets/button.h"
#include "platform/widgets/file_panel.h"
#include "platform/widgets/scroll_view.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/tab_view.h"
#include "settings_ui/drop_target_view.h"
#include "settings_ui/flipped_view.h"
#include "settings_ui/folder_editor_controller.h"
#include "settings_ui/general_tab.h"
#include "settings_ui/item_editor_controller.h"

namespace quillmar {

namespace {

constexpr Size contentSize{.width = 600, .height = 520};
constexpr Size minimumContentSize{.width = 520, .height = 440};
constexpr double margin = 12;
constexpr double spacingBelowOutline = 10;
constexpr double rowSpacing = 8;
constexpr double buttonSpacing = 8;

constexpr std::size_t deleteButton = 0;

/// The types of the open panel; the first is preselected.
std::vector<FileType> importedTypes() {
  const std::string pack(pack_file_type::extension);
  return {{.name = "Quillmar packs and settings", .extensions = {pack, "json"}},
          {.name = "Quillmar packs", .extensions = {pack}},
          {.name = "JSON files", .extensions = {"json"}}};
}

}  // namespace

SettingsWindowController::SettingsWindowController(Collaborators collaborators)
    : collaborators_(std::move(collaborators)),
      rows_(collaborators_.settings, collaborators_.images),
      window_(collaborators_.windows) {
  window_.setTitle("Quillmar Settings");
  window_.setContentSize(contentSize);
  window_.setResizable(true);
  window_.setMinimumContentSize(minimumContentSize);
  window_.setClosesOnEscape(true);
  window_.center();

  auto& content = window_.setContent<DropTargetView>();
  content.onDrop = [this](const std::string& path) { collaborators_.importCoordinator.open(path); };
  content.setAlignment(StackAlignment::fill);
  content.setEdgeInsets({margin, margin, margin, margin});
  tabView_ = &content.add<TabView>();
  buildMenuTab(tabView_->addTab<StackView>("menu", "Menu Items", Orientation::vertical));

  auto general = std::make_unique<FlippedView>();
  general->setEdgeInsets({margin, margin, margin, margin});
  generalTab_ = std::make_unique<GeneralTab>(
      GeneralTab::Collaborators{.settings = collaborators_.settings,
                                .updaterManager = collaborators_.updaterManager,
                                .loginItem = collaborators_.loginItem,
                                .workspace = collaborators_.workspace,
                                .log = collaborators_.log},
      window_, *general);
  tabView_->addTab<ScrollView>("general", "General", std::move(general));

  outlineView_->expandAll();
  window_.makeFirstResponder(outlineView_);
  settingsObservation_ = collaborators_.notificationCenter.addObserver(
      menuItemSettingsChanged, [this] { settingsChanged(); });
}

SettingsWindowController::~SettingsWindowController() = default;

Result<void> SettingsWindowController::show(const Activation& activation) {
  generalTab_->refresh();
  return window_.show(activation);
}

void SettingsWindowController::buildMenuTab(StackView& column) {
  column.setAlignment(StackAlignment::fill);
  column.setSpacing(rowSpacing);
  column.setEdgeInsets({margin, margin, margin, margin});

  outlineView_ = &column.add<OutlineView>(rows_);
  outlineView_->setAccessibilityLabel("Menu items");
  outlineView_->setOnDoubleClick([this] { editSelected(); });
  outlineView_->setOnToggle(
      [this](const std::string& row, ControlState state) { itemCheckboxChanged(row, state); });
  column.setCustomSpacing(spacingBelowOutline, *outlineView_);

  addEditButtons(column);

  addFileButtons(column);
}

void SettingsWindowController::addEditButtons(StackView& column) {
  auto& row = column.add<StackView>(Orientation::horizontal);
  row.setSpacing(buttonSpacing);
  const auto add = [&](const char* title, void (SettingsWindowController::*action)()) -> Button& {
    auto& button = row.add<Button>(title);
    button.setOnPress([this, action] { (this->*action)(); });
    return button;
  };
  add("Add Folder", &SettingsWindowController::addFolder);
  add("Add Item", &SettingsWindowController::addItem);
  add("Add Separator", &SettingsWindowController::addSeparator);
  add("Edit", &SettingsWindowController::editSelected);
  add("Delete", &SettingsWindowController::deleteSelected);
  row.add<FlexibleSpace>();
  add("▲", &SettingsWindowController::moveSelectionUp).setAccessibilityLabel("Move Up");
  add("▼", &SettingsWindowController::moveSelectionDown).setAccessibilityLabel("Move Down");
}

void SettingsWindowController::addFileButtons(StackView& column) {
  auto& row = column.add<StackView>(Orientation::horizontal);
  row.setSpacing(buttonSpacing);
  row.add<Button>("Import…").setOnPress([this] { importSettings(); });
  row.add<Button>("Export…").setOnPress([this] { exportSettings(); });
  row.add<FlexibleSpace>();
  auto& close = row.add<Button>("Close");
  close.setKeyEquivalent(keys::returnKey);
  close.setOnPress([this] { closeWindow(); });
}

std::optional<Selection> SettingsWindowController::selection() const {
  return Selection::fromRow(outlineView_->selectedRow());
}

void SettingsWindowController::addFolder() {
  present(std::make_unique<FolderEditorController>(collaborators_.settings, collaborators_.windows,
                                                   collaborators_.images, std::nullopt));
}

void SettingsWindowController::addItem() {
  ItemEditorController::Place place{.categoryId = targetCategoryId(), .afterItemId = {}};
  if (const auto selected = selection()) place.afterItemId = selected->itemId;
  present(std::make_unique<ItemEditorController>(collaborators_.settings, collaborators_.windows,
                                                 collaborators_.images, std::move(place),
                                                 std::nullopt));
}

std::string SettingsWindowController::targetCategoryId() {
  const QuillmarConfig& config = collaborators_.settings.config;
  if (const auto selected = selection()) {
    const MenuCategory* const category = findCategory(config, selected->categoryId);
    if (category != nullptr && !category->isSeparator) return category->id;
  }
  for (const MenuCategory* const category : categoriesInDisplayOrder(config)) {
    if (!category->isSeparator) return category->id;
  }
  return collaborators_.settings.addCategory("General", std::nullopt, false).id;
}

void SettingsWindowController::addSeparator() {
  SettingsManager& settings = collaborators_.settings;
  const auto selected = selection();
  if (!selected) {
    settings.addCategorySeparator(std::nullopt);
  } else if (selected->itemId) {
    settings.addItem(MenuItem::separator(), selected->categoryId, *selected->itemId);
  } else {
    settings.addCategorySeparator(selected->categoryId);
  }
}

void SettingsWindowController::editSelected() {
  const auto selected = selection();
  if (!selected) return;
  const MenuCategory* const category =
      findCategory(collaborators_.settings.config, selected->categoryId);
  if (category == nullptr) return;
  if (!selected->itemId) {
    if (category->isSeparator) return;
    present(std::make_unique<FolderEditorController>(
        collaborators_.settings, collaborators_.windows, collaborators_.images, *category));
    return;
  }
  const MenuItem* const item = findItem(*category, *selected->itemId);
  if (item == nullptr || item->isSeparator) return;
  present(std::make_unique<ItemEditorController>(
      collaborators_.settings, collaborators_.windows, collaborators_.images,
      ItemEditorController::Place{.categoryId = category->id, .afterItemId = {}}, *item));
}

void SettingsWindowController::present(std::unique_ptr<EditorSheetController> editor) {
  activeSheet_ = std::move(editor);
  const Result<void> shown =
      activeSheet_->present(window_, [this](bool /*saved*/) { activeSheet_.reset(); });
  if (shown) return;
  collaborators_.log("Could not show the editor: " + shown.error().description);
  activeSheet_.reset();
}

void SettingsWindowController::deleteSelected() {
  const auto selected = selection();
  if (!selected) return;
  const MenuCategory* const category =
      findCategory(collaborators_.settings.config, selected->categoryId);
  if (category == nullptr) return;
  if (selected->itemId) {
    deleteItem(*category, *selected->itemId);
  } else {
    deleteFolder(*category);
  }
}

void SettingsWindowController::deleteFolder(const MenuCategory& category) {
  const auto deleteEntry = [this, id = category.id] { collaborators_.settings.deleteCategory(id); };
  if (category.isSeparator) return deleteEntry();
  confirmDeletion("Delete Folder", category.name, " and all its items?", deleteEntry);
}

void SettingsWindowController::deleteItem(const MenuCategory& category, const std::string& itemId) {
  const MenuItem* const item = findItem(category, itemId);
  if (item == nullptr) return;
  const auto deleteEntry = [this, itemId, categoryId = category.id] {
    collaborators_.settings.deleteItem(itemId, categoryId);
  };
  if (item->isSeparator) return deleteEntry();
  confirmDeletion("Delete Item", item->title, "?", deleteEntry);
}

void SettingsWindowController::confirmDeletion(const std::string& message, const std::string& name,
                                               const std::string& consequence,
                                               std::function<void()> deleteEntry) {
  const Result<void> shown = window_.beginAlert(
      {.style = AlertStyle::warning,
       .message = message,
       .informativeText = "Are you sure you want to delete “" + name + "”" + consequence,
       .buttons = {"Delete", "Cancel"}},
      {}, [deleteEntry = std::move(deleteEntry)](std::size_t button) {
        if (button == deleteButton) deleteEntry();
      });
  if (!shown) collaborators_.log("Could not ask for a deletion: " + shown.error().description);
}

void SettingsWindowController::moveSelection(std::int64_t offset) {
  const auto selected = selection();
  if (!selected) return;
  if (selected->itemId) {
    collaborators_.settings.moveItem(*selected->itemId, selected->categoryId, offset);
  } else {
    collaborators_.settings.moveCategory(selected->categoryId, offset);
  }
  // Scrolls to the moved row, which is still selected.
  outlineView_->setSelectedIndex(outlineView_->selectedIndex());
}

void SettingsWindowController::itemCheckboxChanged(const std::string& row, ControlState state) {
  const auto toggled = Selection::fromRow(&row);
  if (!toggled->itemId) return;
  collaborators_.settings.setItemEnabled(*toggled->itemId, toggled->categoryId,
                                         state == ControlState::on);
}

void SettingsWindowController::importSettings() {
  const Result<void> shown = window_.beginOpenPanel(
      {.title = "Choose a Quillmar pack or settings file", .types = importedTypes()},
      [&queue = collaborators_.mainQueue,
       &coordinator = collaborators_.importCoordinator](const std::string& path) {
        // In a later task, after the panel has left the screen.
        queue.async([&coordinator, path] { coordinator.open(path); });
      });
  if (!shown) collaborators_.log("Could not show the open panel: " + shown.error().description);
}

void SettingsWindowController::exportSettings() {
  const Result<void> shown =
      window_.beginSavePanel({.title = "Choose where to save your Quillmar settings",
                              .proposedName = "quillmar-settings.json",
                              .type = {.name = "JSON files", .extensions = {"json"}}},
                             [this](const std::string& path) { exportTo(path); });
  if (!shown) collaborators_.log("Could not show the save panel: " + shown.error().description);
}

void SettingsWindowController::exportTo(const std::string& path) {
  QuillmarConfig exported = collaborators_.settings.config;
  exported.name.reset();
  exported.description.reset();
  // An existing file keeps its permissions.
  std::optional<std::uint32_t> permissions;
  if (const auto existing = collaborators_.files.permissions(path)) permissions = existing.value();
  const Result<void> written =
      collaborators_.files.replace(path, SettingsManager::encode(exported), permissions);
  if (written) return;
  const Result<void> shown = window_.beginAlert(
      {.style = AlertStyle::warning,
       .message = "Export Failed",
       .informativeText = "Failed to export settings: " + written.error().description,
       .buttons = {}},
      {});
  if (!shown) collaborators_.log("Could not show an alert: " + shown.error().description);
}

void SettingsWindowController::closeWindow() {
  window_.close();
}

void SettingsWindowController::settingsChanged() {
  outlineView_->reload();
  outlineView_->expandAll();
  generalTab_->refresh();
}

}  // namespace quillmar
