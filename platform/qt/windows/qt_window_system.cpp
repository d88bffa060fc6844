#include "platform/qt/windows/qt_window_system.h"

#include <utility>

#include "platform/qt/menus/embedded_status_item.h"
#include "platform/qt/menus/pop_up_menu.h"
#include "platform/qt/widgets/accessible_widgets.h"
#include "platform/qt/windows/keyboard_layout.h"
#include "platform/qt/windows/qt_file_panel.h"
#include "platform/qt/windows/qt_window_peer.h"

namespace quillmar {

namespace {

/// Precondition: the window has been shown.
QWidget& widgetOf(const Window& window) {
  return static_cast<QtWindowPeer*>(window.peer())->widget();
}

}  // namespace

QtWindowSystem::QtWindowSystem(TaskQueue& mainQueue) : mainQueue_(mainQueue) {
  makeWidgetsAccessible();
  followKeyboardLayout();
}

Result<std::unique_ptr<WindowPeer>> QtWindowSystem::makeWindowPeer(Window& window) {
  return std::unique_ptr<WindowPeer>(std::make_unique<QtWindowPeer>(window));
}

Result<void> QtWindowSystem::popUpMenu(Menu menu, std::optional<ScreenPoint> position,
                                       const Activation& activation,
                                       std::function<void(const ActionEntry& entry)> choose) {
  const auto perform = [choose = std::move(choose)](const ActionEntry& chosen) {
    // The choice was made in a window of this program, which needs no permission for the next one.
    performEntry(chosen, {}, [&](const ActionEntry& entry, const Activation&) {
      if (choose) choose(entry);
    });
  };
  popUpMenuWidget(menu, position, activation, {.mainQueue = mainQueue_, .choose = perform});
  return {};
}

Result<std::unique_ptr<FilePanelPeer>> QtWindowSystem::showOpenPanel(Window& parent,
                                                                     const OpenPanel& panel,
                                                                     FilePanelCompletion onEnd) {
  return std::unique_ptr<FilePanelPeer>(
      std::make_unique<QtFilePanel>(panel, widgetOf(parent), std::move(onEnd)));
}

Result<std::unique_ptr<FilePanelPeer>> QtWindowSystem::showSavePanel(Window& parent,
                                                                     const SavePanel& panel,
                                                                     FilePanelCompletion onEnd) {
  return std::unique_ptr<FilePanelPeer>(
      std::make_unique<QtFilePanel>(panel, widgetOf(parent), std::move(onEnd)));
}

Result<std::unique_ptr<StatusItem>> QtWindowSystem::makeEmbeddedStatusItem() {
  return std::unique_ptr<StatusItem>(std::make_unique<EmbeddedStatusItem>(mainQueue_));
}

}  // namespace quillmar
