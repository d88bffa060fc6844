// The one icon in the desktop's panel and the menu behind it. Main thread.

#pragma once

#include <functional>
#include <optional>

#include "platform/application.h"
#include "platform/image.h"
#include "platform/menu.h"

namespace quillmar {

class StatusItem {
 public:
  /// Called for a chosen entry without an action of its own. Actions and the handler run on the
  /// main thread, in their own turn of the main queue, after the panel has received its reply.
  /// `activation` belongs to this choice only: a token is handed on once.
  using ActionHandler = MenuHandler;

  virtual ~StatusItem() = default;

  // State to show.

  virtual void setImage(std::optional<Image> image) = 0;

  /// Replaces the menu. The entries of the previous menu stay valid until the next replacement, so
  /// a click on a menu that is open meanwhile still does what it showed.
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
