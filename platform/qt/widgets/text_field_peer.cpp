#include "platform/qt/widgets/text_field_peer.h"

#include <QPainter>
#include <QSignalBlocker>
#include <limits>

#include "platform/qt/widgets/focus_ring.h"
#include "platform/qt/widgets/fonts.h"

namespace quillmar {

namespace {

class LineEdit final : public QLineEdit {
 public:
  explicit LineEdit(QWidget* parent) : QLineEdit(parent) {}

 protected:
  void paintEvent(QPaintEvent* event) override {
    QLineEdit::paintEvent(event);
    if (!hasFocus()) return;
    QPainter painter(this);
    drawFocusRing(painter, *this, palette().color(QPalette::Highlight), 0);
  }
};

}  // namespace

TextFieldPeer::TextFieldPeer(TextField& field, QtWindowPeer& window, QWidget& parent)
    : WidgetPeer(field, window, new LineEdit(&parent)), field_(field) {
  line().setMaxLength(std::numeric_limits<int>::max());
  // Also what input methods and screen readers put in.
  QObject::connect(&line(), &QLineEdit::textChanged, receiver(),
                   [this](const QString& text) { field_.type(text.toStdString()); });
}

TextFieldPeer::~TextFieldPeer() {
  if (list_) list_->detach();
}

void TextFieldPeer::takeFocus() {
  WidgetPeer::takeFocus();
  line().selectAll();
}

void TextFieldPeer::update() {
  line().setFont(desktopFont(field_.font(), line()));
  line().setPlaceholderText(QString::fromStdString(field_.placeholder()));
  line().setReadOnly(!field_.editable());
  updateText();
  updateCompletions();
}

void TextFieldPeer::updateText() {
  const QString text = QString::fromStdString(field_.text());
  // The same text set again would take the cursor and the undo history away.
  if (line().text() == text) return;
  const QSignalBlocker setByProgram(line());
  if (list_ && list_->isVisible()) {
    // An accepted completion: an edit that can be undone, with the cursor at its end.
    line().selectAll();
    line().insert(text);
    return;
  }
  // An unfocused field shows the start of its text; a focused one keeps its cursor.
  const int cursor = line().hasFocus() ? line().cursorPosition() : 0;
  line().setText(text);
  line().setCursorPosition(cursor);
}

void TextFieldPeer::updateCompletions() {
  if (!list_ && field_.completions().empty()) return;
  if (!list_) {
    list_ =
        new CompletionList(line(), {.choose = [this](auto row) { field_.acceptCompletion(row); },
                                    .dismiss = [this] { field_.closeCompletions(); }});
  }
  list_->present(field_.completions(), field_.selectedCompletion());
}

Extent TextFieldPeer::contentHorizontal() const {
  const int least = line().minimumSizeHint().width();
  const int preferred = line().sizeHint().width();
  return {least, least, preferred, Extent::unlimited};
}

Extent TextFieldPeer::contentVertical(int /*width*/) const {
  return Extent::fixed(line().sizeHint().height());
}

}  // namespace quillmar
