// The entries of a menu under the ids that panels know them by.
//
// Every menu that differs from the one before is a generation. Its entries get new ids, siblings
// consecutive ones. The previous generation can still be found until the next one, so that a click
// on a menu that was open while it was replaced still finds what it showed. No id is used twice
// (they start over only after two thousand million entries). The tree owns the menus. What it
// returns points into them and is valid until the next replacement. Main thread.

#pragma once

#include <cstddef>
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

  /// A menu with more entries loses some: an array in a bus message has at most 64 MiB. Those of
  /// the top level are kept before those of submenus.
  static constexpr std::size_t mostEntries = 16'384;

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

  /// Starts a generation and returns true. A menu that is equal to the current one only takes its
  /// place, so that its actions are the ones that run: ids and revision stay, and the result is
  /// false.
  bool replace(Menu menu);

  /// Grows with each generation.
  std::uint32_t revision() const { return revision_; }

  /// For a change of what panels are sent of the same entries.
  void raiseRevision() { ++revision_; }

  /// Entries of the current generation by ascending id, without the root.
  const std::vector<Node>& nodes() const { return current_.nodes; }

  /// The root, or an entry of this generation or of the one before.
  std::optional<Node> find(Id id) const;

 private:
  struct Generation {
    Menu menu;
    Node root;
    Id firstId = 0;
    std::vector<Node> nodes;

    /// Numbers the entries of the menu.
    void makeNodes();
    const Node* find(Id id) const;
  };

  static void addNodes(Generation& generation, const Menu& menu, Node& parent);

  Generation current_;
  Generation previous_;
  Id nextId_;
  std::uint32_t revision_ = 1;
};

}  // namespace quillmar
