// Command-line parsing.

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/result.h"

namespace quillmar {

/// Run in the panel, or pass the files and links on to the instance that does.
struct ResidentInvocation {
  /// Names of pack files, and URLs with the scheme “quillmar” or “file”; see isUrl().
  std::vector<std::string> filesAndLinks;
  /// A sentence for each URL that cannot be opened because it has another scheme.
  std::vector<std::string> errors;
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

/// Parses the arguments after the program's name. "--" ends the options, so later arguments may
/// begin with a hyphen. --help or -h before it takes precedence over everything else. The error
/// names the wrong argument.
Result<Invocation> parseArguments(const std::vector<std::string>& words);

/// True if an element of ResidentInvocation::filesAndLinks is a URL rather than the name of a file.
bool isUrl(std::string_view argument);

/// The text of --help.
std::string_view helpText();

}  // namespace quillmar
