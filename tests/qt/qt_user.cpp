#include "tests/qt/qt_user.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTreeView>
#include <QUrl>
#include <QWindow>
#include <algorithm>
#include <array>

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon.h>

#include "platform/qt/widgets/text_widget.h"
#include "platform/qt/widgets/widget_peer.h"
#include "platform/qt/windows/qt_window_peer.h"
#include "platform/virtual_key_codes.h"
#include "platform/widgets/text_view.h"
#include "tests/key_presses.h"

namespace quillmar {

namespace {

constexpr int failureMilliseconds = 60000;

constexpr char16_t firstFunctionKey = 0xf704;
constexpr int functionKeys = 35;

struct NamedKey {
  Qt::Key key;
  char16_t character;
};

constexpr std::array<NamedKey, 14> namedKeys = {{{Qt::Key_Return, u'\r'},
                                                 {Qt::Key_Tab, u'\t'},
                                                 {Qt::Key_Escape, u'\x1b'},
                                                 {Qt::Key_Backspace, u'\x7f'},
                                                 {Qt::Key_Up, 0xf700},
                                                 {Qt::Key_Down, 0xf701},
                                                 {Qt::Key_Left, 0xf702},
                                                 {Qt::Key_Right, 0xf703},
                                                 {Qt::Key_Insert, 0xf727},
                                                 {Qt::Key_Delete, 0xf728},
                                                 {Qt::Key_Home, 0xf729},
                                                 {Qt::Key_End, 0xf72b},
                                                 {Qt::Key_PageUp, 0xf72c},
                                                 {Qt::Key_PageDown, 0xf72d}}};

int keyOf(char32_t character) {
  if (character >= firstFunctionKey && character < firstFunctionKey + functionKeys) {
    return Qt::Key_F1 + static_cast<int>(character - firstFunctionKey);
  }
  const auto* const named =
      std::find_if(namedKeys.begin(), namedKeys.end(),
                   [character](const NamedKey& each) { return each.character == character; });
  if (named != namedKeys.end()) return named->key;
  return static_cast<int>(QChar::toUpper(character));
}

Qt::KeyboardModifiers heldModifiers(const KeyPress& press) {
  Qt::KeyboardModifiers held = Qt::NoModifier;
  if (press.modifiers & modifiers::shift) held |= Qt::ShiftModifier;
  if (press.modifiers & modifiers::control) held |= Qt::ControlModifier;
  if (press.modifiers & modifiers::option) held |= Qt::AltModifier;
  if (press.modifiers & modifiers::command) held |= Qt::MetaModifier;
  return held;
}

/// What an X server calls the symbol of the key.
xkb_keysym_t keysymOf(const KeyPress& press) {
  const char32_t character = firstCharacter(press.character);
  const VirtualKey* const key = virtualKeyForCharacter(character);
  if (key == nullptr || key->keysym.empty()) return xkb_utf32_to_keysym(character);
  const bool isShifted = press.modifiers & modifiers::shift;
  if (isShifted && key->keysym == "Tab") return XKB_KEY_ISO_Left_Tab;
  const xkb_keysym_t keysym =
      xkb_keysym_from_name(std::string(key->keysym).c_str(), XKB_KEYSYM_NO_FLAGS);
  return isShifted ? xkb_keysym_to_upper(keysym) : keysym;
}

/// As the toolkit makes it for a key of a real keyboard.
QKeyEvent keyEvent(QEvent::Type type, const KeyPress& press) {
  constexpr quint32 firstScanCode = 8;
  quint32 scanCode = 0;
  for (const VirtualKey& key : virtualKeys()) {
    if (press.keyCode == key.code) scanCode = key.evdevCode + firstScanCode;
  }
  constexpr char32_t firstKeyWithoutText = 0xf700;
  const bool writes = firstCharacter(press.character) < firstKeyWithoutText;
  const bool isBackTab = press.is(keys::backTab);
  const int key = isBackTab ? Qt::Key_Backtab : keyOf(firstCharacter(press.character));
  return {type,
          key,
          heldModifiers(press),
          scanCode,
          keysymOf(press),
          0,
          writes ? QString::fromStdString(press.character) : QString()};
}

QTabBar& barOf(const TabView& tabView) {
  return dynamic_cast<QTabBar&>(widgetPeer(tabView).keyWidget());
}

QTreeView& treeOf(const OutlineView& outline) {
  return dynamic_cast<QTreeView&>(widgetOf(outline));
}

std::vector<QModelIndex> rowsOf(const OutlineView& outline) {
  const QTreeView& tree = treeOf(outline);
  std::vector<QModelIndex> rows;
  QModelIndex index = tree.model()->index(0, 0);
  for (; index.isValid(); index = tree.indexBelow(index)) rows.push_back(index);
  return rows;
}

/// With the pointer, `x` pixels to the right of the row's beginning.
void clickAt(const OutlineView& outline, std::size_t row, int x, bool twice = false) {
  QTreeView& tree = treeOf(outline);
  QWindow* const window = tree.window()->windowHandle();
  tree.scrollTo(rowsOf(outline)[row]);
  const QRect rect = tree.visualRect(rowsOf(outline)[row]);
  const QPoint place =
      tree.viewport()->mapTo(tree.window(), QPoint(rect.left() + x, rect.center().y()));
  QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, place);
  if (!twice) return;
  // The tests set the interval of double clicks to nothing, so the toolkit recognizes none. The
  // second press may destroy the view.
  const QPointer<QWidget> viewport(tree.viewport());
  const QPointF local = viewport->mapFrom(tree.window(), place);
  const QPointF global = viewport->mapToGlobal(local);
  for (const QEvent::Type type : {QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease}) {
    if (!viewport) return;
    const bool isPress = type == QEvent::MouseButtonDblClick;
    QMouseEvent event(type, local, global, Qt::LeftButton, isPress ? Qt::LeftButton : Qt::NoButton,
                      Qt::NoModifier);
    qApp->notify(viewport, &event);
  }
}

/// The window may be gone after the press.
void sendKey(QWindow* handle, const KeyPress& press) {
  const QPointer<QWindow> window(handle);
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    if (!window) return;
    QKeyEvent event = keyEvent(type, press);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(window, &event);
  }
}

}  // namespace

