// A visitor with one function for each type of view.

#pragma once

namespace quillmar {

class Button;
class Checkbox;
class CustomView;
class FlexibleSpace;
class GridView;
class ImageView;
class Label;
class OutlineView;
class PopUpButton;
class ScrollView;
class StackView;
class TabView;
class TextField;
class TextView;

class ViewVisitor {
 public:
  virtual ~ViewVisitor() = default;

  virtual void visit(Button& button) = 0;
  virtual void visit(Checkbox& checkbox) = 0;
  virtual void visit(CustomView& view) = 0;
  virtual void visit(FlexibleSpace& space) = 0;
  virtual void visit(GridView& grid) = 0;
  virtual void visit(ImageView& imageView) = 0;
  virtual void visit(Label& label) = 0;
  virtual void visit(OutlineView& outline) = 0;
  virtual void visit(PopUpButton& popUp) = 0;
  virtual void visit(ScrollView& scrollView) = 0;
  virtual void visit(StackView& stack) = 0;
  virtual void visit(TabView& tabView) = 0;
  virtual void visit(TextField& field) = 0;
  virtual void visit(TextView& textView) = 0;
};

}  // namespace quillmar
