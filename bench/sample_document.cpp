#include "bench/sample_document.h"

#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace quillmar {
namespace {

constexpr std::string_view commands[] = {
    "set -euo pipefail",
    "cd \"$HOME/projects/website\" && git fetch --all --prune --quiet",
    "for file in *.jpg; do convert \"$file\" -resize 1600x1600 \"small/${file%.jpg}.webp\"; done",
    "curl --silent --fail 'https://example.org/api/v1/status?format=json' | jq -r '.state'",
    "rsync -a --delete --exclude '*.tmp' \"$HOME/Documents/\" /media/backup/documents/",
    "printf '%s\\n' \"$(date +%F) done\" >> \"$HOME/.local/share/notes/log.txt\"",
    "find . -name '*.o' -newer Makefile -print0 | xargs -0 rm --",
    "echo \"Größe: $(du -sh . | cut -f1) – fertig\"",
    "ssh deploy@example.org \"sudo systemctl restart web && systemctl is-active web\"",
    "tail -n 100 /var/log/syslog | grep -i error | sort | uniq -c | sort -rn",
};

constexpr std::string_view verbs[] = {"Copy", "Open", "Restart", "Back up", "Convert", "Show"};
constexpr std::string_view nouns[] = {"today's notes", "the web server", "all pictures",
                                      "disk usage",    "the build",      "Überblick"};
constexpr std::string_view icons[] = {"terminal", "folder", "gear", "star"};

/// Pseudo-random choices, the same in every run and with every standard library.
class Choices {
 public:
  std::size_t below(std::size_t limit) { return random_() % limit; }

  template <std::size_t size>
  std::string_view of(const std::string_view (&texts)[size]) {
    return texts[below(size)];
  }

  std::string identifier() {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text = "00000000-0000-4000-8000-000000000000";
    for (char& c : text) {
      if (c == '0') c = digits[below(digits.size())];
    }
    return text;
  }

 private:
  std::mt19937 random_{1};
};

MenuItem makeItem(Choices& choices) {
  MenuItem item;
  item.id = choices.identifier();
  item.title = std::string(choices.of(verbs)) + " " + std::string(choices.of(nouns));
  item.command.value = choices.of(commands);
  item.command.showNotification = choices.below(4) == 0;
  item.command.copyToClipboard = choices.below(4) == 0;
  if (choices.below(4) == 0) item.iconSymbolName = choices.of(icons);
  if (choices.below(20) == 0) item.inputPrompt = "Which one?";
  if (choices.below(10) == 0) {
    item.shortcut = {.keyCode = static_cast<std::uint16_t>(choices.below(128)),
                     .character = "d",
                     .modifiers = 0x180000};
  }
  return item;
}

}  // namespace

QuillmarConfig makeSampleDocument(std::size_t folders, std::size_t itemsPerFolder) {
  Choices choices;
  QuillmarConfig config;
  for (std::size_t i = 0; i < folders; ++i) {
    MenuCategory& category = config.categories.emplace_back();
    category.id = choices.identifier();
    category.name = "Folder " + std::to_string(i + 1);
    category.sortOrder = static_cast<std::int64_t>(i);
    category.iconSymbolName = choices.of(icons);
    for (std::size_t k = 0; k < itemsPerFolder; ++k) category.items.push_back(makeItem(choices));
  }
  return config;
}

}  // namespace quillmar
