// What screen readers are told of each kind of view.

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QWidget>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/button.h"
#include "platform/widgets/checkbox.h"
#include "platform/widgets/grid_view.h"
#include "platform/widgets/image_view.h"
#include "platform/widgets/label.h"
#include "platform/widgets/pop_up_button.h"
#include "platform/widgets/scroll_view.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "platform/widgets/text_view.h"
#include "tests/conformance/widgets_fixture.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::Pair;

class AccessibilityTest : public WidgetsFixture<QtUser> {
 protected:
  using RoleAndName = std::pair<QAccessible::Role, std::string>;

  template <class Shown>
  static QAccessibleInterface& accessible(const Shown& shown) {
    return *QAccessible::queryAccessibleInterface(&widgetOf(shown));
  }
  template <class Shown>
  static RoleAndName told(const Shown& shown) {
    return {accessible(shown).role(), accessible(shown).text(QAccessible::Name).toStdString()};
  }
  static std::string value(const View& view) {
    return accessible(view).text(QAccessible::Value).toStdString();
  }
};

TEST_F(AccessibilityTest, AWindowIsADialogWithItsTitle) {
  window->setTitle("Welcome");
  show();
  EXPECT_THAT(told(*window), Pair(QAccessible::Dialog, "Welcome"));
}

TEST_F(AccessibilityTest, ALabelIsATextAndSaysIt) {
  const Label& label = stack->add<Label>("Save & <b>quit</b>");
  show();
  EXPECT_THAT(told(label), Pair(QAccessible::StaticText, "Save & <b>quit</b>"));
}

TEST_F(AccessibilityTest, AButtonIsOneAndCanBePressed) {
  Button& button = addButton("Save");
  show();
  EXPECT_THAT(told(button), Pair(QAccessible::Button, "Save"));
  accessible(button).actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  // The toolkit shows the press for a moment.
  handleEventsUntil([this] { return !pressed.empty(); });
  EXPECT_THAT(pressed, ElementsAre("Save"));
}

TEST_F(AccessibilityTest, ALinkIsOneAndCanBePressed) {
  Button& link = stack->add<Button>("a & b", ButtonStyle::link);
  int presses = 0;
  link.setOnPress([&] { ++presses; });
  show();
  EXPECT_EQ(accessible(link).role(), QAccessible::Link);
  QAccessibleActionInterface* const actions = accessible(link).actionInterface();
  ASSERT_NE(actions, nullptr);
  EXPECT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
  actions->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(presses, 1);
  link.setEnabled(false);
  harness.settle();
  actions->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(presses, 1);
}

TEST_F(AccessibilityTest, ALinkReportsItsTitleUnchanged) {
  const Button& link = stack->add<Button>("a & b", ButtonStyle::link);
  show();
  EXPECT_EQ(told(link).second, "a & b");
}

TEST_F(AccessibilityTest, AFieldIsOneWithItsLabelAndItsText) {
  TextField& field = addField("typed");
  field.setAccessibilityLabel("Name of the folder");
  show();
  EXPECT_THAT(told(field), Pair(QAccessible::EditableText, "Name of the folder"));
  EXPECT_EQ(value(field), "typed");
}

TEST_F(AccessibilityTest, AFieldThatAScreenReaderFillsTellsTheModel) {
  const TextField& field = addField("typed");
  show();
  accessible(field).setText(QAccessible::Value, "read aloud");
  EXPECT_EQ(field.text(), "read aloud");
  EXPECT_THAT(edits, ElementsAre("read aloud"));
}

TEST_F(AccessibilityTest, ACheckboxIsOneAndCanBeToggled) {
  Checkbox& checkbox = stack->add<Checkbox>("Ask & wait");
  show();
  EXPECT_THAT(told(checkbox), Pair(QAccessible::CheckBox, "Ask & wait"));
  EXPECT_FALSE(accessible(checkbox).state().checked);
  accessible(checkbox).actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  handleEventsUntil([&] { return checkbox.state() == ControlState::on; });
  EXPECT_TRUE(accessible(checkbox).state().checked);
}

TEST_F(AccessibilityTest, APopUpButtonHasItsLabelItsTitleAndItsList) {
  PopUpButton& popUp = stack->add<PopUpButton>(std::vector<std::string>{"One", "Two"});
  popUp.setAccessibilityLabel("Type");
  popUp.setSelectedIndex(1);
  show();
  EXPECT_THAT(told(popUp), Pair(QAccessible::ComboBox, "Type"));
  EXPECT_EQ(value(popUp), "Two");
  // Screen readers do not ask it for a value.
  EXPECT_EQ(accessible(popUp).text(QAccessible::Description), QStringLiteral("Two"));
  ASSERT_EQ(accessible(popUp).childCount(), 1);
  EXPECT_EQ(accessible(popUp).child(0)->role(), QAccessible::List);
  EXPECT_FALSE(accessible(popUp).state().expanded);
  accessible(popUp).actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
  EXPECT_TRUE(accessible(popUp).state().expanded);
}

