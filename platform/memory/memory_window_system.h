// A screen in memory. It records what each window and widget shows, for tests to inspect. Tests act
// as the user through the functions of the widget model. Main thread.

#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/control_state.h"
#include "platform/memory/memory_canvas.h"
#include "platform/memory/memory_status_item.h"
#include "platform/task_queue.h"
#include "platform/widgets/text_field.h"
#include "platform/widgets/view.h"
#include "platform/widgets/window.h"
#include "platform/window_system.h"

namespace quillmar {

/// The visible state of one widget.
struct MemoryWidget {
  /// Text of a label or a field, title of a button or checkbox, selected title of a pop-up button,
  /// name of an image.
  std::string text;
  std::string placeholder;
  bool enabled = true;
  bool hidden = false;
  /// For a field: whether it is editable, the open list of completions, and the selected one.
  bool editable = true;
  std::vector<TextCompletion> completions;
  std::optional<std::size_t> selectedCompletion;
  bool isDefaultButton = false;
  /// For a tab view.
  std::vector<std::string> tabs;
  std::size_t selectedTab = 0;
  /// For a checkbox.
  ControlState state = ControlState::off;
  /// The name reported to screen readers.
  std::string accessibilityLabel;
  AccessibilityRole accessibilityRole = AccessibilityRole::group;
  /// For a custom view: what it has drawn, its value and state for screen readers, and whether it
  /// captures the keyboard.
  Drawing drawing;
  std::string accessibilityValue;
  bool accessibilityPressed = false;
  bool capturesKeyboard = false;
  /// For a scroll view: the last scroll step.
  std::optional<ScrollStep> scrolledTo;

  bool operator==(const MemoryWidget&) const = default;
};

/// An open panel.
struct MemoryFilePanel {
  Window* parent = nullptr;
  /// Set for the kind of the panel.
  std::optional<OpenPanel> open;
  std::optional<SavePanel> save;
  /// The user chooses this file, or cancels (absent). May destroy the panel.
  FilePanelCompletion end;
};

class MemoryWindowSystem final : public WindowSystem {
 public:
  struct PopUp {
    Menu menu;
    std::optional<ScreenPoint> position;
    Activation activation;
  };

  /// Menu actions run as tasks of `mainQueue`.
  explicit MemoryWindowSystem(TaskQueue& mainQueue);
  ~MemoryWindowSystem() override;

  /// If set, every call fails with this error.
  std::optional<Error> failure;

  Result<std::unique_ptr<WindowPeer>> makeWindowPeer(Window& window) override;
  Result<void> popUpMenu(Menu menu, std::optional<ScreenPoint> position,
                         const Activation& activation,
                         std::function<void(const ActionEntry& entry)> choose) override;
  Result<std::unique_ptr<FilePanelPeer>> showOpenPanel(Window& parent, const OpenPanel& panel,
                                                       FilePanelCompletion onEnd) override;
  Result<std::unique_ptr<FilePanelPeer>> showSavePanel(Window& parent, const SavePanel& panel,
                                                       FilePanelCompletion onEnd) override;
  Result<std::unique_ptr<StatusItem>> makeEmbeddedStatusItem() override;

  // State on the screen.

  /// Back to front.
  const std::vector<Window*>& windows() const { return windows_; }
  Window* frontWindow() const { return windows_.empty() ? nullptr : windows_.back(); }
  /// The activation with which the front window was shown.
  const Activation& lastActivation() const { return lastActivation_; }
  /// Title shown for a visible window.
  const std::string& titleOnScreen(const Window& window) const;
  bool resizableOnScreen(const Window& window) const;
  const Size& minimumSizeOnScreen(const Window& window) const;
  bool placedInMiddle(const Window& window) const;

  /// Absent if the view has no peer.
  const MemoryWidget* widget(const View& view) const;
  /// Number of widgets in all windows.
  std::size_t widgetCount() const { return widgets_.size(); }
  /// The view with the keyboard focus: the first responder, if it accepts input.
  View* focused(const Window& window) const;

  /// The open panels, oldest first.
  const std::vector<MemoryFilePanel*>& filePanels() const { return filePanels_; }

  /// How often the alert sound was played.
  int beeps() const { return beeps_; }

  const std::optional<PopUp>& popUp() const { return popUp_; }
  /// The visible ones, oldest first.
  const std::vector<MemoryStatusItem*>& embeddedStatusItems() const { return embedded_; }

  // Events from the user.

  /// Chooses the first entry at the path in the open menu and closes the menu. Returns false if
  /// there is none.
  bool chooseFromPopUp(const MemoryStatusItem::Path& path);

 private:
  class ViewOnScreen;
  class WindowOnScreen;
  class EmbeddedItem;
  class PanelOnScreen;

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
  int beeps_ = 0;
  std::optional<PopUp> popUp_;
  /// The open menu, as a status item that can be clicked.
  std::unique_ptr<MemoryStatusItem> popUpItem_;
  std::vector<MemoryStatusItem*> embedded_;
  std::vector<MemoryFilePanel*> filePanels_;
};

}  // namespace quillmar
