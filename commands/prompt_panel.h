// The small floating dialog that asks the user to confirm a command, or to type a value for it. It
// is modeless: the answer comes through a closure, and the panel lives on by itself while it is on
// the screen. A panel is shown once. Main thread.

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "commands/prompts.h"
#include "platform/result.h"
#include "platform/widgets/window.h"

namespace quillmar {

class StackView;
class TextField;
struct Platform;

class PromptPanel final : public WindowDelegate, public std::enable_shared_from_this<PromptPanel> {
 public:
  /// Builds the window. There is a text field exactly when the request has a placeholder. Made with
  /// std::make_shared; the platform must outlive the panel.
  PromptPanel(Platform& platform, const PromptRequest& request, PromptCompletion onFinish);

  /// The panels that are shown now. The set owns them, so that nobody else has to.
  static const std::set<std::shared_ptr<PromptPanel>>& live();

  /// Shows the panel in the middle of the screen, in front and with the focus. Fails, and reports
  /// nothing, when there is no screen to show it on or when the panel has finished before.
  Result<void> show();

  Window& panel() { return panel_; }
  /// Null in a confirmation.
  TextField* textField() const { return textField_; }
  /// True from the moment the panel reports.
  bool finished() const { return finished_; }

  // The user. What comes first reports, the rest does nothing.

  void okPressed();
  void cancelPressed();
  void windowWillClose(Window& window) override;

  // Panels made and shown in one go.

  static Result<void> confirm(Platform& platform, std::string title, std::string message,
                              std::string confirmTitle,
                              std::function<void(bool confirmed)> completion);

  /// The text is absent when the user cancelled.
  static Result<void> input(Platform& platform, std::string title, std::string message,
                            std::string placeholder,
                            std::function<void(std::optional<std::string> text)> completion);

 private:
  void build(const PromptRequest& request);
  void addTexts(StackView& column, const PromptRequest& request);
  void addButtons(StackView& column, const PromptRequest& request);
  void finish(bool confirmed);

  Platform& platform_;
  Window panel_;
  TextField* textField_ = nullptr;
  bool finished_ = false;
  PromptCompletion onFinish_;
};

/// Asks each question in a panel of its own.
class PanelPrompts final : public Prompts {
 public:
  /// The platform is not owned.
  explicit PanelPrompts(Platform& platform) : platform_(platform) {}

  Result<void> show(PromptRequest request, PromptCompletion completion) override;

 private:
  Platform& platform_;
};

}  // namespace quillmar
