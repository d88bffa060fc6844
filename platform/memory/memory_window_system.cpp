#include "platform/memory/memory_window_system.h"

#include <algorithm>
#include <utility>

#include "platform/visible_text.h"
#include "platform/widgets/button.h"
#include "platform/widgets/checkbox.h"
#include "platform/widgets/custom_view.h"
#include "platform/widgets/grid_view.h"
#include "platform/widgets/image_view.h"
#include "platform/widgets/label.h"
#include "platform/widgets/outline_view.h"
#include "platform/widgets/pop_up_button.h"
#include "platform/widgets/scroll_view.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/tab_view.h"
#include "platform/widgets/text_field.h"
#include "platform/widgets/text_view.h"
#include "platform/widgets/view_visitor.h"

namespace quillmar {

namespace {

/// Reads the visible state of a view.
class Painter final : public ViewVisitor {
 public:
  static MemoryWidget paint(View& view) {
    Painter painter;
    painter.widget_.enabled = view.enabled();
    painter.widget_.hidden = view.hidden();
    view.accept(painter);
    painter.widget_.accessibilityLabel =
        view.accessibilityLabel().empty() ? painter.widget_.text : view.accessibilityLabel();
    if (view.accessibilityRole()) painter.widget_.accessibilityRole = *view.accessibilityRole();
    return painter.widget_;
  }

  void visit(Button& button) override {
    const bool isLink = button.style() == ButtonStyle::link;
    widget_.accessibilityRole = isLink ? AccessibilityRole::link : AccessibilityRole::button;
    widget_.text = button.title();
    widget_.isDefaultButton = button.keyEquivalent() == keys::returnKey;
  }
  void visit(CustomView& view) override {
    const Size natural = view.naturalSize();
    MemoryCanvas canvas({.width = view.width().value_or(natural.width),
                         .height = view.height().value_or(natural.height)});
    view.draw(canvas);
    widget_.drawing = canvas.drawing();
    widget_.accessibilityValue = view.accessibilityValue();
    widget_.accessibilityPressed = view.accessibilityPressed();
    widget_.capturesKeyboard = view.capturesKeyboard();
  }
  void visit(Checkbox& checkbox) override {
    widget_.accessibilityRole = AccessibilityRole::checkbox;
    widget_.text = checkbox.title();
    widget_.state = checkbox.state();
  }
  void visit(FlexibleSpace& /*space*/) override {}
  void visit(GridView& /*grid*/) override {}
  void visit(ImageView& imageView) override {
    widget_.accessibilityRole = AccessibilityRole::image;
    if (imageView.image()) widget_.text = imageView.image()->name;
  }
  void visit(Label& label) override {
    widget_.accessibilityRole = AccessibilityRole::staticText;
    widget_.text = label.text();
  }
  void visit(OutlineView& /*outline*/) override {
    // The rows are not copied: there may be thousands.
    widget_.accessibilityRole = AccessibilityRole::outline;
  }
  void visit(PopUpButton& popUp) override {
    widget_.accessibilityRole = AccessibilityRole::popUpButton;
    widget_.text = popUp.selectedTitle();
  }
  void visit(ScrollView& /*scrollView*/) override {}
  void visit(StackView& /*stack*/) override {}
  void visit(TabView& tabView) override {
    widget_.accessibilityRole = AccessibilityRole::tabGroup;
    for (const TabView::Tab& tab : tabView.tabs()) widget_.tabs.push_back(tab.label);
    widget_.selectedTab = tabView.selectedIndex();
  }
  void visit(TextField& field) override {
    widget_.accessibilityRole = AccessibilityRole::textField;
    widget_.text = field.text();
    widget_.placeholder = field.placeholder();
    widget_.editable = field.editable();
    widget_.completions = field.completions();
    widget_.selectedCompletion = field.selectedCompletion();
  }
  void visit(TextView& textView) override {
    widget_.accessibilityRole = AccessibilityRole::textArea;
    widget_.text = textView.showsInvisibleCharacters()
                       ? text::withVisibleCharacters(textView.text())
                       : textView.text();
    widget_.editable = textView.editable();
  }

 private:
  MemoryWidget widget_;
};

}  // namespace

class MemoryWindowSystem::ViewOnScreen final : public ViewPeer {
 public:
  ViewOnScreen(MemoryWindowSystem& screen, View& view) : screen_(screen), view_(view) {
    viewChanged();
  }
  ~ViewOnScreen() override { screen_.widgets_.erase(&view_); }

  void viewChanged() override {
    MemoryWidget& widget = screen_.widgets_[&view_];
    const std::optional<ScrollStep> scrolledTo = widget.scrolledTo;
    widget = Painter::paint(view_);
    widget.scrolledTo = scrolledTo;
  }
  bool scroll(ScrollStep step) override {
    screen_.widgets_[&view_].scrolledTo = step;
    return true;
  }
  void subviewsChanged() override { screen_.showSubviews(view_); }

 private:
  MemoryWindowSystem& screen_;
  View& view_;
};

class MemoryWindowSystem::WindowOnScreen final : public WindowPeer {
 public:
  WindowOnScreen(MemoryWindowSystem& screen, Window& window) : screen_(screen), window_(window) {
    windowChanged();
  }
  ~WindowOnScreen() override {
    hide();
    screen_.shown_.erase(&window_);
  }

