#include "platform/qt/widgets/tab_view_peer.h"

#include <QSignalBlocker>
#include <algorithm>

#include "platform/qt/widgets/make_widgets.h"
#include "platform/qt/windows/qt_window_peer.h"

namespace quillmar {

TabViewPeer::TabViewPeer(TabView& tabView, QtWindowPeer& window, QWidget& parent)
    : WidgetPeer(tabView, window, new QWidget(&parent)), tabView_(tabView) {
  bar_ = new QTabBar(&widget());
  bar_->setDocumentMode(true);
  bar_->setExpanding(false);
  bar_->setFocusPolicy(Qt::TabFocus);
  watchFocus(*bar_);
  QObject::connect(bar_, &QTabBar::currentChanged, receiver(),
                   [this](int index) { tabView_.select(static_cast<std::size_t>(index)); });
}

void TabViewPeer::subviewsChanged() {
  const QtWindowPeer::ProgramFocusChange programActs(window());
  for (const TabView::Tab& tab : tabView_.tabs()) {
    if (tab.content->peer() == nullptr) makeWidgets(*tab.content, window(), widget());
  }
  update();
  window().contentChanged();
}

void TabViewPeer::update() {
  const QSignalBlocker setByProgram(bar_);
  for (std::size_t i = static_cast<std::size_t>(bar_->count()); i < tabView_.tabs().size(); ++i) {
    // A single ampersand would be a mnemonic.
    bar_->addTab(QString::fromStdString(tabView_.tabs()[i].label)
                     .replace(QLatin1Char('&'), QStringLiteral("&&")));
  }
  bar_->setCurrentIndex(static_cast<int>(tabView_.selectedIndex()));
  bar_->setAccessibleName(QString::fromStdString(tabView_.accessibilityLabel()));
}

std::vector<WidgetPeer*> TabViewPeer::contents() const {
  std::vector<WidgetPeer*> peers;
  for (const TabView::Tab& tab : tabView_.tabs()) {
    if (tab.content->peer() != nullptr) peers.push_back(&widgetPeer(*tab.content));
  }
  return peers;
}

// The window keeps its size when another tab is selected.

Extent TabViewPeer::contentHorizontal() const {
  const int bar = bar_->sizeHint().width();
  std::vector<Extent> extents{{bar, bar, bar, Extent::unlimited}};
  for (const WidgetPeer* const content : contents()) extents.push_back(content->horizontal());
  return widestOf(extents);
}

Extent TabViewPeer::contentVertical(int width) const {
  std::vector<Extent> extents;
  for (const WidgetPeer* const content : contents()) extents.push_back(content->vertical(width));
  Extent content = widestOf(extents);
  content.maximum = Extent::unlimited;
  return sumOf({Extent::fixed(bar_->sizeHint().height()), content});
}

void TabViewPeer::place(const QRect& frame) {
  WidgetPeer::place(frame);
  const int bar = bar_->sizeHint().height();
  bar_->setGeometry(0, 0, frame.width(), bar);
  const QRect below(0, bar, frame.width(), std::max(0, frame.height() - bar));
  for (WidgetPeer* const content : contents()) content->place(below);
}

}  // namespace quillmar
