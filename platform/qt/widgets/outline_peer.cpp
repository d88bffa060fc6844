#include "platform/qt/widgets/outline_peer.h"

#include <QItemSelectionModel>
#include <QScopedValueRollback>
#include <QScrollBar>

#include "platform/qt/widgets/fonts.h"

namespace quillmar {

namespace {

constexpr int fewestRows = 4;
constexpr int preferredRows = 10;
constexpr int preferredWidth = 500;
/// In characters.
constexpr int shortestLine = 20;

}  // namespace

OutlinePeer::OutlinePeer(OutlineView& outline, QtWindowPeer& window, QWidget& parent)
    : WidgetPeer(outline, window, new OutlineWidget(&parent)),
      outline_(outline),
      items_(new OutlineItemModel(outline, &tree())) {
  tree().setModel(items_);
  tree().setOnCheckbox([this](const QModelIndex& index, const std::string& identifier) {
    user(index, [&](std::size_t row) { outline_.toggle(row, identifier); });
  });
  QObject::connect(&tree(), &QTreeView::expanded, receiver(), [this](const QModelIndex& index) {
    user(index, [this](std::size_t row) { outline_.expand(row); });
  });
  QObject::connect(&tree(), &QTreeView::collapsed, receiver(), [this](const QModelIndex& index) {
    user(index, [this](std::size_t row) { outline_.collapse(row); });
  });
  QObject::connect(&tree(), &QTreeView::doubleClicked, receiver(),
                   [this](const QModelIndex& index) {
                     user(index, [this](std::size_t row) { outline_.doubleClick(row); });
                   });
  QObject::connect(tree().selectionModel(), &QItemSelectionModel::selectionChanged, receiver(),
                   [this] { userSelected(); });
  rowsChanged();
}

OutlinePeer::~OutlinePeer() {
  // The widget may be in the middle of an event, and is deleted later.
  if (!hasWidget()) return;
  programActs_ = true;
  tree().setOnCheckbox({});
  items_->detach();
}

template <class Verb>
void OutlinePeer::user(const QModelIndex& index, const Verb& verb) {
  const OutlineNode* const node = items_->node(index);
  if (programActs_ || node == nullptr) return;
  if (const auto row = outline_.indexOf(*node)) verb(*row);
}

void OutlinePeer::userSelected() {
  const QModelIndexList selected = tree().selectionModel()->selectedIndexes();
  if (!selected.isEmpty()) {
    user(selected.first(), [this](std::size_t row) { outline_.select(row); });
  } else if (!programActs_) {
    showSelection(false);
  }
}

void OutlinePeer::rowsChanged() {
  const QScopedValueRollback<bool> programActs(programActs_, true);
  QScrollBar& bar = *tree().verticalScrollBar();
  const int position = bar.value();
  items_->reset();
  for (const OutlineNode* const node : outline_.tree().visible()) {
    if (node->expanded) showExpansion(*node);
  }
  showSelection(false);
  tree().doItemsLayout();
  bar.setValue(position);
}

void OutlinePeer::valuesChanged() {
  items_->valuesChanged();
  // The toolkit draws only the rows of the top level again.
  tree().viewport()->update();
}

void OutlinePeer::expansionChanged(const OutlineNode& node) {
  const QScopedValueRollback<bool> programActs(programActs_, true);
  showExpansion(node);
}

void OutlinePeer::showExpansion(const OutlineNode& node) {
  tree().setExpanded(items_->indexOf(node), node.expanded);
}

void OutlinePeer::selectionChanged() {
  showSelection(true);
}

void OutlinePeer::showSelection(bool scrolls) {
  const QScopedValueRollback<bool> programActs(programActs_, true);
  const auto index = outline_.selectedIndex();
  const QModelIndex item =
      index ? items_->indexOf(*outline_.tree().visible()[*index]) : QModelIndex();
  tree().setAutoScroll(scrolls);
  tree().selectionModel()->setCurrentIndex(item, QItemSelectionModel::ClearAndSelect);
  tree().setAutoScroll(true);
  if (scrolls && item.isValid()) tree().reveal(item);
}

std::size_t OutlinePeer::rowsPerPage() const {
  return static_cast<std::size_t>(tree().rowsPerPage());
}

void OutlinePeer::update() {
  // The rows are as high as the font needs.
  tree().setFont(desktopFont({}, tree()));
}

Extent OutlinePeer::contentHorizontal() const {
  const int least = shortestLine * tree().fontMetrics().averageCharWidth();
  return {least, least, preferredWidth, Extent::unlimited};
}

Extent OutlinePeer::contentVertical(int /*width*/) const {
  const int frame = 2 * tree().frameWidth();
  const int least = fewestRows * tree().rowHeight() + frame;
  return {least, least, preferredRows * tree().rowHeight() + frame, Extent::unlimited};
}

}  // namespace quillmar
