#include "platform/linux/status_item/panel_traits.h"

#include <algorithm>
#include <string>
#include <vector>

#include "platform/text.h"

namespace quillmar {

PanelTraits panelTraitsOf(const Environment& environment) {
  const std::vector<std::string> desktops =
      text::split(environment.value("XDG_CURRENT_DESKTOP").value_or(""), ':');
  const auto isDesktop = [&](const char* name) {
    return std::ranges::find(desktops, name) != desktops.end();
  };
  PanelTraits traits;
  if (isDesktop("KDE") || isDesktop("LXQt")) traits.shortcutKeyNames = ShortcutKeyNames::qtKeys;
  traits.opensMenuItself = isDesktop("KDE") || isDesktop("GNOME");
  traits.hasDarkMenus = isDesktop("GNOME");
  traits.recoloursIcons = !isDesktop("LXQt");
  traits.findsIconsInThemePath = !isDesktop("GNOME") && !isDesktop("LXQt") && !isDesktop("MATE");
  return traits;
}

}  // namespace quillmar
