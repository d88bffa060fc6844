#include "app/status_menu_builder.h"

#include <algorithm>
#include <utility>

#include "app/status_menu_action.h"

namespace quillmar {

namespace {

using Kind = StatusMenuAction::Kind;

constexpr double symbolPointSize = 13;

bool isVisible(const MenuCategory& category) {
  return category.isSeparator || std::ranges::any_of(category.items, [](const MenuItem& item) {
           return item.isEnabled && !item.isSeparator;
         });
}

bool endsWithSeparator(const Menu& menu) {
  return !menu.entries.empty() && std::holds_alternative<SeparatorEntry>(menu.entries.back());
}

class StatusMenuBuilder {
 public:
  StatusMenuBuilder(Images& images, bool updatesConfigured)
      : images_(images), updatesConfigured_(updatesConfigured) {}

  Menu build(const QuillmarConfig& config) {
    std::vector<const MenuCategory*> visible = categoriesInDisplayOrder(config);
    std::erase_if(visible, [](const MenuCategory* category) { return !isVisible(*category); });
    const auto folders = std::ranges::count_if(
        visible, [](const MenuCategory* category) { return !category->isSeparator; });
    const bool flatten = config.preferences.flattenSingleFolder && folders == 1;

    for (std::size_t i = 0; i < visible.size(); ++i) {
      const MenuCategory& category = *visible[i];
      if (category.isSeparator) {
        addSeparatorAfterEntry();
      } else if (flatten || category.showAtTopLevel) {
        addItems(category, menu_);
        const bool folderFollows = i + 1 < visible.size() && !visible[i + 1]->isSeparator;
        if (folderFollows) menu_.entries.emplace_back(SeparatorEntry{});
      } else {
        addSubmenu(category);
      }
    }
    addSeparatorAfterEntry();
    addFixedEntries();
    return std::move(menu_);
  }

 private:
  /// Adds a separator line, unless it would be first or follow another separator.
  void addSeparatorAfterEntry() {
    if (!menu_.entries.empty() && !endsWithSeparator(menu_)) {
      menu_.entries.emplace_back(SeparatorEntry{});
    }
  }

  void addSubmenu(const MenuCategory& category) {
    SubmenuEntry entry;
    entry.title = category.name;
    entry.image = symbolImage(category.iconSymbolName);
    entry.submenu.title = category.name;
    addItems(category, entry.submenu);
    menu_.entries.emplace_back(std::move(entry));
  }

  void addItems(const MenuCategory& category, Menu& menu) {
    menu.entries.reserve(menu.entries.size() + category.items.size());
    for (const MenuItem& item : category.items) {
      if (!item.isEnabled) continue;
      if (item.isSeparator) {
        menu.entries.emplace_back(SeparatorEntry{});
        continue;
      }
      ActionEntry entry;
      entry.title = item.title;
      entry.id = entryId({Kind::runCommand, item.id});
      entry.image = symbolImage(item.iconSymbolName);
      if (item.shortcut) {
        entry.keyEquivalent = KeyEquivalent{item.shortcut->character, item.shortcut->modifiers};
      }
      menu.entries.emplace_back(std::move(entry));
    }
  }

  void addFixedEntries() {
    addFixed("About Quillmar", Kind::showAbout, std::nullopt);
    addFixed("Settings...", Kind::openSettings, KeyEquivalent{","});
    if (updatesConfigured_) {
      addFixed("Check for Updates...", Kind::checkForUpdates, std::nullopt);
    }
    menu_.entries.emplace_back(SeparatorEntry{});
    addFixed("Quit Quillmar", Kind::quit, KeyEquivalent{"q"});
  }

  void addFixed(std::string title, Kind action, std::optional<KeyEquivalent> keyEquivalent) {
    ActionEntry entry;
    entry.title = std::move(title);
    entry.id = entryId({.kind = action, .itemId = {}});
    entry.keyEquivalent = std::move(keyEquivalent);
    menu_.entries.emplace_back(std::move(entry));
  }

  std::optional<Image> symbolImage(const std::optional<std::string>& name) {
    if (!name || name->empty()) return std::nullopt;
    std::optional<Image> image = images_.symbol(*name);
    if (image) {
      image->pointSize = symbolPointSize;
      image->weight = FontWeight::regular;
    }
    return image;
  }

  Images& images_;
  bool updatesConfigured_;
  Menu menu_;
};

}  // namespace

Menu buildStatusMenu(const QuillmarConfig& config, Images& images, bool updatesConfigured) {
  return StatusMenuBuilder(images, updatesConfigured).build(config);
}

}  // namespace quillmar
