#include "platform/qt/widgets/button_peer.h"

#include <QApplication>
#include <QPushButton>
#include <QStyleOptionButton>
#include <algorithm>

#include "platform/qt/widgets/fonts.h"
#include "platform/qt/widgets/link_widget.h"

namespace quillmar {

namespace {

/// On either side of a push button's title, in device-independent pixels.
constexpr int roomBesideTitle = 14;

/// Looks like the default button when it is the one that Return presses: a button that has the
/// focus comes before the window's default button.
class PushButton final : public QPushButton {
 public:
  explicit PushButton(QWidget* parent) : QPushButton(parent) {
    // The looks of the default button change with a focus that is elsewhere.
    connect(qApp, &QApplication::focusChanged, this, [this] { QWidget::update(); });
  }

 protected:
  void initStyleOption(QStyleOptionButton* option) const override {
    QPushButton::initStyleOption(option);
    const QWidget* const focused = window()->focusWidget();
    const bool isPressed =
        dynamic_cast<const QAbstractButton*>(focused) == nullptr ? isDefault() : focused == this;
    option->features.setFlag(QStyleOptionButton::DefaultButton, isPressed);
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
  int wanted = widgetButton().sizeHint().width();
  if (button_.style() == ButtonStyle::push) {
    // Some styles leave a long title hardly any.
    const int title =
        widgetButton().fontMetrics().size(Qt::TextShowMnemonic, widgetButton().text()).width();
    wanted = std::max(wanted, title + 2 * roomBesideTitle);
  }
  return {std::min(wanted, widgetButton().sizeHint().height()), wanted, wanted, wanted};
}

Extent ButtonPeer::contentVertical(int /*width*/) const {
  return Extent::fixed(widgetButton().sizeHint().height());
}

}  // namespace quillmar
