#include "cli/commands.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "config/document_decoder.h"
#include "config/json_writer.h"
#include "config/quillmar_config.h"
#include "platform/result.h"
#include "platform/text.h"

namespace quillmar {

namespace {

/// Shown instead of a missing id.
constexpr std::string_view noId = "-";

std::string shownId(const MenuItem& item) {
  return item.id.empty() ? std::string(noId) : printable(item.id);
}

std::size_t characterCount(std::string_view text) {
  return static_cast<std::size_t>(
      std::ranges::count_if(text, [](char byte) { return (byte & 0xC0) != 0x80; }));
}

/// The length of the longest id in the list, in characters.
std::size_t idColumnWidth(const QuillmarConfig& config) {
  std::size_t width = 0;
  for (const MenuCategory& category : config.categories) {
    if (category.isSeparator) continue;
    for (const MenuItem& item : category.items) {
      if (!item.isSeparator) width = std::max(width, characterCount(shownId(item)));
    }
  }
  return width;
}

/// Null if the item's hot key works or it has none.
const UnregisteredHotKey* unregisteredHotKey(const MenuItem& item,
                                             const std::vector<UnregisteredHotKey>& unregistered) {
  if (!item.isEnabled || !item.shortcut || !item.shortcut->isGlobal) return nullptr;
  // The running program gives ids to items that have none in the file.
  const auto found = std::ranges::find_if(unregistered, [&](const UnregisteredHotKey& hotKey) {
    return item.id.empty() ? hotKey.itemTitle == text::replacingInvalidCharacters(item.title)
                           : hotKey.itemId == text::replacingInvalidCharacters(item.id);
  });
  return found == unregistered.end() ? nullptr : &*found;
}

std::string textListing(const SettingsManager& settings,
                        const std::vector<UnregisteredHotKey>& unregistered) {
  const std::size_t idWidth = idColumnWidth(settings.config);
  std::string listing;
  for (const MenuCategory* category : categoriesInDisplayOrder(settings.config)) {
    if (category->isSeparator) continue;
    listing += printable(category->name) + "\n";
    for (const MenuItem& item : category->items) {
      if (item.isSeparator) continue;
      const std::string id = shownId(item);
      listing += "  " + id + std::string(idWidth - characterCount(id), ' ') + "  ";
      listing += printable(item.title);
      if (!item.isEnabled) listing += "  (disabled)";
      if (const auto* hotKey = unregisteredHotKey(item, unregistered)) {
        listing += "  (hot key not registered: ";
        listing += explanation(hotKey->status);
        listing += ")";
      }
      listing += "\n";
    }
  }
  return listing;
}

std::string jsonListing(const SettingsManager& settings,
                        const std::vector<UnregisteredHotKey>& unregistered) {
  constexpr std::size_t estimatedSize = 4096;
  JsonWriter json(estimatedSize);
  json.beginArray();
  for (const MenuCategory* category : categoriesInDisplayOrder(settings.config)) {
    if (category->isSeparator) continue;
    for (const MenuItem& item : category->items) {
      if (item.isSeparator) continue;
      json.element();
      json.beginObject();
      json.key("folder");
      json.value(std::string_view(category->name));
      if (!category->id.empty()) {
        json.key("folderId");
        json.value(std::string_view(category->id));
      }
      if (const auto* hotKey = unregisteredHotKey(item, unregistered)) {
        json.key("hotKeyStatus");
        json.value(static_cast<std::int64_t>(hotKey->status));
      }
      if (!item.id.empty()) {
        json.key("id");
        json.value(std::string_view(item.id));
      }
      json.key("isEnabled");
      json.value(item.isEnabled);
      json.key("title");
      json.value(std::string_view(item.title));
      json.key("type");
      json.value(rawValue(item.command.type));
      json.endObject();
    }
  }
  json.endArray();
  return json.take() + "\n";
}

/// The error that lists the ids of the items with this title, so that the user can choose one.
Error ambiguousTitle(const std::string& title, const std::vector<const MenuItem*>& items) {
  std::string ids;
  bool someHaveNone = false;
  for (const MenuItem* item : items) {
    if (item->id.empty()) {
      someHaveNone = true;
    } else {
      ids += (ids.empty() ? "" : ", ") + item->id;
    }
  }
  std::string text = std::to_string(items.size()) + " items have the title “" + title + "”";
  if (ids.empty()) {
    text += " and none of them has an id; give each an \"id\" in the settings file.";
  } else {
    text += "; use the id of the one to run: " + ids + ".";
    if (someHaveNone) text += " Those without one need an \"id\" in the settings file.";
  }
  return Error{std::move(text)};
}

}  // namespace

ExitStatus listItems(const ListInvocation& invocation, const SettingsManager& settings,
                     const std::vector<UnregisteredHotKey>& unregistered, Console& console) {
  console.print(invocation.json ? jsonListing(settings, unregistered)
                                : textListing(settings, unregistered));
  return ExitStatus::success;
}

ExitStatus checkFiles(const CheckInvocation& invocation, const FileSystem& files,
                      Console& console) {
  ExitStatus status = ExitStatus::success;
  for (const std::string& file : invocation.files) {
    const auto check = [&]() -> Result<void> {
      const bool isStandardInput = file == "-";
      const Result<std::string> bytes = isStandardInput ? console.readToEnd() : files.read(file);
      if (!bytes) return bytes.error();
      const Result<QuillmarConfig> decoded = decodeDocument(bytes.value());
      if (decoded) return {};
      const std::string name = isStandardInput ? "Standard input" : file;
      return Error{name + ": " + decoded.error().description};
    };
    if (const Result<void> checked = check(); !checked) {
      console.printError(printable(checked.error().description) + "\n");
      status = ExitStatus::failure;
    }
  }
  return status;
}

Result<MenuItem> itemNamed(const std::string& name, const SettingsManager& settings) {
  if (const auto found = settings.getItem(name)) {
    if (found->item.isSeparator) {
      return Error{"“" + name + "” is a separator line, which cannot run."};
    }
    return found->item;
  }

  std::vector<const MenuItem*> titled;
  for (const MenuCategory& category : settings.config.categories) {
    for (const MenuItem& item : category.items) {
      if (!item.isSeparator && item.title == name) titled.push_back(&item);
    }
  }
  if (titled.empty()) {
    return Error{"No item has the id or title “" + name + "”. “quillmar list” prints all items."};
  }
  if (titled.size() > 1) return ambiguousTitle(name, titled);
  return *titled.front();
}

}  // namespace quillmar
