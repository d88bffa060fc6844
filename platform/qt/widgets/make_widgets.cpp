#include "platform/qt/widgets/make_widgets.h"

#include <memory>

#include "platform/qt/widgets/button_peer.h"
#include "platform/qt/widgets/checkbox_peer.h"
#include "platform/qt/widgets/custom_view_peer.h"
#include "platform/qt/widgets/grid_peer.h"
#include "platform/qt/widgets/image_view_peer.h"
#include "platform/qt/widgets/label_peer.h"
#include "platform/qt/widgets/outline_peer.h"
#include "platform/qt/widgets/pop_up_button_peer.h"
#include "platform/qt/widgets/scroll_view_peer.h"
#include "platform/qt/widgets/space_peer.h"
#include "platform/qt/widgets/stack_peer.h"
#include "platform/qt/widgets/tab_view_peer.h"
#include "platform/qt/widgets/text_field_peer.h"
#include "platform/qt/widgets/text_view_peer.h"
#include "platform/widgets/view_visitor.h"

namespace quillmar {

namespace {

class PeerMaker final : public ViewVisitor {
 public:
  PeerMaker(QtWindowPeer& window, QWidget& parent) : window_(window), parent_(parent) {}

  void visit(Button& button) override { make<ButtonPeer>(button); }
  void visit(CustomView& view) override { make<CustomViewPeer>(view); }
  void visit(Checkbox& checkbox) override { make<CheckboxPeer>(checkbox); }
  void visit(FlexibleSpace& space) override { make<SpacePeer>(space); }
  void visit(GridView& grid) override { make<GridPeer>(grid); }
  void visit(ImageView& imageView) override { make<ImageViewPeer>(imageView); }
  void visit(Label& label) override { make<LabelPeer>(label); }
  void visit(OutlineView& outline) override { make<OutlinePeer>(outline); }
  void visit(PopUpButton& popUp) override { make<PopUpButtonPeer>(popUp); }
  void visit(ScrollView& scrollView) override { make<ScrollViewPeer>(scrollView); }
  void visit(StackView& stack) override { make<StackPeer>(stack); }
  void visit(TabView& tabView) override { make<TabViewPeer>(tabView); }
  void visit(TextField& field) override { make<TextFieldPeer>(field); }
  void visit(TextView& textView) override { make<TextViewPeer>(textView); }

 private:
  template <class Peer, class Kind>
  void make(Kind& view) {
    view.setPeer(std::make_unique<Peer>(view, window_, parent_));
  }

  QtWindowPeer& window_;
  QWidget& parent_;
};

}  // namespace

void makeWidgets(View& view, QtWindowPeer& window, QWidget& parent) {
  PeerMaker maker(window, parent);
  view.accept(maker);
  view.peer()->viewChanged();
  view.peer()->subviewsChanged();
}

}  // namespace quillmar
