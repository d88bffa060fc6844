// Conformance tests of window systems: file drops.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/label.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "platform/widgets/text_view.h"
#include "platform/widgets/window.h"
#include "tests/conformance/widgets_fixture.h"
#include "tests/conformance/widgets_outline_conformance.h"

namespace quillmar {

using Files = std::vector<std::string>;

/// A column that takes the files if the first one is a pack.
class PackColumn final : public StackView {
 public:
  PackColumn() : StackView(Orientation::vertical) {}

  bool isDragDestination() const override { return true; }
  bool draggingEntered(const Files& files) override { return files.front().ends_with(".pack"); }
  bool performDragOperation(const Files& files) override {
    if (!draggingEntered(files)) return false;
    drops.push_back(files);
    // A copy, because the handler may destroy this view.
    const auto handler = onDrop;
    if (handler) handler();
    return true;
  }

  std::vector<Files> drops;
  std::function<void()> onDrop;
};

template <class Harness>
class DropsConformance : public WidgetsFixture<Harness> {
 protected:
  DropsConformance() : column(this->window->template setContent<PackColumn>()) {}

  PackColumn& column;
};

TYPED_TEST_SUITE_P(DropsConformance);

TYPED_TEST_P(DropsConformance, DroppedFilesArriveInTheirOrder) {
  auto& label = this->column.template add<Label>("Somewhere in the window");
  this->show();
  const Files files = {"/tmp/b c.pack", "/tmp/größer%41.pack", "/tmp/a.txt"};
  EXPECT_TRUE(this->harness.dragFiles(label, files));
  EXPECT_THAT(this->column.drops, testing::IsEmpty());
  EXPECT_TRUE(this->harness.dropFiles(label, files));
  EXPECT_THAT(this->column.drops, testing::ElementsAre(files));
}

TYPED_TEST_P(DropsConformance, AViewMayRefuseFiles) {
  this->column.template add<Label>("Label");
  this->show();
  EXPECT_FALSE(this->harness.dragFiles(this->column, {"/tmp/a.txt", "/tmp/b.pack"}));
  EXPECT_FALSE(this->harness.dropFiles(this->column, {"/tmp/a.txt", "/tmp/b.pack"}));
  EXPECT_THAT(this->column.drops, testing::IsEmpty());
}

TYPED_TEST_P(DropsConformance, WidgetsInADragDestinationLeaveFilesToIt) {
  auto& field = this->column.template add<TextField>();
  auto& text = this->column.template add<TextView>();
  FolderRows rows;
  auto& outline = this->column.template add<OutlineView>(rows);
  outline.setHeight(100);
  this->show();
  for (const View* const view : std::vector<const View*>{&field, &text, &outline}) {
    EXPECT_FALSE(this->harness.dragFiles(*view, {"/tmp/a.txt"}));
    EXPECT_FALSE(this->harness.dropFiles(*view, {"/tmp/a.txt"}));
    EXPECT_TRUE(this->harness.dropFiles(*view, {"/tmp/a.pack"}));
  }
  EXPECT_EQ(this->column.drops.size(), 3U);
  EXPECT_EQ(field.text(), "");
  EXPECT_EQ(text.text(), "");
  this->window.reset();
}

TYPED_TEST_P(DropsConformance, AWindowWithoutADragDestinationRefusesFiles) {
  auto& field = this->window->template setContent<TextField>();
  this->show();
  EXPECT_FALSE(this->harness.dragFiles(field, {"/tmp/a.pack"}));
  EXPECT_FALSE(this->harness.dropFiles(field, {"/tmp/a.pack"}));
  EXPECT_EQ(field.text(), "");
}

TYPED_TEST_P(DropsConformance, ACoveredOrDisabledViewRefusesFiles) {
  this->column.template add<Label>("Label");
  this->show();
  const auto isRefused = [this] {
    this->harness.settle();
    return !this->harness.dropFiles(this->column, {"/tmp/a.pack"});
  };
  Window sheet(this->harness.windows());
  ASSERT_TRUE(this->window->beginSheet(sheet, {}).ok());
  EXPECT_TRUE(isRefused());
  sheet.close();
  EXPECT_FALSE(isRefused());
  this->column.setEnabled(false);
  EXPECT_TRUE(isRefused());
  EXPECT_EQ(this->column.drops.size(), 1U);
}

TYPED_TEST_P(DropsConformance, ADropMayDestroyItsWindow) {
  const int before = this->harness.widgetCount();
  this->column.template add<Label>("Label");
  this->show();
  this->column.onDrop = [this] { this->window.reset(); };
  EXPECT_TRUE(this->harness.dropFiles(this->column, {"/tmp/a.pack"}));
  this->harness.settle();
  EXPECT_EQ(this->harness.widgetCount(), before);
}

REGISTER_TYPED_TEST_SUITE_P(DropsConformance, DroppedFilesArriveInTheirOrder, AViewMayRefuseFiles,
                            WidgetsInADragDestinationLeaveFilesToIt,
                            AWindowWithoutADragDestinationRefusesFiles,
                            ACoveredOrDisabledViewRefusesFiles, ADropMayDestroyItsWindow);

}  // namespace quillmar
