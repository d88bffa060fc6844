#include "about/about_window_controller.h"

#include <optional>
#include <string_view>
#include <utility>

#include "about/updater_manager.h"
#include "platform/bundle.h"
#include "platform/image.h"
#include "platform/updater.h"
#include "platform/widgets/button.h"
#include "platform/widgets/image_view.h"
#include "platform/widgets/label.h"
#include "platform/widgets/stack_view.h"

namespace quillmar {

namespace {

constexpr Size contentSize{300, 312};
constexpr EdgeInsets margins{.top = 24, .left = 24, .bottom = 20, .right = 24};
constexpr double spacing = 10;
constexpr double spacingAfterIcon = 4;
constexpr double spacingAfterVersion = 16;
constexpr double spacingAfterUpdateButton = 16;
constexpr double spacingAfterLinks = 14;
constexpr double spacingOfLinks = 2;
constexpr double iconSize = 96;
constexpr double nameFontSize = 18;
constexpr double versionFontSize = 12;
constexpr double linkFontSize = 11;
constexpr double copyrightFontSize = 10;
constexpr double copyrightWidth = 250;

constexpr std::string_view siteScheme = "https://";
constexpr std::string_view supportScheme = "mailto:";

std::string information(const Bundle& bundle, std::string_view key) {
  return bundle.informationString(key).value_or("");
}

std::string withoutPrefix(const std::string& text, std::string_view prefix) {
  return text.starts_with(prefix) ? text.substr(prefix.size()) : text;
}

/// The mailto address for an e-mail address, empty for none.
std::string mailtoAddress(const std::string& address) {
  return address.empty() ? "" : std::string(supportScheme) + address;
}

}  // namespace

AboutWindowController::AboutWindowController(WindowSystem& windows, Images& images,
                                             const Bundle& bundle,
                                             const UpdaterManager& updaterManager,
                                             std::function<void(const std::string& url)> openURL)
    : updaterManager_(updaterManager),
      openURL_(std::move(openURL)),
      siteURL_(information(bundle, information_key::siteURL)),
      supportURL_(mailtoAddress(information(bundle, information_key::supportAddress))),
      window_(windows) {
  window_.setTitle("About Quillmar");
  window_.setContentSize(contentSize);
  window_.setClosesOnEscape(true);
  window_.center();
  build(images, bundle);
}

void AboutWindowController::build(Images& images, const Bundle& bundle) {
  const std::optional<Image> applicationIcon = images.named("applicationIcon");
  if (!applicationIcon) return;
  auto& column = window_.setContent<StackView>(Orientation::vertical);
  column.setSpacing(spacing);
  column.setEdgeInsets(margins);

  auto& icon = column.add<ImageView>(applicationIcon);
  icon.setWidth(iconSize);
  icon.setHeight(iconSize);
  column.setCustomSpacing(spacingAfterIcon, icon);

  column.add<Label>("Quillmar", Font::boldSystem(nameFontSize));

  auto& version = column.add<Label>("Version " + information(bundle, information_key::version),
                                    Font::system(versionFontSize));
  version.setSelectable(true);
  column.setCustomSpacing(spacingAfterVersion, version);

  updateButton_ = &column.add<Button>("Check for Updates…");
  updateButton_->setEnabled(updaterManager_.isConfigured);
  updateButton_->setOnPress([this] { checkForUpdates(); });
  column.setCustomSpacing(spacingAfterUpdateButton, *updateButton_);

  auto& links = column.add<StackView>(Orientation::vertical);
  links.setSpacing(spacingOfLinks);
  linkButton(links, withoutPrefix(siteURL_, siteScheme), [this] { openSite(); });
  linkButton(links, withoutPrefix(supportURL_, supportScheme), [this] { openSupport(); });
  column.setCustomSpacing(spacingAfterLinks, links);

  addCopyright(column, bundle);
}

void AboutWindowController::addCopyright(StackView& column, const Bundle& bundle) {
  auto& copyright = column.add<Label>(information(bundle, information_key::copyright),
                                      Font::system(copyrightFontSize));
  copyright.setWraps(true);
  copyright.setWidth(copyrightWidth);
  copyright.setAlignment(TextAlignment::center);
  copyright.setColor(TextColor::secondaryLabel);
}

Button& AboutWindowController::linkButton(StackView& stack, const std::string& title,
                                          std::function<void()> action) {
  auto& button = stack.add<Button>(title, ButtonStyle::link);
  button.setFont(Font::system(linkFontSize));
  button.setHidden(title.empty());
  button.setOnPress(std::move(action));
  return button;
}

void AboutWindowController::checkForUpdates() {
  updaterManager_.controller->checkForUpdates();
}

void AboutWindowController::openSite() {
  openURL_(siteURL_);
}

void AboutWindowController::openSupport() {
  openURL_(supportURL_);
}

}  // namespace quillmar