bool handleEventsUntil(const std::function<bool()>& done) {
  const QDeadlineTimer deadline(failureMilliseconds);
  while (!done() && !deadline.hasExpired()) {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 1000);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  EXPECT_TRUE(done()) << "The effect that was waited for did not come.";
  return done();
}

void handleReadyEvents() {
  QCoreApplication::processEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QCoreApplication::processEvents();
}

QWidget& widgetOf(const Window& window) {
  return static_cast<QtWindowPeer*>(window.peer())->widget();
}

QWidget& widgetOf(const View& view) {
  return widgetPeer(view).widget();
}

QListView* completionListOf(const TextField& field) {
  auto* const list = widgetOf(field).findChild<QListView*>();
  return list != nullptr && list->isVisible() ? list : nullptr;
}

QFileDialog* panelOf(const Window& parent) {
  if (parent.peer() == nullptr) return nullptr;
  auto* const panel = widgetOf(parent).findChild<QFileDialog*>();
  return panel != nullptr && panel->isVisible() ? panel : nullptr;
}

void setFiles(QMimeData& data, const std::vector<std::string>& files) {
  QList<QUrl> urls;
  for (const std::string& file : files) urls += QUrl::fromLocalFile(QString::fromStdString(file));
  data.setUrls(urls);
}

bool dragOver(const View& view, QMimeData& data) {
  QWidget& widget = widgetOf(view);
  const QPoint position = widget.mapTo(widget.window(), widget.rect().center());
  constexpr Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
  QDragEnterEvent enter(position, actions, &data, Qt::LeftButton, Qt::NoModifier);
  enter.ignore();
  qApp->notify(widget.window()->windowHandle(), &enter);
  QDragMoveEvent move(position, actions, &data, Qt::LeftButton, Qt::NoModifier);
  // Qt starts the move event with the answer to the enter event.
  move.setAccepted(enter.isAccepted());
  qApp->notify(widget.window()->windowHandle(), &move);
  return move.isAccepted() && move.dropAction() == Qt::CopyAction;
}

bool dropOn(const View& view, QMimeData& data) {
  QWidget& widget = widgetOf(view);
  const QPoint position = widget.mapTo(widget.window(), widget.rect().center());
  QDropEvent drop(position, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
  qApp->notify(widget.window()->windowHandle(), &drop);
  return drop.isAccepted() && drop.dropAction() == Qt::CopyAction;
}

QString withoutMnemonics(const QString& text) {
  QString shown;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == u'&') ++i;
    if (i < text.size()) shown += text[i];
  }
  return shown;
}

void QtUser::settle() {
  handleReadyEvents();
}

void QtUser::click(const View& view) {
  QWidget& widget = widgetOf(view);
  QWidget* const top = widget.window();
  QTest::mouseClick(top->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                    widget.mapTo(top, widget.rect().center()));
}

void QtUser::clickBesideViews(Window& window) {
  QWidget& widget = widgetOf(window);
  QTest::mouseClick(widget.windowHandle(), Qt::LeftButton, Qt::NoModifier,
                    widget.rect().bottomRight());
}

