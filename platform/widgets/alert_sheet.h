// The sheet that shows an alert.

#pragma once

#include <cstddef>
#include <functional>

#include "platform/result.h"
#include "platform/widgets/alert.h"
#include "platform/widgets/window.h"

namespace quillmar {

class StackView;

class AlertSheet final : public WindowDelegate {
 public:
  /// `onClose` is called when the sheet has left the screen, with the index of the pressed button
  /// or absent if none was pressed. It may destroy the alert.
  AlertSheet(WindowSystem& windowSystem, Alert alert,
             std::function<void(std::optional<std::size_t> button)> onClose);

  Result<void> begin(Window& parent, const Activation& activation);

  void windowWillClose(Window& window) override;

 private:
  void build();
  void addTexts(StackView& column) const;
  void addButtons(StackView& column);

  Alert alert_;
  std::function<void(std::optional<std::size_t>)> onClose_;
  std::optional<std::size_t> pressed_;
  Window sheet_;
};

}  // namespace quillmar
