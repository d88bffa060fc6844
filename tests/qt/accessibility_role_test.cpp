#include <QAccessible>
#include <QWidget>

#include <gtest/gtest.h>

#include "platform/widgets/button.h"
#include "platform/widgets/label.h"
#include "platform/widgets/stack_view.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

QAccessible::Role roleOnScreen(const View& view) {
  return QAccessible::queryAccessibleInterface(&widgetOf(view))->role();
}

TEST(AccessibilityRoleTest, AViewHasTheRoleOfItsKindOrTheOneThatIsStated) {
  QtUser user;
  Window window(user.windows());
  auto& column = window.setContent<StackView>(Orientation::vertical);
  auto& label = column.add<Label>("Text");
  auto& link = column.add<Button>("Link", ButtonStyle::link);
  auto& row = column.add<StackView>(Orientation::horizontal);
  row.setAccessibilityRole(AccessibilityRole::image);
  ASSERT_TRUE(window.show({}));
  EXPECT_EQ(roleOnScreen(label), QAccessible::StaticText);
  EXPECT_EQ(roleOnScreen(link), QAccessible::Link);
  EXPECT_EQ(roleOnScreen(row), QAccessible::Graphic);
  label.setAccessibilityRole(AccessibilityRole::button);
  EXPECT_EQ(roleOnScreen(label), QAccessible::Button);
}

}  // namespace
}  // namespace quillmar