void QtUser::switchToAnotherWindow(Window& window) {
  QWidget other;
  other.show();
  other.activateWindow();
  handleEventsUntil([&] { return QApplication::activeWindow() != &widgetOf(window); });
}

void QtUser::typeText(const View& field, const std::string& text) {
  click(field);
  QWindow* const window = widgetOf(field).window()->windowHandle();
  const std::uint64_t toEnd = dynamic_cast<const TextView*>(&field) ? modifiers::control : 0;
  sendKey(window, pressOf({.character = keys::end.character, .modifierMask = toEnd}));
  typeAtFocus(*field.window(), text);
}

void QtUser::choose(const PopUpButton& popUp, std::size_t index) {
  click(popUp);
  auto& box = dynamic_cast<QComboBox&>(widgetOf(popUp));
  QAbstractItemView& list = *box.view();
  if (!list.isVisible()) return;
  const QModelIndex entry = list.model()->index(static_cast<int>(index), 0);
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(entry).center());
}

void QtUser::clickCompletion(const TextField& field, std::size_t index) {
  QListView* const list = completionListOf(field);
  ASSERT_NE(list, nullptr);
  const QRect row = list->visualRect(list->model()->index(static_cast<int>(index), 0));
  QTest::mouseClick(list->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                    list->viewport()->mapTo(list, row.center()));
}

void QtUser::clickTab(const TabView& tabView, std::size_t index) {
  QTabBar& bar = barOf(tabView);
  QTest::mouseClick(bar.window()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                    bar.mapTo(bar.window(), bar.tabRect(static_cast<int>(index)).center()));
}

void QtUser::clickRow(const OutlineView& outline, std::size_t index) {
  constexpr int besideTheCheckbox = 60;
  clickAt(outline, index, besideTheCheckbox);
}

void QtUser::doubleClickRow(const OutlineView& outline, std::size_t index) {
  constexpr int besideTheCheckbox = 60;
  clickAt(outline, index, besideTheCheckbox, true);
}

void QtUser::clickDisclosure(const OutlineView& outline, std::size_t index) {
  clickAt(outline, index, -treeOf(outline).indentation() / 2);
}

void QtUser::clickCheckbox(const OutlineView& outline, std::size_t index) {
  constexpr int inside = 5;
  clickAt(outline, index, inside);
}

void QtUser::typeAtFocus(Window& window, const std::string& text) {
  const QPointer<QWindow> handle(widgetOf(window).windowHandle());
  for (const QChar character : QString::fromStdString(text)) {
    if (!handle) return;
    sendKey(handle, pressOf({.character = QString(character).toStdString(), .modifierMask = 0}));
  }
}

void QtUser::pressKey(Window& window, const KeyPress& press) {
  sendKey(widgetOf(window).windowHandle(), press);
}

void QtUser::closeByTitleBar(Window& window) {
  widgetOf(window).windowHandle()->close();
}

bool QtUser::dragFiles(const View& view, const std::vector<std::string>& files) {
  QMimeData data;
  setFiles(data, files);
  return dragOver(view, data);
}

bool QtUser::dropFiles(const View& view, const std::vector<std::string>& files) {
  QMimeData data;
  setFiles(data, files);
  // Other programs drop only where the pointer shows that they can.
  return dragOver(view, data) && dropOn(view, data);
}

void QtUser::chooseInPanel(Window& parent, const std::string& path) {
  auto* const name = panelOf(parent)->findChild<QLineEdit*>();
  ASSERT_NE(name, nullptr);
  name->selectAll();
  for (const QChar character : QString::fromStdString(path)) {
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(character));
    qApp->notify(name, &press);
  }
  QTest::keyClick(name, Qt::Key_Return);
  settle();
}

void QtUser::cancelPanel(Window& parent) {
  QTest::keyClick(panelOf(parent), Qt::Key_Escape);
  settle();
}

std::string QtUser::panelTitleOnScreen(const Window& parent) const {
  const QFileDialog* const panel = panelOf(parent);
  return panel == nullptr ? "" : panel->windowHandle()->title().toStdString();
}

bool QtUser::isOnScreen(const Window& window) const {
  return window.peer() != nullptr && widgetOf(window).windowHandle()->isVisible();
}

std::string QtUser::titleOnScreen(const Window& window) const {
  return widgetOf(window).windowHandle()->title().toStdString();
}

bool QtUser::isResizableOnScreen(const Window& window) const {
  const QWindow& handle = *widgetOf(window).windowHandle();
  return handle.minimumSize() != handle.maximumSize();
}

