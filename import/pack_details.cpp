#include "import/pack_details.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/single_line_text.h"
#include "shortcuts/shortcut_recorder_view.h"

namespace quillmar {

namespace {

constexpr std::string_view fieldIndentation = "    ";
constexpr std::string_view quotedIndentation = "    │ ";
constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();

/// The whole text on one line.
std::string onOneLine(const std::string& text) {
  return singleLineText(text, unlimited, unlimited);
}

class DetailsWriter {
 public:
  void addPack(const QuillmarConfig& pack) {
    if (!pack.name && !pack.description) return;
    addLine(pack.name ? "Pack: " + onOneLine(*pack.name) : "Pack without a name");
    if (!pack.description) return;
    addField("Description:");
    addQuotedLines(*pack.description);
  }

  void addFolder(const MergeStep& step, std::size_t number, std::size_t count) {
    beginParagraph();
    const MenuCategory& folder = *step.source;
    const std::string position = std::to_string(number) + " of " + std::to_string(count);
    if (folder.isSeparator) {
      addLine("Separator between folders (" + position + ")");
    } else {
      addLine("Folder " + position + ": " + onOneLine(folder.name));
    }
    addIcon(folder.iconSymbolName);
    if (folder.showAtTopLevel) addField("Shown at the top level of the menu");
    addTarget(step);
    // Also those of a separator: a merge may add them to a folder with the same id.
    for (std::size_t i = 0; i < folder.items.size(); ++i) {
      addItem(folder.items[i], i + 1, folder.items.size());
    }
  }

  std::string takeText() { return std::move(text_); }

 private:
  /// Where a merge adds the items if that is another folder.
  void addTarget(const MergeStep& step) {
    if (step.addsFolder || step.items.empty()) return;
    const std::string target = step.target->isSeparator
                                   ? "a separator, where they are not shown"
                                   : "the folder “" + onOneLine(step.target->name) + "”";
    addField("Merge adds its new items to " + target);
  }

  void addItem(const MenuItem& item, std::size_t number, std::size_t count) {
    beginParagraph();
    const std::string position = std::to_string(number) + " of " + std::to_string(count);
    if (item.isSeparator) {
      addLine("Separator (" + position + ")");
    } else {
      addLine("Item " + position + ": " + onOneLine(item.title));
    }
    if (!item.isEnabled) addField("Disabled");
    // A separator does not run its command, which is usually empty.
    if (item.isSeparator && item.command == MenuCommand{}) return;
    addCommand(item.command);
    addIcon(item.iconSymbolName);
    if (item.shortcut) addShortcut(*item.shortcut);
    if (item.inputPrompt) addField("Asks for a value: " + onOneLine(*item.inputPrompt));
    addField(item.confirmBeforeRunning ? "Asks before it runs" : "Runs without asking");
    addOptions(item.command);
  }

  void addCommand(const MenuCommand& command) {
    addField(std::string(rawValue(command.type)) + ":");
    addQuotedLines(command.value);
  }

  void addQuotedLines(std::string_view rest) {
    while (true) {
      const std::size_t end = std::min(rest.find('\n'), rest.size());
      text_.append(quotedIndentation).append(rest.substr(0, end)).append("\n");
      if (end == rest.size()) break;
      rest.remove_prefix(end + 1);
    }
  }

  void addShortcut(const KeyboardShortcut& shortcut) {
    std::string line = "Shortcut: " + onOneLine(ShortcutRecorderView::displayString(shortcut));
    // The key code decides which key it is; the character comes from the pack and may differ.
    line += " (key code " + std::to_string(shortcut.keyCode) + ")";
    addField(line + (shortcut.isGlobal ? ", in all programs" : ", in the menu only"));
  }

  void addOptions(const MenuCommand& command) {
    // AppleScripts cannot open in a terminal.
    if (command.openInTerminal && command.type != CommandType::appleScript) {
      addField("Opens in a terminal");
      return;
    }
    addField(command.runInBackground ? "Runs in the background" : "Blocks the menu while it runs");
    if (command.copyToClipboard) addField("Copies its output to the clipboard");
    if (command.showNotification) addField("Shows its output in a notification");
  }

  void addIcon(const std::optional<std::string>& name) {
    if (name) addField("Icon: " + onOneLine(*name));
  }

  void beginParagraph() {
    if (!text_.empty()) text_ += '\n';
  }
  void addLine(std::string_view line) { text_.append(line).append("\n"); }
  void addField(std::string_view line) {
    text_.append(fieldIndentation);
    addLine(line);
  }

  std::string text_;
};

}  // namespace

std::string packDetails(const QuillmarConfig& current, const QuillmarConfig& pack) {
  const std::vector<MergeStep> steps = current.mergeSteps(pack);
  DetailsWriter writer;
  writer.addPack(pack);
  for (std::size_t i = 0; i < steps.size(); ++i) writer.addFolder(steps[i], i + 1, steps.size());
  return writer.takeText();
}

}  // namespace quillmar
