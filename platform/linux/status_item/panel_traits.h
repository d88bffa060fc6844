// Differences between panels that the protocols permit.

#pragma once

#include "platform/environment.h"

namespace quillmar {

/// How panels expect the keys of shortcuts to be named. A panel shows no shortcut whose key it
/// cannot parse. They differ in keys other than letters and digits.
enum class ShortcutKeyNames {
  /// GTK panels look up the name of a keysym: "comma", "Prior".
  keysyms,
  /// The panels of KDE Plasma and LXQt parse the text of a Qt key sequence: ",", "PgUp".
  qtKeys,
};

struct PanelTraits {
  ShortcutKeyNames shortcutKeyNames = ShortcutKeyNames::keysyms;
  /// True: calls to open the menu are refused as unknown. Plasma's panel calls Activate on a click
  /// and opens the menu itself if that fails. GNOME's opens the menu on a click and calls Activate
  /// on a double click; once that has succeeded, it delays the menu until a click is known to be a
  /// single one.
  bool opensMenuItself = false;
  /// False: the menu shows icons in the colours of their files.
  bool recoloursIcons = true;
  /// False: the menu shows only icons of the system's and the user's icon themes. IconThemePath is
  /// for the icon in the panel.
  bool findsIconsInThemePath = true;
  /// True: menus are dark on a light desktop, too.
  bool hasDarkMenus = false;

  bool operator==(const PanelTraits&) const = default;
};

/// The traits of the desktop's panel (XDG_CURRENT_DESKTOP); the defaults for other desktops.
PanelTraits panelTraitsOf(const Environment& environment);

}  // namespace quillmar
