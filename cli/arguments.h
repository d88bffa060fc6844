// The command line's words, understood.

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/result.h"

namespace quillmar {

/// No words: live in the panel.
struct ResidentInvocation {
  bool operator==(const ResidentInvocation&) const = default;
};

struct HelpInvocation {
  bool operator==(const HelpInvocation&) const = default;
};

struct VersionInvocation {
  bool operator==(const VersionInvocation&) const = default;
};

struct ListInvocation {
  bool json = false;
  bool operator==(const ListInvocation&) const = default;
};

struct SettingsFileInvocation {
  bool operator==(const SettingsFileInvocation&) const = default;
};

struct CheckInvocation {
  std::vector<std::string> files;
  bool operator==(const CheckInvocation&) const = default;
};

/// Show the menu of the running instance.
struct MenuInvocation {
  bool operator==(const MenuInvocation&) const = default;
};

struct RunInvocation {
  /// An item's id or title.
  std::string item;
  std::optional<std::string> input;
  bool yes = false;
  bool operator==(const RunInvocation&) const = default;
};

using Invocation =
    std::variant<ResidentInvocation, HelpInvocation, VersionInvocation, ListInvocation,
                 SettingsFileInvocation, CheckInvocation, MenuInvocation, RunInvocation>;

/// Understands the words after the program's name. "--" ends the options, so that what follows may
/// begin with a hyphen; --help or -h before it asks for the help, whatever else is said. The error
/// says which word is wrong.
Result<Invocation> parseArguments(const std::vector<std::string>& words);

/// The text of --help.
std::string_view helpText();

}  // namespace quillmar
