#include "platform/qt/widgets/stack_peer.h"

#include <QStyle>
#include <algorithm>

#include "platform/qt/widgets/make_widgets.h"
#include "platform/qt/windows/qt_window_peer.h"

namespace quillmar {

namespace {

Extent plus(Extent extent, int length) {
  extent.minimum += length;
  extent.unclipped += length;
  extent.preferred += length;
  extent.maximum = std::min(Extent::unlimited, extent.maximum + length);
  return extent;
}

/// The length of a view across the direction of its stack. `maximum` is the limit that the view
/// states.
int lengthAcross(const Extent& extent, int maximum, StackAlignment alignment, int available) {
  const bool fills = alignment == StackAlignment::fill;
  const int wanted = fills ? available : std::max(extent.preferred, extent.maximum);
  return std::min({available, wanted, maximum});
}

/// From the leading edge of the stack.
int offsetAcross(StackAlignment alignment, int spare) {
  if (alignment == StackAlignment::center) return spare / 2;
  return alignment == StackAlignment::trailing ? spare : 0;
}

int leftInsets(const EdgeInsets& insets) {
  return pixels(insets.left) + pixels(insets.right);
}

int topInsets(const EdgeInsets& insets) {
  return pixels(insets.top) + pixels(insets.bottom);
}

}  // namespace

StackPeer::StackPeer(StackView& stack, QtWindowPeer& window, QWidget& parent)
    : WidgetPeer(stack, window, new QWidget(&parent)), stack_(stack) {}

void StackPeer::subviewsChanged() {
  const QtWindowPeer::ProgramFocusChange programActs(window());
  for (View* const subview : stack_.subviews()) {
    if (subview->peer() == nullptr) makeWidgets(*subview, window(), widget());
  }
  window().contentChanged();
}

Extent StackPeer::contentHorizontal() const {
  const std::vector<WidgetPeer*> peers = shown();
  const std::vector<Extent> extents = horizontals(peers);
  const int insets = leftInsets(stack_.edgeInsets());
  if (!isRow()) return plus(widestOf(extents), insets);
  return plus(sumOf(extents), gaps(peers) + insets);
}

Extent StackPeer::contentVertical(int width) const {
  const std::vector<WidgetPeer*> peers = shown();
  const EdgeInsets& insets = stack_.edgeInsets();
  const std::vector<Extent> extents = verticals(peers, widths(peers, width - leftInsets(insets)));
  if (isRow()) return plus(widestOf(extents), topInsets(insets));
  return plus(sumOf(extents), gaps(peers) + topInsets(insets));
}

int StackPeer::firstLineMiddle(int width) const {
  const std::vector<WidgetPeer*> peers = shown();
  const bool isCentered = isRow() && stack_.alignment() == StackAlignment::center;
  if (peers.empty() || isCentered) return WidgetPeer::firstLineMiddle(width);
  const EdgeInsets& insets = stack_.edgeInsets();
  const int firstWidth = widths(peers, width - leftInsets(insets)).front();
  return pixels(insets.top) + peers.front()->firstLineMiddle(firstWidth);
}

void StackPeer::place(const QRect& frame) {
  WidgetPeer::place(frame);
  const std::vector<WidgetPeer*> peers = shown();
  const EdgeInsets& insets = stack_.edgeInsets();
  const QRect inside = QRect(QPoint(0, 0), frame.size())
                           .adjusted(pixels(insets.left), pixels(insets.top), -pixels(insets.right),
                                     -pixels(insets.bottom));
  const std::vector<int> wide = widths(peers, inside.width());
  const std::vector<Extent> extents = verticals(peers, wide);
  const std::vector<int> tall =
      isRow() ? std::vector<int>() : distribute(extents, inside.height() - gaps(peers));
  const StackAlignment alignment = stack_.alignment();

  QPoint at = inside.topLeft();
  for (std::size_t i = 0; i < peers.size(); ++i) {
    const int height =
        isRow() ? lengthAcross(extents[i], peers[i]->maximumHeight(), alignment, inside.height())
                : tall[i];
    const int spare = isRow() ? inside.height() - height : inside.width() - wide[i];
    const int offset = offsetAcross(alignment, spare);
    const QRect place(at + (isRow() ? QPoint(0, offset) : QPoint(offset, 0)),
                      QSize(wide[i], height));
    // Lines may begin on the right.
    peers[i]->place(QStyle::visualRect(widget().layoutDirection(), widget().rect(), place));
    const int step = pixels(stack_.spacingAfter(peers[i]->view())) + (isRow() ? wide[i] : height);
    at += isRow() ? QPoint(step, 0) : QPoint(0, step);
  }
}

std::vector<WidgetPeer*> StackPeer::shown() const {
  std::vector<WidgetPeer*> peers;
  for (View* const subview : stack_.subviews()) {
    if (!subview->hidden() && subview->peer() != nullptr) peers.push_back(&widgetPeer(*subview));
  }
  return peers;
}

int StackPeer::gaps(const std::vector<WidgetPeer*>& peers) const {
  int sum = 0;
  for (std::size_t i = 0; i + 1 < peers.size(); ++i) {
    sum += pixels(stack_.spacingAfter(peers[i]->view()));
  }
  return sum;
}

std::vector<Extent> StackPeer::horizontals(const std::vector<WidgetPeer*>& peers) const {
  std::vector<Extent> extents;
  extents.reserve(peers.size());
  for (const WidgetPeer* const peer : peers) extents.push_back(peer->horizontal());
  return extents;
}

std::vector<int> StackPeer::widths(const std::vector<WidgetPeer*>& peers, int width) const {
  const std::vector<Extent> extents = horizontals(peers);
  if (isRow()) return distribute(extents, width - gaps(peers));
  std::vector<int> widths;
  widths.reserve(extents.size());
  for (std::size_t i = 0; i < extents.size(); ++i) {
    widths.push_back(lengthAcross(extents[i], peers[i]->maximumWidth(), stack_.alignment(), width));
  }
  return widths;
}

std::vector<Extent> StackPeer::verticals(const std::vector<WidgetPeer*>& peers,
                                         const std::vector<int>& widths) {
  std::vector<Extent> extents;
  extents.reserve(peers.size());
  for (std::size_t i = 0; i < peers.size(); ++i) extents.push_back(peers[i]->vertical(widths[i]));
  return extents;
}

}  // namespace quillmar
