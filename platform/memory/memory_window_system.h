// A screen in memory. It keeps what each window and widget shows, for tests to look at; tests act
// as the user through the functions of the widget model. Main thread.

#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/memory/memory_status_item.h"
#include "platform/task_queue.h"
#include "platform/widgets/view.h"
#include "platform/widgets/window.h"
#include "platform/window_system.h"

namespace quillmar {

/// What a user sees of one widget.
struct MemoryWidget {
  /// Text of a label or a field, title of a button, name of an image.
  std::string text;
  std::string placeholder;
  bool enabled = true;
  bool hidden = false;
  /// In a field: what is typed is taken.
  bool editable = true;
  bool isDefaultButton = false;
  /// What a screen reader calls it.
  std::string accessibilityLabel;
  AccessibilityRole accessibilityRole = AccessibilityRole::group;
  /// In a view that scrolls: where it was moved last.
  std::optional<ScrollStep> scrolledTo;

  bool operator==(const MemoryWidget&) const = default;
};

class MemoryWindowSystem final : public WindowSystem {
 public:
  struct PopUp {
    Menu menu;
    std::optional<ScreenPoint> position;
    Activation activation;
  };

  /// Actions of menus run in turns of `mainQueue`.
  explicit MemoryWindowSystem(TaskQueue& mainQueue);
  ~MemoryWindowSystem() override;

  /// Set: every call fails with it.
  std::optional<Error> failure;

  Result<std::unique_ptr<WindowPeer>> makeWindowPeer(Window& window) override;
  Result<void> popUpMenu(Menu menu, std::optional<ScreenPoint> position,
                         const Activation& activation,
                         std::function<void(const ActionEntry& entry)> choose) override;
  Result<std::unique_ptr<StatusItem>> makeEmbeddedStatusItem() override;

  // What is on the screen.

  /// Back to front.
  const std::vector<Window*>& windows() const { return windows_; }
  Window* frontWindow() const { return windows_.empty() ? nullptr : windows_.back(); }
  /// The activation with which the front window was shown.
  const Activation& lastActivation() const { return lastActivation_; }
  /// Title of a window that is on the screen.
  const std::string& titleOnScreen(const Window& window) const;
  bool resizableOnScreen(const Window& window) const;
  const Size& minimumSizeOnScreen(const Window& window) const;
  bool placedInMiddle(const Window& window) const;

  /// Absent for a view that has no widget.
  const MemoryWidget* widget(const View& view) const;
  /// How many there are in all windows.
  std::size_t widgetCount() const { return widgets_.size(); }
  /// What the keyboard goes to: the first responder, as long as its widget can have the focus.
  View* focused(const Window& window) const;

  const std::optional<PopUp>& popUp() const { return popUp_; }
  /// Those that are shown, oldest first.
  const std::vector<MemoryStatusItem*>& embeddedStatusItems() const { return embedded_; }

  // The user.

  /// Chooses the first entry at the path of the menu that is open, and closes the menu; false when
  /// there is none.
  bool chooseFromPopUp(const MemoryStatusItem::Path& path);

 private:
  class ViewOnScreen;
  class WindowOnScreen;
  class EmbeddedItem;

  struct ShownWindow {
    std::string title;
    View* focused = nullptr;
    bool resizable = false;
    Size minimumSize;
    bool inMiddle = false;
  };

  void showSubviews(View& view);

  TaskQueue& mainQueue_;
  std::vector<Window*> windows_;
  std::map<const Window*, ShownWindow> shown_;
  std::map<const View*, MemoryWidget> widgets_;
  Activation lastActivation_;
  std::optional<PopUp> popUp_;
  /// The menu that is open, as one that can be clicked.
  std::unique_ptr<MemoryStatusItem> popUpItem_;
  std::vector<MemoryStatusItem*> embedded_;
};

}  // namespace quillmar
