// The entries of a menu under the numbers that a panel knows them by.
//
// Every menu is a generation: its entries get fresh ids, siblings one after another, and the
// generation before stays findable until the next one, so that a click on a menu that was open
// while it was replaced still finds what it showed. No id is given out twice (they start over only
// after two thousand million entries). The tree owns the menus; what it returns points into them
// and is valid until the replacement after the next. Main thread.

#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/menu.h"

namespace quillmar {

class DbusMenuTree {
 public:
  using Id = std::int32_t;

  /// The menu itself, in every generation.
  static constexpr Id rootId = 0;

  struct Node {
    Id id = rootId;
    /// Null for the root.
    const MenuEntry* entry = nullptr;
    /// The children's ids are firstChild, firstChild + 1 and so on.
    Id firstChild = 0;
    Id childCount = 0;
  };

  /// An empty menu. `firstId` is the id of the first entry ever shown.
  explicit DbusMenuTree(Id firstId = 1);

  /// Starts a generation.
  void replace(Menu menu);

  /// Grows with each replacement.
  std::uint32_t revision() const { return revision_; }

  /// Ids of the current generation's entries, in ascending order, without the root's.
  const std::vector<Node>& nodes() const { return current_.nodes; }

  /// The root, or an entry of this generation or of the one before.
  std::optional<Node> find(Id id) const;

 private:
  struct Generation {
    Menu menu;
    Node root;
    Id firstId = 0;
    std::vector<Node> nodes;

    const Node* find(Id id) const;
  };

  static void addNodes(Generation& generation, const Menu& menu, Node& parent);

  Generation current_;
  Generation previous_;
  Id nextId_;
  std::uint32_t revision_ = 1;
};

}  // namespace quillmar
