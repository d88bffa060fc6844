#include "tests/core/window_contents.h"

#include <sstream>

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

const char* alignmentName(StackAlignment alignment) {
  switch (alignment) {
    case StackAlignment::leading:
      return " leading";
    case StackAlignment::center:
      return " centred";
    case StackAlignment::trailing:
      return " trailing";
    case StackAlignment::fill:
      return " filled";
  }
  return "";
}

class OutlineWriter final : public ViewVisitor {
 public:
  static std::string line(View& view) {
    OutlineWriter writer;
    view.accept(writer);
    writer.addSize(view);
    if (!view.enabled()) writer.line_ << " disabled";
    if (view.hidden()) writer.line_ << " hidden";
    writer.addSpacingBehind(view);
    if (!view.accessibilityLabel().empty()) writer.line_ << " called " << view.accessibilityLabel();
    if (!writer.text_.empty()) writer.line_ << ": " << writer.text_;
    return writer.line_.str();
  }

  void visit(Button& button) override {
    line_ << (button.style() == ButtonStyle::link ? "link" : "button");
    addFont(button.font());
    if (button.keyEquivalent() == keys::returnKey) line_ << " return";
    if (button.keyEquivalent() == keys::escape) line_ << " escape";
    text_ = button.title();
  }
  void visit(CustomView& view) override {
    line_ << "custom view";
    text_ = view.accessibilityValue();
  }
  void visit(Checkbox& checkbox) override {
    line_ << "checkbox";
    addFont(checkbox.font());
    if (checkbox.state() != ControlState::off) {
      line_ << (checkbox.state() == ControlState::on ? " on" : " mixed");
    }
    text_ = checkbox.title();
  }
  void visit(FlexibleSpace& /*space*/) override { line_ << "space"; }
  void visit(GridView& grid) override {
    line_ << "form spacing " << grid.rowSpacing() << " " << grid.columnSpacing() << " labels "
          << grid.firstColumnWidth();
  }
  void visit(ImageView& imageView) override {
    line_ << "image";
    if (imageView.image()) text_ = imageView.image()->name;
  }
  void visit(Label& label) override {
    line_ << "label";
    addFont(label.font());
    if (label.color() == TextColor::secondaryLabel) line_ << " secondary";
    if (label.alignment() == TextAlignment::center) line_ << " centred";
    if (label.wraps()) line_ << " wrapping";
    if (label.selectable()) line_ << " selectable";
    text_ = label.text();
  }
  void visit(OutlineView& /*outline*/) override { line_ << "outline"; }
  void visit(PopUpButton& popUp) override {
    line_ << "pop-up";
    text_ = popUp.selectedTitle();
  }
  void visit(ScrollView& /*scrollView*/) override { line_ << "scroll"; }
  void visit(StackView& stack) override {
    line_ << (stack.orientation() == Orientation::horizontal ? "row" : "column");
    line_ << alignmentName(stack.alignment());
    line_ << " spacing " << stack.spacing();
    const EdgeInsets& insets = stack.edgeInsets();
    if (insets != EdgeInsets{}) {
      line_ << " insets " << insets.top << " " << insets.left << " " << insets.bottom << " "
            << insets.right;
    }
  }
  void visit(TabView& tabView) override {
    line_ << "tabs";
    for (std::size_t i = 0; i < tabView.tabs().size(); ++i) {
      const bool isSelected = i == tabView.selectedIndex();
      const std::string& label = tabView.tabs()[i].label;
      text_ += (i > 0 ? ", " : "") + (isSelected ? "[" + label + "]" : label);
    }
  }
  void visit(TextField& field) override {
    line_ << "field";
    if (!field.editable()) line_ << " read-only";
    if (!field.placeholder().empty()) line_ << " placeholder " << field.placeholder();
    text_ = field.text();
  }
  void visit(TextView& textView) override {
    line_ << "text view";
    if (!textView.editable()) line_ << " read-only";
    addFont(textView.font());
    text_ = textView.text();
  }

 private:
  void addFont(const Font& font) {
    if (font == Font{}) return;
    if (font.weight == FontWeight::bold) line_ << " bold";
    if (font.weight == FontWeight::semibold) line_ << " semibold";
    line_ << " " << font.size;
  }
  void addSize(const View& view) {
    if (view.width()) line_ << " width " << *view.width();
    if (view.height()) line_ << " height " << *view.height();
  }
  void addSpacingBehind(const View& view) {
    const auto* const stack = dynamic_cast<const StackView*>(view.superview());
    if (stack == nullptr || stack->spacingAfter(view) == stack->spacing()) return;
    line_ << " then " << stack->spacingAfter(view);
  }

  std::ostringstream line_;
  std::string text_;
};

void addLines(View& view, const std::string& indentation, std::vector<std::string>& lines) {
  lines.push_back(indentation + OutlineWriter::line(view));
  for (View* const subview : view.subviews()) addLines(*subview, indentation + "  ", lines);
}

}  // namespace

std::vector<std::string> windowOutline(const Window& window) {
  std::vector<std::string> lines;
  if (window.contentView() != nullptr) addLines(*window.contentView(), "", lines);
  return lines;
}

}  // namespace quillmar
