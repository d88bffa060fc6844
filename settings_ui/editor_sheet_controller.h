// The base class of the sheets that create or change one entry of the menu: a form with the buttons
// Cancel and Save. Main thread.

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/result.h"
#include "platform/widgets/grid_view.h"
#include "platform/widgets/window.h"

namespace quillmar {

class Button;
class ImageView;
class Images;
class StackView;
class TextField;

class EditorSheetController : public WindowDelegate {
 public:
  /// Called once when the sheet has left the screen: with true after a successful save, otherwise
  /// with false. It may destroy the controller.
  using Completion = std::function<void(bool saved)>;

  EditorSheetController(const EditorSheetController&) = delete;
  EditorSheetController& operator=(const EditorSheetController&) = delete;

  /// Shows the sheet on the window. Fails, without calling `completion`, if the sheet cannot be
  /// shown.
  Result<void> present(Window& parent, Completion completion);

  Window& window() { return window_; }
  GridView& grid() const { return *grid_; }
  Button& saveButton() const { return *saveButton_; }

  void cancelPressed();
  /// Saves. Ends the sheet unless save() returns false.
  void savePressed();

  void windowWillClose(Window& window) override;

 protected:
  /// A row with a text field for the name of a symbol and a preview of it.
  struct SymbolField {
    TextField& field;
    ImageView& preview;
  };

  /// The services are not owned and must outlive the controller. `width` is that of the content.
  EditorSheetController(WindowSystem& windows, Images& images, double width,
                        const std::string& title, const std::string& saveTitle);

  /// Moves the keyboard focus to the first text field.
  virtual void focusFirstField() = 0;
  /// Validates the form and stores the result. Returns false, with the focus on the wrong field, if
  /// the form is not valid.
  virtual bool save() = 0;

  /// Appends a row to the form.
  template <class Kind, class... Arguments>
  Kind& addRow(const std::string& label, Arguments&&... arguments) {
    return grid_->addRow<Kind>(label, std::forward<Arguments>(arguments)...);
  }
  /// Appends a small explanation of the row above.
  void addHint(const std::string& text);
  /// Appends a row for a symbol. The field completes known names, and the preview follows the
  /// field.
  SymbolField addSymbolField(const std::string& label, const std::string& initial);

 private:
  void addButtons(StackView& column, double width, const std::string& saveTitle);
  void end(bool saved);

  Images& images_;
  Window window_;
  GridView* grid_ = nullptr;
  Button* saveButton_ = nullptr;
  Completion completion_;
  bool isSaved_ = false;
};

}  // namespace quillmar
