#include "platform/qt/windows/qt_window_peer.h"

#include <QApplication>
#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/qt/widgets/make_widgets.h"
#include "platform/qt/widgets/scroll_view_peer.h"
#include "platform/qt/widgets/widget_peer.h"
#include "platform/qt/windows/present_window.h"

namespace quillmar {

namespace {

/// Of a frame and its title bar, while the window manager has not told them.
constexpr QMargins usualFrame(4, 30, 4, 4);

/// Calls `see` for each view of the tree that is on the screen.
template <class See>
void walkPeers(View& view, const See& see) {
  if (view.peer() == nullptr) return;
  see(widgetPeer(view));
  for (View* const subview : view.subviews()) walkPeers(*subview, see);
}

QMargins frameOf(const QWidget& widget) {
  const QMargins frame =
      widget.windowHandle() == nullptr ? QMargins() : widget.windowHandle()->frameMargins();
  return frame.isNull() ? usualFrame : frame;
}

QScreen& screenOfPointer() {
  QScreen* const screen = QGuiApplication::screenAt(QCursor::pos());
  return screen == nullptr ? *QGuiApplication::primaryScreen() : *screen;
}

}  // namespace

QtWindowPeer::QtWindowPeer(Window& window)
    : window_(window),
      widget_(new WindowWidget(
          {.keyEquivalent = [this](const KeyPress& press) { return keyEquivalentPressed(press); },
           .key = [this](const KeyPress& press) { return keyPressed(press); },
           .mouseDown = [this] { window_.mouseDown(); },
           .close = [this] { window_.performClose(); },
           .activated = [this] { activateSheet(); },
           .dragFiles =
               [this](QWidget& widget, const std::vector<std::string>& files) {
                 View* const view = viewOf(widget);
                 return view != nullptr && view->dragFiles(files);
               },
           .dropFiles =
               [this](QWidget& widget, const std::vector<std::string>& files) {
                 View* const view = viewOf(widget);
                 return view != nullptr && view->dropFiles(files);
               },
           .destroyed = [this] { windowDestroyed(); },
           .looksChanged = [this] { looksChanged(); },
           .layOut = [this] { layOut(); },
           .resized = [this] { placeContent(); }})) {
  QtWindowPeer::windowChanged();
}

QtWindowPeer::~QtWindowPeer() {
  if (!widget_) return;
  const ProgramFocusChange programActs(*this);
  // The widget may be in the middle of an event.
  widget_->detach();
  widget_->hide();
  widget_->deleteLater();
}

void QtWindowPeer::windowChanged() {
  const ProgramFocusChange programActs(*this);
  // The toolkit has a placeholder of its own in titles.
  widget_->setWindowTitle(QString::fromStdString(window_.title())
                              .replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")));
  if (!widget_->isVisible()) updateFlags();
  widget_->setIgnoresEarlyClicks(window_.ignoresEarlyClicks());
  View* const content = window_.contentView();
  if (content != nullptr && content->peer() == nullptr) {
    makeWidgets(*content, *this, *widget_);
  }
  contentChanged();
}

void QtWindowPeer::updateFlags() {
  const bool isSheet = window_.sheetParent() != nullptr;
  const bool floats = window_.level() == WindowLevel::floating;
  Qt::WindowFlags flags = Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowCloseButtonHint;
  flags |= isSheet || floats ? Qt::Dialog : Qt::Window;
  flags.setFlag(Qt::WindowStaysOnTopHint, floats);
  flags.setFlag(Qt::WindowMinMaxButtonsHint, window_.resizable());
  if (widget_->windowFlags() != flags) widget_->setWindowFlags(flags);
}

void QtWindowPeer::firstResponderChanged() {
  showFocus();
}

void QtWindowPeer::showFocus() {
  const ProgramFocusChange programActs(*this);
  View* const wanted = window_.firstResponder();
  if (wanted != nullptr && wanted->peer() != nullptr) {
    WidgetPeer& peer = widgetPeer(*wanted);
    if (peer.widget().isEnabledTo(widget_) && peer.widget().isVisibleTo(widget_)) {
      if (widget_->focusWidget() == &peer.keyWidget()) return;
      peer.takeFocus();
      reveal(*wanted);
      return;
    }
  }
  // A text that is being selected may keep the focus. Without any, the toolkit would choose a
  // widget when the window is activated.
  const QWidget* const focused = widget_->focusWidget();
  if (focused == nullptr || focused->focusPolicy() != Qt::ClickFocus) widget_->setFocus();
}

void QtWindowPeer::reveal(const View& view) {
  for (View* around = view.superview(); around != nullptr; around = around->superview()) {
    auto* const scroll = dynamic_cast<ScrollViewPeer*>(around->peer());
    if (scroll != nullptr) scroll->reveal(widgetPeer(view).widget());
  }
}

void QtWindowPeer::userFocused(View& view) {
  // The dialog of a platform theme does not keep the focus from the window that it covers.
  if (programActs_ > 0 || !window_.takesInput()) return;
  window_.focus(view.acceptsFirstResponder() ? &view : nullptr);
}

void QtWindowPeer::keyboardLost() {
  // A view that waits for a key goes on when the user has answered the desktop's question.
  if (!widget_->awaitsPermissionToCapture()) window_.keyboardLost();
}

void QtWindowPeer::captureKeyboard(bool captures) {
  if (widget_) widget_->captureKeyboard(captures);
}

void QtWindowPeer::beep() {
  QApplication::beep();
}

void QtWindowPeer::activateSheet() {
  const Window* sheet = window_.sheet();
  if (sheet == nullptr) return;
  while (sheet->sheet() != nullptr) sheet = sheet->sheet();
  presentWindow(static_cast<QtWindowPeer*>(sheet->peer())->widget(), {});
}

View* QtWindowPeer::viewOf(const QWidget& widget) const {
  View* found = nullptr;
  if (window_.contentView() == nullptr) return found;
  // Inner views come after the outer ones.
  walkPeers(*window_.contentView(), [&](WidgetPeer& peer) {
    if (&peer.widget() == &widget || peer.widget().isAncestorOf(&widget)) found = &peer.view();
  });
  return found;
}

bool QtWindowPeer::keyEquivalentPressed(const KeyPress& press) {
  return programActs_ == 0 && window_.performKeyEquivalent(press);
}

bool QtWindowPeer::keyPressed(const KeyPress& press) {
  return programActs_ == 0 && window_.keyDown(press);
}

void QtWindowPeer::contentChanged() {
  widget_->requestLayout();
}

void QtWindowPeer::windowDestroyed() {
  // Closing may destroy this peer, and its widget in a later event.
  const QPointer<WindowWidget> widget = widget_;
  window_.close();
  if (widget) widget->forgetDisplayWindow();
  // The toolkit would take the window that gets the keyboard next for one that has it already.
  QApplication::setActiveWindow(nullptr);
}

void QtWindowPeer::looksChanged() {
  if (window_.contentView() == nullptr) return;
  walkPeers(*window_.contentView(), [](WidgetPeer& peer) { peer.viewChanged(); });
}

QSize QtWindowPeer::neededSize(const Size& stated, const QSize& room,
                               int Extent::*contentLength) const {
  QSize size(pixels(stated.width), pixels(stated.height));
  if (window_.contentView() != nullptr) {
    const WidgetPeer& content = widgetPeer(*window_.contentView());
    const Extent width = content.horizontal();
    size.setWidth(
        std::max(size.width(), size.width() > 0 ? width.unclipped : width.*contentLength));
    size.setWidth(std::min(size.width(), room.width()));
    size.setHeight(std::max(size.height(), content.vertical(size.width()).*contentLength));
  }
  return size.boundedTo(room).expandedTo(QSize(1, 1));
}

void QtWindowPeer::layOut() {
  const ProgramFocusChange programActs(*this);
  const QScreen& screen = widget_->isVisible() ? *widget_->screen() : screenOfPointer();
  const QRect room = screen.availableGeometry().marginsRemoved(frameOf(*widget_));
  updateSize(room.size());
  placeContent();
  showFocus();
  // A window that has grown past the edge of the screen comes back.
  if (!widget_->isVisible()) return;
  const QPoint outside = widget_->geometry().bottomRight() - room.bottomRight();
  const QPoint back(std::max(0, outside.x()), std::max(0, outside.y()));
  if (!back.isNull()) widget_->move(widget_->pos() - back);
}

void QtWindowPeer::updateSize(const QSize& room) {
  if (!window_.resizable()) {
    widget_->setFixedSize(neededSize(window_.contentSize(), room, &Extent::preferred));
    return;
  }
  const QSize minimum = neededSize(window_.minimumContentSize(), room, &Extent::unclipped);
  widget_->setMinimumSize(minimum);
  widget_->setMaximumSize(QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
  // From then on the size is the user's.
  if (std::exchange(hasSize_, true)) return;
  const QSize stated(pixels(window_.contentSize().width), pixels(window_.contentSize().height));
  widget_->resize(stated.boundedTo(room).expandedTo(minimum));
}

void QtWindowPeer::placeContent() {
  if (window_.contentView() == nullptr || window_.contentView()->peer() == nullptr) return;
  widgetPeer(*window_.contentView()).place(QRect(QPoint(0, 0), widget_->size()));
}

void QtWindowPeer::show(const Activation& activation) {
  const ProgramFocusChange programActs(*this);
  if (!widget_->isVisible()) {
    updateFlags();
    becomeSheet();
    layOut();
  }
  placeOnScreen();
  showFocus();
  presentWindow(*widget_, activation);
  // Scroll views have their sizes now.
  const View* const focused = window_.firstResponder();
  if (focused != nullptr && focused->peer() != nullptr) reveal(*focused);
}

void QtWindowPeer::becomeSheet() {
  const Window* const parent = window_.sheetParent();
  const bool isSheet = parent != nullptr && parent->peer() != nullptr;
  widget_->setWindowModality(isSheet ? Qt::WindowModal : Qt::NonModal);
  // Makes the window's handle, which is not on the screen yet.
  widget_->winId();
  widget_->windowHandle()->setTransientParent(
      isSheet ? static_cast<QtWindowPeer*>(parent->peer())->widget().windowHandle() : nullptr);
}

void QtWindowPeer::placeOnScreen() {
  const bool centers = window_.takeCenterRequest();
  const QRect frame = QRect(QPoint(0, 0), widget_->size()).marginsAdded(frameOf(*widget_));
  const QWindow* const parent = widget_->windowHandle()->transientParent();
  if (!widget_->isVisible() && parent != nullptr) {
    widget_->move(parent->frameGeometry().center() - QRect(QPoint(0, 0), frame.size()).center());
  } else if (centers) {
    const QRect screen = screenOfPointer().availableGeometry();
    const QPoint middle = screen.center() - QRect(QPoint(0, 0), frame.size()).center();
    widget_->move(cascaded(QRect(middle, frame.size()), screen));
  } else if (!widget_->isVisible() && place_) {
    widget_->move(*place_);
  }
}

QPoint QtWindowPeer::cascaded(QRect frame, const QRect& screen) const {
  const auto contentCoveredBy = [this](const QRect& candidate) -> std::optional<QRect> {
    for (const QWidget* const other : QApplication::topLevelWidgets()) {
      if (other == widget_ || !other->isVisible() || !dynamic_cast<const WindowWidget*>(other)) {
        continue;
      }
      // A line below the title bar: the frame's own size is not always known.
      const QRect content = other->geometry();
      if (candidate.contains(content.topLeft()) && candidate.contains(content.topRight())) {
        return content;
      }
    }
    return {};
  };
  while (const std::optional<QRect> content = contentCoveredBy(frame)) {
    const int step = frameOf(*widget_).top();
    frame.moveTopLeft({frame.left() + step, std::max(content->top() + 1, frame.top() + step)});
  }
  // Where there is no room for that the window is seen as a whole.
  frame.moveRight(std::min(frame.right(), screen.right()));
  frame.moveBottom(std::min(frame.bottom(), screen.bottom()));
  return frame.topLeft();
}

void QtWindowPeer::hide() {
  const ProgramFocusChange programActs(*this);
  if (!widget_->isVisible()) return;
  place_ = widget_->pos();
  widget_->hide();
}

}  // namespace quillmar
