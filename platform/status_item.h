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
  /// Called for a chosen entry, on the main thread, in a turn of the main queue of its own and
  /// after the panel has had its answer. `activation` is what this choice brought, and no other: a
  /// token is handed on once.
  using ActionHandler = std::function<void(const ActionEntry& entry, const Activation& activation)>;

  virtual ~StatusItem() = default;

  // State to show.

  virtual void setImage(std::optional<Image> image) = 0;

  /// Replaces the menu. The entries of the menu before stay valid until the next replacement, so a
  /// click on a menu that is open meanwhile still does what it showed.
  virtual void setMenu(Menu menu) = 0;

  // Events from the user.

  void setActionHandler(ActionHandler handler) { actionHandler_ = std::move(handler); }

 protected:
  void sendAction(const ActionEntry& entry, const Activation& activation) const {
    if (actionHandler_) actionHandler_(entry, activation);
  }

 private:
  ActionHandler actionHandler_;
};

}  // namespace quillmar
