#include "cli/arguments.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/pack_file_type.h"
#include "platform/result.h"
#include "platform/text.h"

namespace quillmar {

namespace {

/// The arguments of a sub-command, parsed into options and operands.
struct Words {
  std::vector<std::string> operands;
  std::optional<std::string> input;
  bool yes = false;
  bool json = false;
};

enum AllowedOptions : unsigned { noOptions = 0, jsonOption = 1, runOptions = 2 };

/// True if --help or -h is among the options. The argument after --input is its value.
bool asksForHelp(const std::vector<std::string>& words) {
  for (std::size_t i = 0; i < words.size() && words[i] != "--"; ++i) {
    if (words[i] == "--help" || words[i] == "-h") return true;
    if (words[i] == "--input") ++i;
  }
  return false;
}

Error unknownOption(const std::string& word) {
  return Error{"Unknown option “" + word + "”."};
}

Error unknownSubCommand(const std::string& word) {
  return Error{"Unknown sub-command “" + word + "”. To open a file of this name, write “./" + word +
               "”."};
}

Result<Words> splitWords(const std::vector<std::string>& words, unsigned allowed) {
  constexpr std::string_view inputEquals = "--input=";
  Words split;
  for (std::size_t i = 1; i < words.size(); ++i) {
    const std::string& word = words[i];
    if (word == "--") {
      split.operands.insert(split.operands.end(), words.begin() + static_cast<long>(i) + 1,
                            words.end());
      break;
    }
    if (!word.starts_with('-') || word == "-") {
      split.operands.push_back(word);
    } else if ((allowed & jsonOption) != 0 && word == "--json") {
      split.json = true;
    } else if ((allowed & runOptions) != 0 && word == "--yes") {
      split.yes = true;
    } else if ((allowed & runOptions) != 0 && word.starts_with(inputEquals)) {
      split.input = word.substr(inputEquals.size());
    } else if ((allowed & runOptions) != 0 && word == "--input") {
      if (i + 1 == words.size()) return Error{"Option “--input” requires a value."};
      split.input = words[++i];
    } else {
      return unknownOption(word);
    }
  }
  return split;
}

Result<Invocation> parseWithoutOperands(const std::vector<std::string>& words, unsigned allowed,
                                        Invocation (*make)(const Words&)) {
  Result<Words> split = splitWords(words, allowed);
  if (!split) return split.error();
  if (!split.value().operands.empty()) {
    return Error{"“" + words.front() + "” takes no arguments (got “" +
                 split.value().operands.front() + "”)."};
  }
  return make(split.value());
}

Result<Invocation> parseCheck(const std::vector<std::string>& words) {
  Result<Words> split = splitWords(words, noOptions);
  if (!split) return split.error();
  if (split.value().operands.empty()) return Error{"“check” requires a file name."};
  return Invocation(CheckInvocation{std::move(split.value().operands)});
}

Result<Invocation> parseRun(const std::vector<std::string>& words) {
  Result<Words> split = splitWords(words, runOptions);
  if (!split) return split.error();
  Words& found = split.value();
  if (found.operands.empty() || found.operands.front().empty()) {
    return Error{"“run” requires the id or the title of an item."};
  }
  if (found.operands.size() > 1) {
    return Error{"“run” takes one item. Put a title of several words in quotes: “" +
                 found.operands[0] + " " + found.operands[1] + "…”."};
  }
  return Invocation(
      RunInvocation{std::move(found.operands.front()), std::move(found.input), found.yes});
}

/// True if the argument looks like a file name: it contains a slash or ends in a known extension.
bool isFileName(const std::string& argument) {
  const std::string lower = text::lowercased(argument);
  return argument.find('/') != std::string::npos || lower.ends_with(".json") ||
         lower.ends_with("." + std::string(pack_file_type::extension));
}

/// True for a URL of a kind that Quillmar does not open, such as “https://…”.
bool isUnsupportedUrl(std::string_view argument) {
  const std::size_t colon = argument.find("://");
  return colon != std::string_view::npos && argument.find('/') > colon && !isUrl(argument);
}

Result<Invocation> parseFilesAndLinks(const std::vector<std::string>& words) {
  ResidentInvocation invocation;
  bool onlyFiles = false;
  for (const std::string& word : words) {
    if (!onlyFiles && word == "--") {
      onlyFiles = true;
    } else if (onlyFiles) {
      invocation.filesAndLinks.push_back(isUrl(word) ? "./" + word : word);
    } else if (word.starts_with('-')) {
      return unknownOption(word);
    } else if (isUnsupportedUrl(word)) {
      invocation.errors.push_back(
          "Quillmar opens files and links that begin with “quillmar:” (got “" + word + "”).");
    } else if (isUrl(word) || isFileName(word)) {
      invocation.filesAndLinks.push_back(word);
    } else {
      return unknownSubCommand(word);
    }
  }
  if (invocation.filesAndLinks.empty() && !invocation.errors.empty()) {
    return Error{invocation.errors.front()};
  }
  return Invocation(std::move(invocation));
}

}  // namespace

bool isUrl(std::string_view argument) {
  const std::string scheme = text::lowercased(argument.substr(0, argument.find(':') + 1));
  return scheme == "quillmar:" || scheme == "file:";
}

Result<Invocation> parseArguments(const std::vector<std::string>& words) {
  if (words.empty()) return Invocation(ResidentInvocation{});

  const std::string& first = words.front();
  if (first == "help" || asksForHelp(words)) return Invocation(HelpInvocation{});
  if (first == "--version") return Invocation(VersionInvocation{});
  if (first == "list") {
    return parseWithoutOperands(words, jsonOption, [](const Words& split) {
      return Invocation(ListInvocation{split.json});
    });
  }
  if (first == "settings-file") {
    return parseWithoutOperands(words, noOptions,
                                [](const Words&) { return Invocation(SettingsFileInvocation{}); });
  }
  if (first == "menu") {
    return parseWithoutOperands(words, noOptions,
                                [](const Words&) { return Invocation(MenuInvocation{}); });
  }
  if (first == "check") return parseCheck(words);
  if (first == "run") return parseRun(words);
  return parseFilesAndLinks(words);
}

std::string_view helpText() {
  return R"(Quillmar puts your own commands into a menu in the desktop's panel.

Usage:
  quillmar [FILE|LINK…]           run in the panel until “Quit Quillmar”; show the
                                  packs for review, in the running Quillmar if
                                  there is one
  quillmar menu                   open the menu of the running Quillmar at the
                                  pointer; assign a keyboard shortcut of your
                                  desktop to this command
  quillmar list [--json]          list the folders and items of the menu, and mark
                                  those whose hot key does not work
  quillmar run ITEM [OPTION…]     run one item in this terminal, by its id or title
  quillmar check FILE…            check that files are valid settings or packs;
                                  “-” is standard input
  quillmar settings-file          print the path of the settings file
  quillmar --version
  quillmar --help

Options of “run”:
  --input TEXT    use TEXT for {{input}} instead of asking for it
  --yes           run without asking for confirmation
  --              end of options; the item may then begin with a hyphen

Examples:
  quillmar list
  quillmar run "Copy today's date"
  quillmar run "Ping a host" --input example.org --yes
  quillmar run 0B9D7A52-5E33-4E0C-8F3A-6C1B2D4E5F60
  quillmar check ~/Downloads/*.quillmarpack
  quillmar ~/Downloads/git.quillmarpack
  QUILLMAR_SETTINGS_DIR=~/quillmar-test quillmar

Exit status: 0 on success; 1 if the command failed, a file is not valid, you declined, the menu could
not be shown, or the output could not be written; 2 on a usage error.
)";
}

}  // namespace quillmar
