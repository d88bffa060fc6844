#include "cli/commands.h"

#include <algorithm>
#include <string>
#include <vector>

#include "config/document_decoder.h"
#include "config/json_writer.h"

namespace quillmar {

namespace {

std::string textListing(const SettingsManager& settings) {
  std::string listing;
  for (const MenuCategory* category : categoriesInDisplayOrder(settings.config)) {
    if (category->isSeparator) continue;
    listing += printable(category->name) + "\n";
    for (const MenuItem& item : category->items) {
      if (item.isSeparator) continue;
      listing += "  " + printable(item.id) + "  " + printable(item.title);
      if (!item.isEnabled) listing += "  (disabled)";
      listing += "\n";
    }
  }
  return listing;
}

std::string jsonListing(const SettingsManager& settings) {
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
      json.key("folderId");
      json.value(std::string_view(category->id));
      json.key("id");
      json.value(std::string_view(item.id));
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

}  // namespace

ExitStatus listItems(const ListInvocation& invocation, const SettingsManager& settings,
                     Console& console) {
  console.print(invocation.json ? jsonListing(settings) : textListing(settings));
  return ExitStatus::success;
}

ExitStatus checkFiles(const CheckInvocation& invocation, const FileSystem& files,
                      Console& console) {
  ExitStatus status = ExitStatus::success;
  for (const std::string& file : invocation.files) {
    const auto check = [&]() -> Result<QuillmarConfig> {
      const Result<std::string> bytes = files.read(file);
      if (!bytes) return bytes.error();
      return decodeDocument(bytes.value());
    };
    if (const auto checked = check(); !checked) {
      console.printError(printable(file + ": " + checked.error().description) + "\n");
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
    return Error{"No item has the id or the title “" + name + "”; “quillmar list” shows them all."};
  }
  if (titled.size() > 1) {
    std::string ids;
    for (const MenuItem* item : titled) ids += (ids.empty() ? "" : ", ") + item->id;
    return Error{std::to_string(titled.size()) + " items have the title “" + name +
                 "”; name the one you mean by its id: " + ids + "."};
  }
  return *titled.front();
}

}  // namespace quillmar
