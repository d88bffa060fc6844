#include "platform/qt/widgets/completion_list.h"

#include <QAbstractListModel>
#include <QAccessible>
#include <QMouseEvent>
#include <QScreen>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

#include "platform/qt/images/image_icons.h"
#include "platform/qt/widgets/colors.h"

namespace quillmar {

namespace {

constexpr int iconSide = 16;
constexpr int rowHeight = 24;
/// Of the colour of the selection behind the row under the pointer.
constexpr float hoverShare = 0.2F;
/// Of the colour of the text in the frame: styles draw one that cannot be seen on a dark window.
constexpr float frameShare = 0.35F;

}  // namespace

/// Makes the icons when they are drawn.
class CompletionModel final : public QAbstractListModel {
 public:
  explicit CompletionModel(QWidget& view) : QAbstractListModel(&view), view_(view) {}

  const std::vector<TextCompletion>& completions() const { return completions_; }
  void setCompletions(const std::vector<TextCompletion>& completions) {
    beginResetModel();
    completions_ = completions;
    endResetModel();
  }

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(completions_.size());
  }

  QVariant data(const QModelIndex& index, int role) const override {
    if (!index.isValid()) return {};
    const TextCompletion& completion = completions_[static_cast<std::size_t>(index.row())];
    if (role == Qt::DisplayRole) return QString::fromStdString(completion.text);
    if (role == Qt::DecorationRole) return icon(completion.image);
    return {};
  }

 private:
  QIcon icon(const std::optional<Image>& image) const {
    if (!image || !image->isTemplate) return iconOf(image);
    const QPalette& palette = view_.palette();
    return tintedIcon(*image,
                      {.text = palette.color(QPalette::Active, QPalette::Text),
                       .selectedText = palette.color(QPalette::Active, QPalette::HighlightedText)},
                      iconSide, view_.devicePixelRatio());
  }

  QWidget& view_;
  std::vector<TextCompletion> completions_;
};

namespace {

class CompletionDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const QSize hint = QStyledItemDelegate::sizeHint(option, index);
    return hint.expandedTo(QSize(0, rowHeight));
  }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    // The list is part of the active window, although it is a window of its own.
    option->state |= QStyle::State_Active;
    option->state &= ~QStyle::State_HasFocus;
    const bool isSelected = option->state & QStyle::State_Selected;
    if ((option->state & QStyle::State_MouseOver) && !isSelected) {
      option->backgroundBrush =
          mixed(option->palette.color(QPalette::Active, QPalette::Base),
                option->palette.color(QPalette::Active, QPalette::Highlight), hoverShare);
    }
  }
};

}  // namespace

CompletionList::CompletionList(QLineEdit& line, Handlers handlers)
    : QListView(&line),
      line_(line),
      handlers_(std::move(handlers)),
      model_(new CompletionModel(*this)) {
  // Never gets the keyboard, and is above its window on Wayland, too.
  setWindowFlags(Qt::ToolTip | Qt::FramelessWindowHint);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_X11NetWmWindowTypeCombo);
  setFocusPolicy(Qt::NoFocus);
  // Screen readers are told of the selected row only in a list that has the focus.
  setFocusProxy(&line);
  setModel(model_);
  setItemDelegate(new CompletionDelegate(this));
  setFrameStyle(QFrame::Box | QFrame::Plain);
  viewport()->setAttribute(Qt::WA_Hover);
  setEditTriggers(NoEditTriggers);
  setSelectionMode(SingleSelection);
  setUniformItemSizes(true);
  setIconSize({iconSide, iconSide});
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(ScrollPerPixel);
}

void CompletionList::present(const std::vector<TextCompletion>& completions,
                             std::optional<std::size_t> selected) {
  if (completions.empty()) {
    const bool wasSelected = currentIndex().isValid();
    hide();
    if (watched_) watched_->removeEventFilter(this);
    watched_.clear();
    model_->setCompletions({});
    if (wasSelected) {
      QAccessibleEvent focus(&line_, QAccessible::Focus);
      QAccessible::updateAccessibility(&focus);
    }
    return;
  }
  if (completions != model_->completions()) {
    pressed_ = QModelIndex();
    model_->setCompletions(completions);
  }
  setAccessibleName(line_.accessibleName());
  setFont(line_.font());
  colorFrame();
  place();
  if (!isVisible()) {
    show();
    watched_ = line_.window()->windowHandle();
    if (watched_) watched_->installEventFilter(this);
  }
  select(selected);
}

void CompletionList::detach() {
  handlers_ = {};
  hide();
}

void CompletionList::colorFrame() {
  const QPalette& field = line_.palette();
  QPalette frame;
  frame.setColor(QPalette::WindowText,
                 mixed(field.color(QPalette::Base), field.color(QPalette::Text), frameShare));
  setPalette(frame);
  QPalette arrows;
  arrows.setColor(QPalette::WindowText, field.color(QPalette::WindowText));
  verticalScrollBar()->setPalette(arrows);
}

void CompletionList::select(std::optional<std::size_t> row) {
  if (!row) {
    setCurrentIndex(QModelIndex());
    clearSelection();
    scrollToTop();
    return;
  }
  setCurrentIndex(model_->index(static_cast<int>(*row)));
}

void CompletionList::place() {
  const QSize size = wantedSize();
  const QRect field(line_.mapToGlobal(QPoint(0, 0)), line_.size());
  const QRect screen = line_.screen()->availableGeometry();
  QRect place(field.bottomLeft() + QPoint(0, 1), size);
  if (place.bottom() > screen.bottom() && field.top() - size.height() >= screen.top()) {
    place.moveBottom(field.top() - 1);
  }
  place.moveLeft(
      std::max(screen.left(), std::min(place.left(), screen.right() + 1 - size.width())));
  setGeometry(place);
}

QSize CompletionList::wantedSize() const {
  const auto count = static_cast<int>(model_->completions().size());
  const int rows = std::min(count, static_cast<int>(TextField::completionsPerPage));
  int text = 0;
  for (const TextCompletion& completion : model_->completions()) {
    text = std::max(text, fontMetrics().horizontalAdvance(QString::fromStdString(completion.text)));
  }
  const int margins = iconSide + 5 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1);
  const int bar = rows < count ? verticalScrollBar()->sizeHint().width() : 0;
  const int frame = 2 * frameWidth();
  return {std::max(line_.width(), text + margins + bar + frame), rows * sizeHintForRow(0) + frame};
}

bool CompletionList::eventFilter(QObject* watched, QEvent* event) {
  if (watched != watched_) return QListView::eventFilter(watched, event);
  switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
      place();
      break;
    case QEvent::MouseButtonPress:
    case QEvent::Wheel:
      if (const auto dismiss = handlers_.dismiss) dismiss();
      break;
    default:
      break;
  }
  return false;
}

// The selection is the model's, so the pointer must not change it.

void CompletionList::mousePressEvent(QMouseEvent* event) {
  pressed_ =
      event->button() == Qt::LeftButton ? indexAt(event->position().toPoint()) : QModelIndex();
}

void CompletionList::mouseMoveEvent(QMouseEvent* /*event*/) {}

void CompletionList::mouseReleaseEvent(QMouseEvent* event) {
  const QModelIndex pressed = pressed_;
  pressed_ = QModelIndex();
  if (!pressed.isValid() || indexAt(event->position().toPoint()) != pressed) return;
  if (const auto choose = handlers_.choose) choose(static_cast<std::size_t>(pressed.row()));
}

void CompletionList::mouseDoubleClickEvent(QMouseEvent* event) {
  mousePressEvent(event);
}

}  // namespace quillmar
