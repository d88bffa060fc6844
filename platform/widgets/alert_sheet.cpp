#include "platform/widgets/alert_sheet.h"

#include <memory>
#include <utility>

#include "platform/widgets/button.h"
#include "platform/widgets/image_view.h"
#include "platform/widgets/label.h"
#include "platform/widgets/scroll_view.h"
#include "platform/widgets/stack_view.h"

namespace quillmar {

namespace {

constexpr double margin = 18;
constexpr double iconSize = 48;
constexpr double iconSpacing = 16;
constexpr double columnWidth = 320;
constexpr double textSpacing = 8;
constexpr double spacingAboveButtons = 16;
constexpr double buttonSpacing = 8;
constexpr double messageFontSize = 13;
constexpr double informativeFontSize = 11;

/// Names of the icon naming specification of freedesktop.org.
Image imageFor(AlertStyle style) {
  const bool warns = style == AlertStyle::warning;
  return {.name = warns ? "dialog-warning" : "dialog-information",
          .isTemplate = false,
          .pointSize = {},
          .weight = {}};
}

void addWrappingLabel(StackView& stack, const std::string& text, const Font& font) {
  auto& label = stack.add<Label>(text, font);
  label.setWraps(true);
  label.setWidth(columnWidth);
}

}  // namespace

AlertSheet::AlertSheet(WindowSystem& windowSystem, Alert alert,
                       std::function<void(std::optional<std::size_t> button)> onClose)
    : alert_(std::move(alert)), onClose_(std::move(onClose)), sheet_(windowSystem) {
  if (alert_.buttons.empty()) alert_.buttons.emplace_back("OK");
  build();
}

Result<void> AlertSheet::begin(Window& parent, const Activation& activation) {
  return parent.beginSheet(sheet_, activation);
}

void AlertSheet::build() {
  sheet_.setTitle(alert_.message);
  sheet_.setIgnoresEarlyClicks(true);
  sheet_.setDelegate(this);
  auto& row = sheet_.setContent<StackView>(Orientation::horizontal);
  row.setAlignment(StackAlignment::leading);
  row.setSpacing(iconSpacing);
  row.setEdgeInsets({margin, margin, margin, margin});

  auto& icon = row.add<ImageView>(imageFor(alert_.style));
  icon.setWidth(iconSize);
  icon.setHeight(iconSize);
  icon.setAccessibilityLabel(alert_.style == AlertStyle::warning ? "Warning" : "Information");

  auto& column = row.add<StackView>(Orientation::vertical);
  column.setAlignment(StackAlignment::leading);
  column.setSpacing(spacingAboveButtons);
  column.setWidth(columnWidth);
  addTexts(column);
  addButtons(column);
}

/// Limited in height: a long text must not push the buttons off the screen.
void AlertSheet::addTexts(StackView& column) const {
  auto texts = std::make_unique<StackView>(Orientation::vertical);
  texts->setAlignment(StackAlignment::leading);
  texts->setSpacing(textSpacing);
  addWrappingLabel(*texts, alert_.message, Font::boldSystem(messageFontSize));
  if (!alert_.informativeText.empty()) {
    addWrappingLabel(*texts, alert_.informativeText, Font::system(informativeFontSize));
  }
  column.add<ScrollView>(std::move(texts)).setWidth(columnWidth);
}

/// The first button is the last in the row.
void AlertSheet::addButtons(StackView& column) {
  auto& row = column.add<StackView>(Orientation::horizontal);
  row.setWidth(columnWidth);
  row.setSpacing(buttonSpacing);
  row.add<FlexibleSpace>();
  const std::size_t count = alert_.buttons.size();
  for (std::size_t i = count; i-- > 0;) {
    const std::string& title = alert_.buttons[i];
    auto& button = row.add<Button>(title);
    if (title == "Cancel") button.setKeyEquivalent(keys::escape);
    if (i == 0) button.setKeyEquivalent(keys::returnKey);
    button.setOnPress([this, i] {
      pressed_ = i;
      sheet_.close();
    });
  }
  // There is nothing to decide.
  if (count == 1) sheet_.setClosesOnEscape(true);
}

void AlertSheet::windowWillClose(Window& /*window*/) {
  // Copies, because the handler may destroy this alert.
  const auto onClose = std::move(onClose_);
  const std::optional<std::size_t> pressed = pressed_;
  onClose(pressed);
}

}  // namespace quillmar
