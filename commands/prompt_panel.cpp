#include "commands/prompt_panel.h"

#include <utility>

#include "platform/application.h"
#include "platform/image.h"
#include "platform/widgets/button.h"
#include "platform/widgets/image_view.h"
#include "platform/widgets/label.h"
#include "platform/widgets/scroll_view.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"

namespace quillmar {

namespace {

constexpr Size contentSize{420, 140};
constexpr double margin = 18;
constexpr double iconSize = 48;
constexpr double iconSpacing = 16;
constexpr double columnWidth = 320;
constexpr double columnSpacing = 10;
constexpr double buttonSpacing = 8;
constexpr double titleFontSize = 13;
constexpr double messageFontSize = 11;

/// Never destroyed, so that no window is destroyed at exit.
std::set<std::shared_ptr<PromptPanel>>& livePanels() {
  static auto* panels = new std::set<std::shared_ptr<PromptPanel>>;
  return *panels;
}

void addWrappingLabel(StackView& stack, const std::string& text, const Font& font) {
  auto& label = stack.add<Label>(text, font);
  label.setWraps(true);
  label.setWidth(columnWidth);
}

}  // namespace

PromptPanel::PromptPanel(Collaborators collaborators, const PromptRequest& request,
                         PromptCompletion onFinish)
    : collaborators_(collaborators), panel_(collaborators.windows), onFinish_(std::move(onFinish)) {
  build(request);
}

const std::set<std::shared_ptr<PromptPanel>>& PromptPanel::live() {
  return livePanels();
}

void PromptPanel::build(const PromptRequest& request) {
  panel_.setTitle("Quillmar");
  panel_.setContentSize(contentSize);
  panel_.setLevel(WindowLevel::floating);
  panel_.setIgnoresEarlyClicks(true);

  auto& row = panel_.setContent<StackView>(Orientation::horizontal);
  row.setAlignment(StackAlignment::leading);
  row.setSpacing(iconSpacing);
  row.setEdgeInsets({margin, margin, margin, margin});

  auto& icon = row.add<ImageView>(collaborators_.images.named("applicationIcon"));
  icon.setWidth(iconSize);
  icon.setHeight(iconSize);

  auto& column = row.add<StackView>(Orientation::vertical);
  column.setAlignment(StackAlignment::leading);
  column.setSpacing(columnSpacing);
  column.setWidth(columnWidth);
  addTexts(column, request);
  if (request.placeholder) {
    textField_ = &column.add<TextField>();
    textField_->setPlaceholder(*request.placeholder);
    textField_->setWidth(columnWidth);
    textField_->setAccessibilityLabel(request.message);
  }
  addButtons(column, request);

  panel_.setDelegate(this);
}

/// Limited in height: a long command must not push the buttons off the screen.
void PromptPanel::addTexts(StackView& column, const PromptRequest& request) {
  auto texts = std::make_unique<StackView>(Orientation::vertical);
  texts->setAlignment(StackAlignment::leading);
  texts->setSpacing(columnSpacing);
  addWrappingLabel(*texts, request.title, Font::boldSystem(titleFontSize));
  addWrappingLabel(*texts, request.message, Font::system(messageFontSize));
  column.add<ScrollView>(std::move(texts)).setWidth(columnWidth);
}

void PromptPanel::addButtons(StackView& column, const PromptRequest& request) {
  auto& row = column.add<StackView>(Orientation::horizontal);
  row.setWidth(columnWidth);
  row.setSpacing(buttonSpacing);
  row.add<FlexibleSpace>();

  auto& cancel = row.add<Button>("Cancel");
  cancel.setKeyEquivalent(keys::escape);
  cancel.setOnPress([this] { cancelPressed(); });

  auto& confirm = row.add<Button>(request.confirmTitle);
  confirm.setKeyEquivalent(keys::returnKey);
  confirm.setOnPress([this] { okPressed(); });
}

Result<void> PromptPanel::show() {
  if (finished_) return Error{"The panel has been answered already and cannot be shown again."};
  livePanels().insert(shared_from_this());
  panel_.center();
  if (textField_ != nullptr) panel_.makeFirstResponder(textField_);
  Result<void> shown = panel_.show(collaborators_.application.takeActivation());
  if (!shown) livePanels().erase(shared_from_this());
  return shown;
}

void PromptPanel::okPressed() {
  finish(true);
}

void PromptPanel::cancelPressed() {
  finish(false);
}

void PromptPanel::windowWillClose(Window& /*window*/) {
  finish(false);
}

void PromptPanel::finish(bool confirmed) {
  if (finished_) return;
  finished_ = true;
  std::optional<std::string> text;
  if (textField_ != nullptr) text = textField_->text();
  panel_.setDelegate(nullptr);
  panel_.close();

  // Removing the panel from the set may destroy it.
  const PromptCompletion onFinish = std::move(onFinish_);
  livePanels().erase(weak_from_this().lock());
  if (onFinish) onFinish(confirmed, std::move(text));
}

Result<void> PromptPanel::confirm(Collaborators collaborators, std::string title,
                                  std::string message, std::string confirmTitle,
                                  std::function<void(bool confirmed)> completion) {
  PromptRequest request;
  request.title = std::move(title);
  request.message = std::move(message);
  request.confirmTitle = std::move(confirmTitle);
  return std::make_shared<PromptPanel>(
             collaborators, request,
             [completion = std::move(completion)](bool confirmed, const auto& /*text*/) {
               completion(confirmed);
             })
      ->show();
}

Result<void> PromptPanel::input(Collaborators collaborators, std::string title, std::string message,
                                std::string placeholder,
                                std::function<void(std::optional<std::string> text)> completion) {
  PromptRequest request;
  request.title = std::move(title);
  request.message = std::move(message);
  request.placeholder = std::move(placeholder);
  request.confirmTitle = "OK";
  return std::make_shared<PromptPanel>(
             collaborators, request,
             [completion = std::move(completion)](bool confirmed, const auto& text) {
               completion(confirmed ? std::optional(text.value_or("")) : std::nullopt);
             })
      ->show();
}

PanelPrompts& PanelPrompts::shared() {
  static auto* prompts = new PanelPrompts({});
  return *prompts;
}

Result<void> PanelPrompts::show(PromptRequest request, PromptCompletion completion) {
  return std::make_shared<PromptPanel>(collaborators_, request, std::move(completion))->show();
}

}  // namespace quillmar
