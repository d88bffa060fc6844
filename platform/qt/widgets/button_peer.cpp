#include "platform/qt/widgets/button_peer.h"

#include <QApplication>
#include <QPainter>
#include <QPushButton>
#include <QStyleOptionButton>
#include <algorithm>

#include "platform/qt/widgets/colors.h"
#include "platform/qt/widgets/focus_ring.h"
#include "platform/qt/widgets/fonts.h"
#include "platform/qt/widgets/link_widget.h"

namespace quillmar {

namespace {

/// On either side of a push button's title, in device-independent pixels: usually, and if there is
/// little space in the window.
constexpr int spaceBesideTitle = 14;
constexpr int leastSpaceBesideTitle = 10;

/// The button that Return presses is filled with the accent colour: the one that has the focus, or
/// the window's default button while no button has the focus. The focus itself is a ring.
class PushButton final : public QPushButton {
 public:
  explicit PushButton(QWidget* parent) : QPushButton(parent) {
    // A default button changes when the focus moves between other widgets.
    connect(qApp, &QApplication::focusChanged, this, [this] { QWidget::update(); });
  }

 protected:
  void initStyleOption(QStyleOptionButton* option) const override {
    QPushButton::initStyleOption(option);
    option->features.setFlag(QStyleOptionButton::DefaultButton, isPressedByReturn());
    // The ring takes the place of the style's own mark.
    option->state.setFlag(QStyle::State_HasFocus, false);
  }

  void paintEvent(QPaintEvent* event) override {
    if (!isPressedByReturn() || !isEnabled()) return QPushButton::paintEvent(event);
    // Styles that have no accent colour for buttons make the default one look like the others.
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(isDown() ? accent().darker(120) : accent());
    constexpr double radius = 3;
    painter.drawRoundedRect(rect(), radius, radius);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.palette.setColor(QPalette::ButtonText, palette().color(QPalette::HighlightedText));
    style()->drawControl(QStyle::CE_PushButtonLabel, &option, &painter, this);
    constexpr int inset = 2;
    if (hasFocus()) {
      drawFocusRing(painter, *this, palette().color(QPalette::HighlightedText), inset);
    }
  }

 private:
  /// As close to the palette's as the title can be read on.
  QColor accent() const {
    const QColor title = palette().color(QPalette::HighlightedText);
    const bool isLight = title.lightnessF() > 0.5;
    return readableColor(palette().color(QPalette::Highlight), title,
                         isLight ? QColor(Qt::black) : QColor(Qt::white));
  }

  bool isPressedByReturn() const {
    const QWidget* const focused = window()->focusWidget();
    return dynamic_cast<const QAbstractButton*>(focused) == nullptr ? isDefault() : focused == this;
  }
};

QAbstractButton* makeWidget(ButtonStyle style, QWidget& parent) {
  if (style == ButtonStyle::link) return new LinkWidget(&parent);
  return new PushButton(&parent);
}

}  // namespace

ButtonPeer::ButtonPeer(Button& button, QtWindowPeer& window, QWidget& parent)
    : WidgetPeer(button, window, makeWidget(button.style(), parent)), button_(button) {
  QObject::connect(&widgetButton(), &QAbstractButton::clicked, receiver(),
                   [this] { button_.press(); });
}

void ButtonPeer::update() {
  widgetButton().setFont(desktopFont(button_.font(), widgetButton()));
  // A single ampersand would be a mnemonic.
  widgetButton().setText(
      QString::fromStdString(button_.title()).replace(QLatin1Char('&'), QStringLiteral("&&")));
  if (auto* const push = dynamic_cast<QPushButton*>(&widgetButton())) {
    push->setDefault(button_.keyEquivalent() == keys::returnKey);
  }
}

Extent ButtonPeer::contentHorizontal() const {
  const int wanted = widgetButton().sizeHint().width();
  const int least = std::min(wanted, widgetButton().sizeHint().height());
  if (button_.style() == ButtonStyle::link) return {least, wanted, wanted, wanted};
  // Some styles leave no space beside a long title, and much beside a short one.
  const int title =
      widgetButton().fontMetrics().size(Qt::TextShowMnemonic, widgetButton().text()).width();
  const int preferred = std::max(wanted, title + 2 * spaceBesideTitle);
  return {least, title + 2 * leastSpaceBesideTitle, preferred, preferred};
}

Extent ButtonPeer::contentVertical(int /*width*/) const {
  return Extent::fixed(widgetButton().sizeHint().height());
}

}  // namespace quillmar
