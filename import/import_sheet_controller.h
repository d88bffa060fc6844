// The review of a pack, a sheet of the settings window: shows the contents of the pack and what a
// merge would add, and asks how to import it. It changes nothing itself. Main thread.

#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "config/quillmar_config.h"
#include "config/settings_manager.h"
#include "platform/result.h"
#include "platform/widgets/window.h"

namespace quillmar {

class PackDetailsController;
class StackView;

class ImportSheetController final : public WindowDelegate {
 public:
  /// Called once, when the sheet has left the screen: with the user's choice, or absent if the
  /// user cancelled. It may destroy the controller.
  using Completion = std::function<void(std::optional<ImportMode> mode)>;

  /// `source` names where the pack came from: a file name or a host name. The services are not
  /// owned and must outlive the controller.
  ImportSheetController(WindowSystem& windows, const SettingsManager& settings,
                        QuillmarConfig incoming, std::string source);
  ~ImportSheetController() override;

  ImportSheetController(const ImportSheetController&) = delete;
  ImportSheetController& operator=(const ImportSheetController&) = delete;

  /// The pack as text: a line for each folder and item.
  static std::string describe(const QuillmarConfig& config);

  /// Fills the window. What a merge would add is computed now.
  void buildUI();

  /// Shows the sheet on the window. Fails, without calling `completion`, if the sheet cannot be
  /// shown.
  Result<void> present(Window& parent, Completion completion);

  /// Ends the sheet without calling the completion.
  void discard();

  const QuillmarConfig& incoming() const { return incoming_; }
  Window& window() { return window_; }
  /// Null if "Show Details…" was not pressed.
  PackDetailsController* details() const { return details_.get(); }

  // Actions of the buttons.

  void mergePressed();
  void replacePressed();
  void cancelPressed();
  void showDetailsPressed();

  void windowWillClose(Window& window) override;

 private:
  void addTexts(StackView& column, std::size_t descriptionLength) const;
  void addListing(StackView& column);
  void addSummary(StackView& column, const std::string& warnings) const;
  void addButtons(StackView& column);
  void finish(std::optional<ImportMode> mode);

  WindowSystem& windows_;
  const SettingsManager& settings_;
  const QuillmarConfig incoming_;
  const std::string source_;
  Window window_;
  std::unique_ptr<PackDetailsController> details_;
  Completion completion_;
  std::optional<ImportMode> mode_;
};

}  // namespace quillmar
