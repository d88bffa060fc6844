// A status item in memory. Tests and the command line choose its entries as a user would. Main
// thread.

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

  /// The menu at the time it was opened.
  struct OpenMenu {
    std::size_t generation = 0;
  };

  /// Actions run as tasks of `mainQueue`.
  explicit MemoryStatusItem(TaskQueue& mainQueue);

  void setImage(std::optional<Image> image) override { image_ = std::move(image); }
  void setMenu(Menu menu) override;

  // State shown.

  const std::optional<Image>& image() const { return image_; }
  const Menu& menu() const { return current_; }
  /// Number of menus set so far.
  std::size_t menuCount() const { return generation_; }

  // Events from the user.

  OpenMenu open() const { return {generation_}; }

  /// Chooses the first enabled entry at the path. Returns false if there is none, or if the menu
  /// was replaced more than once since it was opened.
  bool click(OpenMenu opened, const Path& path, Activation activation = {});
  bool click(const Path& path) { return click(open(), path); }

 private:
  TaskQueue& mainQueue_;
  std::optional<Image> image_;
  Menu current_;
  Menu previous_;
  std::size_t generation_ = 0;
  /// Lets queued tasks detect that this object was destroyed.
  std::shared_ptr<MemoryStatusItem*> self_;
};

}  // namespace quillmar