Size QtUser::minimumSizeOnScreen(const Window& window) const {
  const QSize size = widgetOf(window).windowHandle()->minimumSize();
  return {.width = double(size.width()), .height = double(size.height())};
}

bool QtUser::isShown(const View& view) const {
  return view.peer() != nullptr && widgetOf(view).isVisible();
}

bool QtUser::isEnabledOnScreen(const View& view) const {
  return widgetOf(view).isEnabled();
}

bool QtUser::isDefaultOnScreen(const Button& button) const {
  return dynamic_cast<QPushButton&>(widgetOf(button)).isDefault();
}

ControlState QtUser::stateOnScreen(const Checkbox& checkbox) const {
  switch (dynamic_cast<QCheckBox&>(widgetOf(checkbox)).checkState()) {
    case Qt::Unchecked:
      return ControlState::off;
    case Qt::PartiallyChecked:
      return ControlState::mixed;
    case Qt::Checked:
      return ControlState::on;
  }
  return ControlState::off;
}

std::vector<std::string> QtUser::completionsOnScreen(const TextField& field) const {
  const QListView* const list = completionListOf(field);
  if (list == nullptr) return {};
  std::vector<std::string> texts;
  for (int row = 0; row < list->model()->rowCount(); ++row) {
    const QModelIndex index = list->model()->index(row, 0);
    const std::string text = index.data().toString().toStdString();
    texts.push_back(list->selectionModel()->isSelected(index) ? "[" + text + "]" : text);
  }
  return texts;
}

std::vector<std::string> QtUser::tabsOnScreen(const TabView& tabView) const {
  const QTabBar& bar = barOf(tabView);
  std::vector<std::string> tabs;
  for (int i = 0; i < bar.count(); ++i) {
    const std::string label = withoutMnemonics(bar.tabText(i)).toStdString();
    tabs.push_back(i == bar.currentIndex() ? "[" + label + "]" : label);
  }
  return tabs;
}

std::vector<std::string> QtUser::rowsOnScreen(const OutlineView& outline) const {
  std::vector<std::string> rows;
  for (const QModelIndex& index : rowsOf(outline)) {
    std::string text = index.data().toString().toStdString();
    for (QModelIndex at = index.parent(); at.isValid(); at = at.parent()) text.insert(0, "  ");
    rows.push_back(text);
  }
  return rows;
}

std::optional<std::size_t> QtUser::selectedRowOnScreen(const OutlineView& outline) const {
  const std::vector<QModelIndex> rows = rowsOf(outline);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (treeOf(outline).selectionModel()->isSelected(rows[i])) return i;
  }
  return std::nullopt;
}

ControlState QtUser::rowStateOnScreen(const OutlineView& outline, std::size_t index) const {
  const int state = rowsOf(outline)[index].data(Qt::CheckStateRole).toInt();
  return state == Qt::Checked ? ControlState::on : ControlState::off;
}

std::string QtUser::textOnScreen(const View& view) const {
  const QWidget& widget = widgetOf(view);
  if (const auto* const box = dynamic_cast<const QComboBox*>(&widget)) {
    return box->currentText().toStdString();
  }
  if (const auto* const line = dynamic_cast<const QLineEdit*>(&widget)) {
    return line->displayText().toStdString();
  }
  if (const auto* const edit = dynamic_cast<const QPlainTextEdit*>(&widget)) {
    return edit->toPlainText().toStdString();
  }
  if (const auto* const text = dynamic_cast<const TextWidget*>(&widget)) {
    return text->text().toStdString();
  }
  return withoutMnemonics(dynamic_cast<const QAbstractButton&>(widget).text()).toStdString();
}

std::string QtUser::placeholderOnScreen(const TextField& field) const {
  return dynamic_cast<QLineEdit&>(widgetOf(field)).placeholderText().toStdString();
}

std::string QtUser::nameForScreenReaders(const View& view) const {
  QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&widgetOf(view));
  return accessible->text(QAccessible::Name).toStdString();
}

std::string QtUser::valueForScreenReaders(const View& view) const {
  QAccessibleInterface* const accessible = QAccessible::queryAccessibleInterface(&widgetOf(view));
  return accessible->text(QAccessible::Value).toStdString();
}

bool QtUser::isPressedForScreenReaders(const View& view) const {
  return QAccessible::queryAccessibleInterface(&widgetOf(view))->state().pressed;
}

const View* QtUser::focusedOnScreen(const Window& window) const {
  for (const View* const view : window.keyViews()) {
    if (widgetOf(window).focusWidget() == &widgetPeer(*view).keyWidget()) return view;
  }
  return nullptr;
}

int QtUser::widgetCount() const {
  return static_cast<int>(QApplication::allWidgets().size());
}

}  // namespace quillmar