  void windowChanged() override {
    ShownWindow& shown = screen_.shown_[&window_];
    shown.title = window_.title();
    shown.resizable = window_.resizable();
    shown.minimumSize = window_.minimumContentSize();
    View* const content = window_.contentView();
    if (content == nullptr || content->peer() != nullptr) return;
    content->setPeer(std::make_unique<ViewOnScreen>(screen_, *content));
    screen_.showSubviews(*content);
  }
  void firstResponderChanged() override {
    screen_.shown_[&window_].focused = window_.firstResponder();
  }
  void show(const Activation& activation) override {
    hide();
    screen_.windows_.push_back(&window_);
    screen_.lastActivation_ = activation;
    if (window_.takeCenterRequest()) screen_.shown_[&window_].inMiddle = true;
    firstResponderChanged();
  }
  void hide() override { std::erase(screen_.windows_, &window_); }
  void beep() override { ++screen_.beeps_; }

 private:
  MemoryWindowSystem& screen_;
  Window& window_;
};

class MemoryWindowSystem::EmbeddedItem final : public StatusItem {
 public:
  explicit EmbeddedItem(MemoryWindowSystem& screen) : screen_(screen), item_(screen.mainQueue_) {
    item_.setActionHandler([this](const ActionEntry& entry, const Activation& activation) {
      sendAction(entry, activation);
    });
    screen_.embedded_.push_back(&item_);
  }
  ~EmbeddedItem() override { std::erase(screen_.embedded_, &item_); }

  void setImage(std::optional<Image> image) override { item_.setImage(std::move(image)); }
  void setMenu(Menu menu) override { item_.setMenu(std::move(menu)); }

 private:
  MemoryWindowSystem& screen_;
  MemoryStatusItem item_;
};

class MemoryWindowSystem::PanelOnScreen final : public FilePanelPeer {
 public:
  PanelOnScreen(MemoryWindowSystem& screen, MemoryFilePanel panel)
      : screen_(screen), panel_(std::move(panel)) {
    screen_.filePanels_.push_back(&panel_);
  }
  ~PanelOnScreen() override { std::erase(screen_.filePanels_, &panel_); }

 private:
  MemoryWindowSystem& screen_;
  MemoryFilePanel panel_;
};

MemoryWindowSystem::MemoryWindowSystem(TaskQueue& mainQueue) : mainQueue_(mainQueue) {}

MemoryWindowSystem::~MemoryWindowSystem() = default;

Result<std::unique_ptr<WindowPeer>> MemoryWindowSystem::makeWindowPeer(Window& window) {
  if (failure) return *failure;
  return std::unique_ptr<WindowPeer>(std::make_unique<WindowOnScreen>(*this, window));
}

void MemoryWindowSystem::showSubviews(View& view) {
  for (View* const subview : view.subviews()) {
    if (subview->peer() != nullptr) continue;
    subview->setPeer(std::make_unique<ViewOnScreen>(*this, *subview));
    showSubviews(*subview);
  }
}

Result<void> MemoryWindowSystem::popUpMenu(Menu menu, std::optional<ScreenPoint> position,
                                           const Activation& activation,
                                           std::function<void(const ActionEntry& entry)> choose) {
  if (failure) return *failure;
  const bool wasOpen = popUp_.has_value();
  popUp_.reset();
  if (wasOpen && position) return {};
  popUp_ = PopUp{menu, position, activation};
  popUpItem_ = std::make_unique<MemoryStatusItem>(mainQueue_);
  popUpItem_->setMenu(std::move(menu));
  popUpItem_->setActionHandler(
      [choose = std::move(choose)](const ActionEntry& entry, const Activation&) {
        if (choose) choose(entry);
      });
  return {};
}

bool MemoryWindowSystem::chooseFromPopUp(const MemoryStatusItem::Path& path) {
  if (!popUp_ || !popUpItem_->click(path)) return false;
  popUp_.reset();
  return true;
}

Result<std::unique_ptr<FilePanelPeer>> MemoryWindowSystem::showOpenPanel(
    Window& parent, const OpenPanel& panel, FilePanelCompletion onEnd) {
  if (failure) return *failure;
  return std::unique_ptr<FilePanelPeer>(std::make_unique<PanelOnScreen>(
      *this,
      MemoryFilePanel{.parent = &parent, .open = panel, .save = {}, .end = std::move(onEnd)}));
}

Result<std::unique_ptr<FilePanelPeer>> MemoryWindowSystem::showSavePanel(
    Window& parent, const SavePanel& panel, FilePanelCompletion onEnd) {
  if (failure) return *failure;
  return std::unique_ptr<FilePanelPeer>(std::make_unique<PanelOnScreen>(
      *this,
      MemoryFilePanel{.parent = &parent, .open = {}, .save = panel, .end = std::move(onEnd)}));
}

Result<std::unique_ptr<StatusItem>> MemoryWindowSystem::makeEmbeddedStatusItem() {
  if (failure) return *failure;
  return std::unique_ptr<StatusItem>(std::make_unique<EmbeddedItem>(*this));
}

const std::string& MemoryWindowSystem::titleOnScreen(const Window& window) const {
  return shown_.at(&window).title;
}

bool MemoryWindowSystem::resizableOnScreen(const Window& window) const {
  return shown_.at(&window).resizable;
}

const Size& MemoryWindowSystem::minimumSizeOnScreen(const Window& window) const {
  return shown_.at(&window).minimumSize;
}

bool MemoryWindowSystem::placedInMiddle(const Window& window) const {
  return shown_.at(&window).inMiddle;
}

const MemoryWidget* MemoryWindowSystem::widget(const View& view) const {
  const auto at = widgets_.find(&view);
  return at == widgets_.end() ? nullptr : &at->second;
}

View* MemoryWindowSystem::focused(const Window& window) const {
  View* const focused = shown_.at(&window).focused;
  for (const View* view = focused; view != nullptr; view = view->superview()) {
    const MemoryWidget* const shown = widget(*view);
    if (shown == nullptr || !shown->enabled || shown->hidden) return nullptr;
  }
  return focused;
}

}  // namespace quillmar
