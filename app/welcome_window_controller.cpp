#include "app/welcome_window_controller.h"

#include <optional>
#include <utility>

#include "platform/bundle.h"
#include "platform/image.h"
#include "platform/widgets/button.h"
#include "platform/widgets/image_view.h"
#include "platform/widgets/label.h"
#include "platform/widgets/stack_view.h"

namespace quillmar {

namespace {

constexpr Size contentSize{480, 320};
constexpr double margin = 24;
constexpr double rowSpacing = 14;
constexpr double buttonSpacing = 12;
constexpr double iconSize = 96;
constexpr double titleFontSize = 20;
constexpr double bodyFontSize = 12;

std::string bodyText(std::size_t installedItemCount) {
  return "Quillmar lives in your menu bar. Click its icon to run any of the " +
         std::to_string(installedItemCount) +
         " starter commands we just installed, or open Settings to add your own "
         "shell commands, scripts and AppleScripts.\n\n"
         "More ready-made packs for the clipboard, audio, screenshots, networking and Shortcuts "
         "are available on our website.";
}

}  // namespace

WelcomeWindowController::WelcomeWindowController(
    WindowSystem& windows, Images& images, const Bundle& bundle,
    std::function<void(const std::string& url)> openURL)
    : images_(images), bundle_(bundle), openURL_(std::move(openURL)), window_(windows) {
  window_.setTitle("Welcome to Quillmar");
  window_.setContentSize(contentSize);
  window_.setClosesOnEscape(true);
  window_.center();
}

void WelcomeWindowController::buildUI(std::size_t installedItemCount) {
  auto& column = window_.setContent<StackView>(Orientation::vertical);
  column.setSpacing(rowSpacing);
  column.setEdgeInsets({margin, margin, margin, margin});

  auto& icon = column.add<ImageView>(images_.named("applicationIcon"));
  icon.setWidth(iconSize);
  icon.setHeight(iconSize);
  column.add<Label>("Welcome to Quillmar", Font::boldSystem(titleFontSize));
  auto& body = column.add<Label>(bodyText(installedItemCount), Font::system(bodyFontSize));
  body.setWraps(true);
  addButtons(column);
}

void WelcomeWindowController::addButtons(StackView& column) {
  auto& row = column.add<StackView>(Orientation::horizontal);
  row.setSpacing(buttonSpacing);

  auto& browse = row.add<Button>("Browse Packs…");
  const std::string packsURL = bundle_.informationString(information_key::packsURL).value_or("");
  browse.setEnabled(!packsURL.empty());
  browse.setOnPress([this, packsURL] { openURL_(packsURL); });

  row.add<Button>("Open Settings").setOnPress([this] { openSettingsPressed(); });

  auto& start = row.add<Button>("Get Started");
  start.setKeyEquivalent(keys::returnKey);
  start.setOnPress([this] { window_.close(); });
}

void WelcomeWindowController::openSettingsPressed() {
  window_.close();
  if (openSettings) openSettings();
}

}  // namespace quillmar
