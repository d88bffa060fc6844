// The icon in the desktop's panel and its menu. Main thread.

#pragma once

#include <functional>
#include <optional>

#include "platform/application.h"
#include "platform/image.h"
#include "platform/menu.h"

namespace quillmar {

class StatusItem {
 public:
  /// Called when an entry without an action is chosen. Actions and the handler run on the main
  /// thread, as a task of the main queue, after the panel has received its reply. `activation`
  /// belongs to this choice only.
  using ActionHandler = MenuHandler;

  virtual ~StatusItem() = default;

  // State to show.

  virtual void setImage(std::optional<Image> image) = 0;

  /// Replaces the menu. The entries of the previous menu stay valid until the next replacement, so
  /// a click in a menu that is still open does what that menu showed.
  virtual void setMenu(Menu menu) = 0;

  // Events from the user.

  void setActionHandler(ActionHandler handler) { actionHandler_ = std::move(handler); }

 protected:
  void sendAction(const ActionEntry& entry, const Activation& activation) const {
    performEntry(entry, activation, actionHandler_);
  }

 private:
  ActionHandler actionHandler_;
};

}  // namespace quillmar
