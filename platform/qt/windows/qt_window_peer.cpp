#include "platform/qt/windows/qt_window_peer.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/qt/widgets/make_widgets.h"
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
      widget_(new WindowWidget({.key = [this](const KeyPress& press) { return keyPressed(press); },
                                .close = [this] { window_.performClose(); },
                                .looksChanged = [this] { looksChanged(); },
                                .layOut = [this] { layOut(); }})) {
  QtWindowPeer::windowChanged();
}

QtWindowPeer::~QtWindowPeer() {
  if (!widget_) return;
  const ProgramActs programActs(*this);
  // The widget may be in the middle of an event.
  widget_->detach();
  widget_->hide();
  widget_->deleteLater();
}

void QtWindowPeer::windowChanged() {
  const ProgramActs programActs(*this);
  // The toolkit has a placeholder of its own in titles.
  widget_->setWindowTitle(QString::fromStdString(window_.title())
                              .replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")));
  if (!widget_->isVisible()) updateFlags();
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
  if (widget_->windowFlags() != flags) widget_->setWindowFlags(flags);
}

void QtWindowPeer::firstResponderChanged() {
  showFocus();
}

void QtWindowPeer::showFocus() {
  const ProgramActs programActs(*this);
  View* const wanted = window_.firstResponder();
  if (wanted != nullptr && wanted->peer() != nullptr) {
    WidgetPeer& peer = widgetPeer(*wanted);
    if (peer.widget().isEnabledTo(widget_) && peer.widget().isVisibleTo(widget_)) {
      if (widget_->focusWidget() != &peer.widget()) peer.takeFocus();
      return;
    }
  }
  // A text that is being selected may keep the focus. Without any, the toolkit would choose a
  // widget when the window is activated.
  const QWidget* const focused = widget_->focusWidget();
  if (focused == nullptr || focused->focusPolicy() != Qt::ClickFocus) widget_->setFocus();
}

void QtWindowPeer::userFocused(View& view) {
  if (programActs_ > 0) return;
  window_.focus(view.acceptsFirstResponder() ? &view : nullptr);
}

bool QtWindowPeer::keyPressed(const KeyPress& press) {
  return programActs_ == 0 && window_.key(press);
}

void QtWindowPeer::contentChanged() {
  widget_->requestLayout();
}

void QtWindowPeer::looksChanged() {
  if (window_.contentView() == nullptr) return;
  walkPeers(*window_.contentView(), [](WidgetPeer& peer) { peer.viewChanged(); });
}

QSize QtWindowPeer::neededSize(const QSize& room) const {
  const Size& stated = window_.contentSize();
  QSize size(pixels(stated.width), pixels(stated.height));
  if (window_.contentView() != nullptr) {
    const WidgetPeer& content = widgetPeer(*window_.contentView());
    const Extent width = content.horizontal();
    size.setWidth(std::max(size.width(), size.width() > 0 ? width.tight : width.preferred));
    size.setWidth(std::min(size.width(), room.width()));
    size.setHeight(std::max(size.height(), content.vertical(size.width()).preferred));
  }
  return size.boundedTo(room).expandedTo(QSize(1, 1));
}

void QtWindowPeer::layOut() {
  const ProgramActs programActs(*this);
  const QScreen& screen = widget_->isVisible() ? *widget_->screen() : screenOfPointer();
  const QRect room = screen.availableGeometry().marginsRemoved(frameOf(*widget_));
  const QSize size = neededSize(room.size());
  widget_->setFixedSize(size);
  if (window_.contentView() != nullptr) {
    widgetPeer(*window_.contentView()).place(QRect(QPoint(0, 0), size));
  }
  showFocus();
  // A window that has grown past the edge of the screen comes back.
  if (!widget_->isVisible()) return;
  const QPoint outside = widget_->geometry().bottomRight() - room.bottomRight();
  const QPoint back(std::max(0, outside.x()), std::max(0, outside.y()));
  if (!back.isNull()) widget_->move(widget_->pos() - back);
}

void QtWindowPeer::show(const Activation& activation) {
  const ProgramActs programActs(*this);
  if (!widget_->isVisible()) {
    updateFlags();
    becomeSheet();
    layOut();
  }
  placeOnScreen();
  showFocus();
  presentWindow(*widget_, activation);
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
  const bool centers = window_.takeCenters();
  const QRect frame = QRect(QPoint(0, 0), widget_->size()).marginsAdded(frameOf(*widget_));
  const QWindow* const parent = widget_->windowHandle()->transientParent();
  if (!widget_->isVisible() && parent != nullptr) {
    widget_->move(parent->frameGeometry().center() - QRect(QPoint(0, 0), frame.size()).center());
  } else if (centers) {
    const QRect screen = screenOfPointer().availableGeometry();
    widget_->move(screen.center() - QRect(QPoint(0, 0), frame.size()).center());
  } else if (!widget_->isVisible() && place_) {
    widget_->move(*place_);
  }
}

void QtWindowPeer::hide() {
  const ProgramActs programActs(*this);
  if (!widget_->isVisible()) return;
  place_ = widget_->pos();
  widget_->hide();
}

}  // namespace quillmar