TEST_F(AccessibilityTest, ATextViewHasItsLabelAndSeveralLines) {
  TextView& textView = stack->add<TextView>();
  textView.setText("one\ntwo");
  textView.setAccessibilityLabel("Command");
  show();
  EXPECT_THAT(told(textView), Pair(QAccessible::EditableText, "Command"));
  EXPECT_TRUE(accessible(textView).state().multiLine);
  EXPECT_EQ(value(textView), "one\ntwo");
}

TEST_F(AccessibilityTest, AViewInAFormHasTheLabelOfItsRow) {
  GridView& form = stack->add<GridView>();
  const TextField& field = form.addRow<TextField>("Input label:");
  const TextView& unnamed = form.addRow<TextView>("");
  show();
  EXPECT_EQ(told(field).second, "Input label");
  EXPECT_EQ(told(unnamed).second, "");
}

TEST_F(AccessibilityTest, AnImageIsAGraphicWithItsLabel) {
  ImageView& image = stack->add<ImageView>(
      Image{.name = "folder", .isTemplate = true, .pointSize = {}, .weight = {}});
  image.setAccessibilityLabel("A folder");
  show();
  EXPECT_THAT(told(image), Pair(QAccessible::Graphic, "A folder"));
}

TEST_F(AccessibilityTest, WhatOnlyHoldsOthersHasNoName) {
  StackView& row = stack->add<StackView>(Orientation::horizontal);
  const FlexibleSpace& space = row.add<FlexibleSpace>();
  const ScrollView& scroll = stack->add<ScrollView>(std::make_unique<Label>("Text"));
  show();
  EXPECT_THAT(told(row), Pair(QAccessible::Client, ""));
  EXPECT_THAT(told(space), Pair(QAccessible::Client, ""));
  EXPECT_EQ(told(scroll).second, "");
  EXPECT_THAT(told(scroll.content()), Pair(QAccessible::StaticText, "Text"));
}

TEST_F(AccessibilityTest, ALabelOfItsOwnComesBeforeTheTextOfAView) {
  Button& button = addButton("…");
  Button& link = stack->add<Button>("here", ButtonStyle::link);
  Label& label = stack->add<Label>("1.0");
  button.setAccessibilityLabel("Choose a folder");
  link.setAccessibilityLabel("Site of the program");
  label.setAccessibilityLabel("Version 1.0");
  show();
  EXPECT_EQ(told(button).second, "Choose a folder");
  EXPECT_EQ(told(link).second, "Site of the program");
  EXPECT_EQ(told(label).second, "Version 1.0");
}

TEST_F(AccessibilityTest, NamesThatChangeAreTold) {
  Label& label = stack->add<Label>("one");
  Button& button = addButton("one");
  show();
  ASSERT_EQ(told(label).second, "one");
  ASSERT_EQ(told(button).second, "one");
  label.setText("two");
  button.setAccessibilityLabel("three");
  window->setTitle("four");
  harness.settle();
  EXPECT_EQ(told(label).second, "two");
  EXPECT_EQ(told(button).second, "three");
  EXPECT_EQ(told(*window).second, "four");
}

TEST_F(AccessibilityTest, StatesAreTold) {
  TextField& field = addField("");
  TextField& fixed = addField("");
  fixed.setEditable(false);
  Button& button = addButton("Run");
  button.setEnabled(false);
  Label& label = stack->add<Label>("hidden");
  label.setHidden(true);
  window->makeFirstResponder(&field);
  show();
  EXPECT_TRUE(accessible(field).state().focusable);
  EXPECT_FALSE(accessible(field).state().readOnly);
  EXPECT_TRUE(accessible(fixed).state().readOnly);
  EXPECT_TRUE(accessible(button).state().disabled);
  EXPECT_TRUE(accessible(label).state().invisible);
}

TEST_F(AccessibilityTest, ViewsAreReadInTheirOrder) {
  addField("").setAccessibilityLabel("first");
  stack->add<Label>("second");
  addButton("third");
  show();
  stack->add<Label>("fourth");
  harness.settle();
  QAccessibleInterface& column = accessible(*stack);
  std::vector<std::string> names;
  for (int i = 0; i < column.childCount(); ++i) {
    names.push_back(column.child(i)->text(QAccessible::Name).toStdString());
  }
  EXPECT_THAT(names, ElementsAre("first", "second", "third", "fourth"));
}

TEST_F(AccessibilityTest, AViewHasTheRoleThatIsStatedForIt) {
  auto& row = stack->add<StackView>(Orientation::horizontal);
  row.setAccessibilityRole(AccessibilityRole::image);
  Label& label = stack->add<Label>("Text");
  show();
  EXPECT_EQ(accessible(row).role(), QAccessible::Graphic);
  label.setAccessibilityRole(AccessibilityRole::button);
  EXPECT_EQ(accessible(label).role(), QAccessible::Button);
}

}  // namespace
}  // namespace quillmar
