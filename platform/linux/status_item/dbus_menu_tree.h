// The entries of a menu by the ids that panels use for them.
//
// Every changed menu starts a new generation. Its entries get new ids; siblings have consecutive
// ids. The previous generation can be found until the next one starts, so a click on a menu that
// was replaced while it was open still finds its entry. Ids are not reused (they wrap around after
// about 2³¹ entries). The tree owns the menus. What it returns points into them and is valid until
// the next replacement. Main thread.

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

  /// Id of the menu itself, in every generation.
  static constexpr Id rootId = 0;

  /// Largest number of entries; further ones are dropped, because an array in a bus message has at
  /// most 64 MiB. Entries of the top level are kept before those of submenus, and each menu keeps
  /// its last entries, such as the command that quits the program.
  static constexpr std::size_t maximumEntries = 16'384;

  /// Number of entries kept at the end of a menu that is too long.
  static constexpr std::size_t keptLastEntries = 8;

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

  /// Starts a generation and returns true. If the menu equals the current one, ids and revision
  /// stay and the result is false; from then on the new menu's actions run.
  bool replace(Menu menu);

  /// Increases with each generation.
  std::uint32_t revision() const { return revision_; }

  /// Call when the same entries are sent in a different form.
  void raiseRevision() { ++revision_; }

  /// Entries of the current generation by ascending id, without the root.
  const std::vector<Node>& nodes() const { return current_.nodes; }

  /// The root, or an entry of the current or the previous generation.
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
