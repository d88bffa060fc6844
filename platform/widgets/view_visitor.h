// A visitor with one function for each type of view.

#pragma once

namespace quillmar {

class Button;
class CustomView;
class FlexibleSpace;
class ImageView;
class Label;
class ScrollView;
class StackView;
class TextField;

class ViewVisitor {
 public:
  virtual ~ViewVisitor() = default;

  virtual void visit(Button& button) = 0;
  virtual void visit(CustomView& view) = 0;
  virtual void visit(FlexibleSpace& space) = 0;
  virtual void visit(ImageView& imageView) = 0;
  virtual void visit(Label& label) = 0;
  virtual void visit(ScrollView& scrollView) = 0;
  virtual void visit(StackView& stack) = 0;
  virtual void visit(TextField& field) = 0;
};

}  // namespace quillmar
