// A menu as lines of text: titles, "---" for a separator line, " >" behind a submenu's title and
// two blanks of indentation before its entries.

#pragma once

#include <string>
#include <vector>

#include "platform/menu.h"

namespace quillmar {

inline std::vector<std::string> menuOutline(const Menu& menu, const std::string& indentation = "") {
  std::vector<std::string> lines;
  for (const MenuEntry& entry : menu.entries) {
    if (const auto* action = std::get_if<ActionEntry>(&entry)) {
      lines.push_back(indentation + action->title);
    } else if (const auto* submenu = std::get_if<SubmenuEntry>(&entry)) {
      lines.push_back(indentation + submenu->title + " >");
      for (std::string& line : menuOutline(submenu->submenu, indentation + "  ")) {
        lines.push_back(std::move(line));
      }
    } else {
      lines.push_back(indentation + "---");
    }
  }
  return lines;
}

}  // namespace quillmar
