// A status item that nobody sees: it keeps what it is given, and tests and the command line choose
// entries from it as a user would. Main thread.

#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/status_item.h"
#include "platform/task_queue.h"

namespace quillmar {

class MemoryStatusItem final : public StatusItem {
 public:
  /// Titles from the menu's top down to the entry.
  using Path = std::vector<std::string>;

  /// The menu as it was when somebody opened it.
  struct OpenMenu {
    std::size_t generation = 0;
  };

  /// Actions run in turns of `mainQueue`.
  explicit MemoryStatusItem(TaskQueue& mainQueue);

  void setImage(std::optional<Image> image) override { image_ = std::move(image); }
  void setMenu(Menu menu) override;

  // What is shown.

  const std::optional<Image>& image() const { return image_; }
  const Menu& menu() const { return current_; }
  /// How many menus have been set.
  std::size_t menuCount() const { return generation_; }

  // The user's hand.

  OpenMenu open() const { return {generation_}; }

  /// Chooses the first enabled entry at the path. False when there is none, or when the menu has
  /// been replaced more than once since it was opened.
  bool click(OpenMenu opened, const Path& path, Activation activation = {});
  bool click(const Path& path) { return click(open(), path); }

 private:
  TaskQueue& mainQueue_;
  std::optional<Image> image_;
  Menu current_;
  Menu previous_;
  std::size_t generation_ = 0;
  /// What tasks that wait in the queue look back through: gone when this object is.
  std::shared_ptr<MemoryStatusItem*> self_;
};

}  // namespace quillmar
