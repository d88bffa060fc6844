// The list of completions below a text field.
//
// It is a window of its own, but the keyboard focus stays in the field, whose model handles the
// keys that select in the list. A click in the window of the field, or the wheel, closes the list.

#pragma once

#include <QLineEdit>
#include <QListView>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QWindow>
#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "platform/widgets/text_field.h"

namespace quillmar {

class CompletionModel;

class CompletionList final : public QListView {
 public:
  /// Each may destroy the field.
  struct Handlers {
    /// The user clicked a row.
    std::function<void(std::size_t row)> choose;
    /// The user clicked elsewhere.
    std::function<void()> dismiss;
  };

  /// Belongs to `line`.
  CompletionList(QLineEdit& line, Handlers handlers);

  /// Shows the list; hides it if there are no completions.
  void present(const std::vector<TextCompletion>& completions, std::optional<std::size_t> selected);

  /// From now on the list does nothing; it is about to be deleted.
  void detach();

  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  void colorFrame();
  void select(std::optional<std::size_t> row);
  /// Puts the list below the field, or above it if there is not enough space below.
  void place();
  QSize wantedSize() const;

  QLineEdit& line_;
  Handlers handlers_;
  CompletionModel* model_;
  QPersistentModelIndex pressed_;
  /// The window of the field, while the list is shown.
  QPointer<QWindow> watched_;
};

}  // namespace quillmar
