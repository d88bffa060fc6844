// Which of the data that other programs offer reach the model as files.

#include <QLineEdit>
#include <QMimeData>
#include <QUrl>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/label.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "tests/conformance/widgets_fixture.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

using Files = std::vector<std::string>;

/// Takes all files.
class FileColumn final : public StackView {
 public:
  FileColumn() : StackView(Orientation::vertical) {}

  bool isDragDestination() const override { return true; }
  bool draggingEntered(const Files& /*files*/) override { return true; }
  bool performDragOperation(const Files& files) override {
    drops.push_back(files);
    return true;
  }

  std::vector<Files> drops;
};

class FileDropTest : public WidgetsFixture<QtUser> {
 protected:
  bool dropUrls(const View& view, const std::string& uriList) {
    QMimeData data;
    data.setData(QStringLiteral("text/uri-list"), QByteArray::fromStdString(uriList));
    return dragOver(view, data) && dropOn(view, data);
  }

  FileColumn& column = window->setContent<FileColumn>();
  Label& label = column.add<Label>("Label");
  TextField& field = column.add<TextField>();
};

TEST_F(FileDropTest, OnlyLocalFilesCount) {
  show();
  EXPECT_TRUE(dropUrls(label,
                       "https://example.org/a.json\r\nfile:///tmp/b%20c%25.json\r\n"
                       "file://elsewhere/d.json\r\nsftp://host/e.json\r\n"
                       "file://localhost/tmp/f.json\r\n"));
  EXPECT_THAT(column.drops, testing::ElementsAre(Files{"/tmp/b c%.json", "/tmp/f.json"}));
}

TEST_F(FileDropTest, ANameThatIsNotUtf8KeepsItsBytes) {
  show();
  EXPECT_TRUE(dropUrls(label, "file:///tmp/caf%E9.json\r\n"));
  EXPECT_THAT(column.drops, testing::ElementsAre(Files{"/tmp/caf\xe9.json"}));
}

TEST_F(FileDropTest, OtherDataGoesToTheWidgets) {
  show();
  EXPECT_FALSE(dropUrls(label, "https://example.org/a.json\r\n"));
  QMimeData text;
  text.setText(QStringLiteral("/tmp/a.json"));
  EXPECT_FALSE(dragOver(label, text));
  // A text field still takes text.
  ASSERT_TRUE(dragOver(field, text));
  dropOn(field, text);
  EXPECT_EQ(field.text(), "/tmp/a.json");
  EXPECT_THAT(column.drops, testing::IsEmpty());
}

TEST_F(FileDropTest, AProgramThatOffersNoCopyIsRefused) {
  show();
  QMimeData data;
  setFiles(data, {"/tmp/a.json"});
  QWidget& widget = widgetOf(label);
  QDropEvent drop(widget.mapTo(widget.window(), widget.rect().center()),
                  Qt::MoveAction | Qt::LinkAction, &data, Qt::LeftButton, Qt::NoModifier);
  qApp->notify(widget.window()->windowHandle(), &drop);
  EXPECT_FALSE(drop.isAccepted());
  EXPECT_THAT(column.drops, testing::IsEmpty());
}

}  // namespace
}  // namespace quillmar
