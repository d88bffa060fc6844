#include "settings_ui/general_tab.h"

#include <utility>

#include "platform/updater.h"
#include "platform/widgets/button.h"
#include "platform/widgets/checkbox.h"
#include "platform/widgets/label.h"
#include "settings_ui/form_values.h"

namespace quillmar {

namespace {

constexpr double spacing = 8;
constexpr double spacingBetweenSections = 16;
constexpr double updateRowSpacing = 12;
constexpr double maximumWidth = 520;
constexpr double headingFontSize = 12;
constexpr double noteFontSize = 10;
constexpr double smallButtonFontSize = 11;

bool isOn(const Checkbox& checkbox) {
  return checkbox.state() == ControlState::on;
}

void addHeading(StackView& column, const std::string& text) {
  column.add<Label>(text, Font{.size = headingFontSize, .weight = FontWeight::semibold});
}

Label& addNote(StackView& column, const std::string& text) {
  auto& note = column.add<Label>(text, Font::system(noteFontSize));
  note.setColor(TextColor::secondaryLabel);
  note.setWraps(true);
  note.setMaximumWidth(maximumWidth);
  return note;
}

void endSection(StackView& column, const View& last) {
  column.setCustomSpacing(spacing + spacingBetweenSections, last);
}

}  // namespace

GeneralTab::GeneralTab(Collaborators collaborators, Window& window, StackView& column)
    : collaborators_(std::move(collaborators)), window_(window) {
  column.setSpacing(spacing);
  addStartup(column);
  addRunningCommands(column);
  addMenu(column);
  addUpdates(column);
  addStorage(column);
  refresh();
}

void GeneralTab::addStartup(StackView& column) {
  addHeading(column, "Startup");
  launchAtLoginCheckbox_ = &column.add<Checkbox>("Launch Quillmar at login");
  launchAtLoginCheckbox_->setOnToggle([this](ControlState) { launchAtLoginChanged(); });
  endSection(column, *launchAtLoginCheckbox_);
}

Checkbox& GeneralTab::addPreference(StackView& column, const std::string& title) {
  auto& checkbox = column.add<Checkbox>(title);
  checkbox.setMaximumWidth(maximumWidth);
  checkbox.setOnToggle([this](ControlState) { preferenceChanged(); });
  return checkbox;
}

void GeneralTab::addRunningCommands(StackView& column) {
  addHeading(column, "Running commands");
  failureCheckbox_ = &addPreference(column, "Notify me when a command fails");
  loginShellCheckbox_ = &addPreference(
      column, "Run shell commands in my login shell (loads PATH from Homebrew, nvm, pyenv, etc.)");
  endSection(column, *loginShellCheckbox_);
}

void GeneralTab::addMenu(StackView& column) {
  addHeading(column, "Menu");
  flattenCheckbox_ =
      &addPreference(column, "When there is only one folder, show its items directly in the menu");
  endSection(column, *flattenCheckbox_);
}

void GeneralTab::addUpdates(StackView& column) {
  addHeading(column, "Updates");
  auto& row = column.add<StackView>(Orientation::horizontal);
  row.setSpacing(updateRowSpacing);
  autoUpdateCheckbox_ = &row.add<Checkbox>("Check for updates automatically");
  autoUpdateCheckbox_->setOnToggle([this](ControlState) { autoUpdateChanged(); });
  row.add<Button>("Check for Updates…").setOnPress([this] { checkForUpdates(); });

  const bool isConfigured = collaborators_.updaterManager.isConfigured;
  Label& note = addNote(column, isConfigured ? "" : "Updates are not configured in this build.");
  note.setHidden(isConfigured);
  endSection(column, isConfigured ? static_cast<View&>(row) : note);
}

void GeneralTab::addStorage(StackView& column) {
  addHeading(column, "Storage");
  addNote(column, "Settings file: " + collaborators_.settings.settingsFileURL())
      .setSelectable(true);
  auto& reveal = column.add<Button>("Show in Finder");
  reveal.setFont(Font::system(smallButtonFontSize));
  reveal.setOnPress([this] { revealSettingsFile(); });
}

void GeneralTab::refresh() {
  launchAtLoginCheckbox_->setState(
      controlState(collaborators_.loginItem.status() == LoginItemStatus::enabled));

  const Preferences& preferences = collaborators_.settings.config.preferences;
  failureCheckbox_->setState(controlState(preferences.notifyOnFailure));
  loginShellCheckbox_->setState(controlState(preferences.useLoginShell));
  flattenCheckbox_->setState(controlState(preferences.flattenSingleFolder));

  const UpdaterManager& updates = collaborators_.updaterManager;
  autoUpdateCheckbox_->setEnabled(updates.isConfigured);
  autoUpdateCheckbox_->setState(
      controlState(updates.isConfigured && updates.controller->automaticallyChecksForUpdates()));
}

void GeneralTab::launchAtLoginChanged() {
  const Result<void> changed = isOn(*launchAtLoginCheckbox_)
                                   ? collaborators_.loginItem.registerItem()
                                   : collaborators_.loginItem.unregisterItem();
  if (!changed) {
    showAlert("Could not change the login item",
              changed.error().description +
                  "\n\nYou can also manage this in System Settings > General > Login Items.");
  }
  refresh();
}

void GeneralTab::preferenceChanged() {
  Preferences& stored = collaborators_.settings.config.preferences;
  const Preferences wanted{.flattenSingleFolder = isOn(*flattenCheckbox_),
                           .notifyOnFailure = isOn(*failureCheckbox_),
                           .useLoginShell = isOn(*loginShellCheckbox_)};
  if (stored == wanted) return;
  stored = wanted;
  collaborators_.settings.save();
}

void GeneralTab::autoUpdateChanged() {
  collaborators_.updaterManager.controller->setAutomaticallyChecksForUpdates(
      isOn(*autoUpdateCheckbox_));
}

void GeneralTab::checkForUpdates() {
  collaborators_.updaterManager.controller->checkForUpdates();
}

void GeneralTab::revealSettingsFile() {
  collaborators_.workspace.revealFile(
      collaborators_.settings.settingsFileURL(),
      [self = std::weak_ptr<GeneralTab*>(self_)](const Result<void>& revealed) {
        const auto tab = self.lock();
        if (tab && !revealed) {
          (*tab)->showAlert("Could not show the settings file", revealed.error().description);
        }
      });
}

void GeneralTab::showAlert(const std::string& message, const std::string& informativeText) {
  const Result<void> shown = window_.beginAlert({.style = AlertStyle::warning,
                                                 .message = message,
                                                 .informativeText = informativeText,
                                                 .buttons = {}},
                                                {});
  if (!shown) collaborators_.log(message + ": " + informativeText);
}

}  // namespace quillmar
