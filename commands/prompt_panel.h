// A small floating dialog that asks the user to confirm a command or to enter a value for it. It is
// modeless: it reports through a completion and keeps itself alive while it is visible. A panel is
// shown once. Main thread.

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include "commands/prompts.h"
#include "platform/platform.h"
#include "platform/result.h"
#include "platform/widgets/window.h"

namespace quillmar {

class StackView;
class TextField;

class PromptPanel final : public WindowDelegate, public std::enable_shared_from_this<PromptPanel> {
 public:
  /// Not owned; all must outlive the panel.
  struct Collaborators {
    Application& application = Platform::shared().application;
    Images& images = Platform::shared().images;
    WindowSystem& windows = Platform::shared().windows;
  };

  /// Builds the window. It has a text field if the request has a placeholder, even an empty one.
  /// Create panels with std::make_shared.
  PromptPanel(Collaborators collaborators, const PromptRequest& request, PromptCompletion onFinish);

  /// The visible panels. The set owns them.
  static const std::set<std::shared_ptr<PromptPanel>>& live();

  /// Shows the panel in the centre of the screen, raised and with the focus. Fails, without calling
  /// the completion, if there is no display or the panel has already finished.
  Result<void> show();

  Window& panel() { return panel_; }
  /// Null for a confirmation.
  TextField* textField() const { return textField_; }
  /// True once the panel has reported.
  bool finished() const { return finished_; }

  // Events from the user. The first one reports; later ones do nothing.

  void okPressed();
  void cancelPressed();
  void windowWillClose(Window& window) override;

  // Create and show a panel in one call.

  static Result<void> confirm(Collaborators collaborators, std::string title, std::string message,
                              std::string confirmTitle,
                              std::function<void(bool confirmed)> completion);

  /// The text is absent when the user cancelled.
  static Result<void> input(Collaborators collaborators, std::string title, std::string message,
                            std::string placeholder,
                            std::function<void(std::optional<std::string> text)> completion);

 private:
  void build(const PromptRequest& request);
  void addTexts(StackView& column, const PromptRequest& request);
  void addButtons(StackView& column, const PromptRequest& request);
  void finish(bool confirmed);

  Collaborators collaborators_;
  Window panel_;
  TextField* textField_ = nullptr;
  bool finished_ = false;
  PromptCompletion onFinish_;
};

/// Shows each prompt in its own panel.
class PanelPrompts final : public Prompts {
 public:
  explicit PanelPrompts(PromptPanel::Collaborators collaborators) : collaborators_(collaborators) {}

  /// The prompts of the installed platform, created on first use.
  static PanelPrompts& shared();

  Result<void> show(PromptRequest request, PromptCompletion completion) override;

 private:
  PromptPanel::Collaborators collaborators_;
};

}  // namespace quillmar
