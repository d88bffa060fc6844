#include "config/document_encoder.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "config/json_writer.h"

namespace quillmar {
namespace {

void write(JsonWriter& writer, bool value) {
  writer.value(value);
}
void write(JsonWriter& writer, std::int64_t value) {
  writer.value(value);
}
void write(JsonWriter& writer, std::uint64_t value) {
  writer.value(value);
}
void write(JsonWriter& writer, std::uint16_t value) {
  writer.value(std::uint64_t{value});
}
void write(JsonWriter& writer, const std::string& value) {
  writer.value(std::string_view(value));
}
void write(JsonWriter& writer, CommandType value) {
  writer.value(rawValue(value));
}

void write(JsonWriter& writer, const MenuCommand& command);
void write(JsonWriter& writer, const KeyboardShortcut& shortcut);
void write(JsonWriter& writer, const MenuItem& item);
void write(JsonWriter& writer, const MenuCategory& category);
void write(JsonWriter& writer, const Preferences& preferences);

template <class T>
void write(JsonWriter& writer, const std::vector<T>& values) {
  writer.beginArray();
  for (const T& value : values) {
    writer.element();
    write(writer, value);
  }
  writer.endArray();
}

template <std::size_t size, class T>
void writeMember(JsonWriter& writer, const char (&key)[size], const T& value) {
  writer.key(key);
  write(writer, value);
}

/// An absent value has no key.
template <std::size_t size, class T>
void writeMember(JsonWriter& writer, const char (&key)[size], const std::optional<T>& value) {
  if (value) writeMember(writer, key, *value);
}

// The keys of every object ascend by code point.

void write(JsonWriter& writer, const MenuCommand& command) {
  writer.beginObject();
  writeMember(writer, "copyToClipboard", command.copyToClipboard);
  writeMember(writer, "openInTerminal", command.openInTerminal);
  writeMember(writer, "runInBackground", command.runInBackground);
  writeMember(writer, "showNotification", command.showNotification);
  writeMember(writer, "type", command.type);
  writeMember(writer, "value", command.value);
  writer.endObject();
}

void write(JsonWriter& writer, const KeyboardShortcut& shortcut) {
  writer.beginObject();
  writeMember(writer, "character", shortcut.character);
  writeMember(writer, "isGlobal", shortcut.isGlobal);
  writeMember(writer, "keyCode", shortcut.keyCode);
  writeMember(writer, "modifiers", shortcut.modifiers);
  writer.endObject();
}

void write(JsonWriter& writer, const MenuItem& item) {
  writer.beginObject();
  writeMember(writer, "command", item.command);
  writeMember(writer, "confirmBeforeRunning", item.confirmBeforeRunning);
  writeMember(writer, "iconSymbolName", item.iconSymbolName);
  writeMember(writer, "id", item.id);
  writeMember(writer, "inputPrompt", item.inputPrompt);
  writeMember(writer, "isEnabled", item.isEnabled);
  writeMember(writer, "isSeparator", item.isSeparator);
  writeMember(writer, "shortcut", item.shortcut);
  writeMember(writer, "title", item.title);
  writer.endObject();
}

void write(JsonWriter& writer, const MenuCategory& category) {
  writer.beginObject();
  writeMember(writer, "iconSymbolName", category.iconSymbolName);
  writeMember(writer, "id", category.id);
  writeMember(writer, "isSeparator", category.isSeparator);
  writeMember(writer, "items", category.items);
  writeMember(writer, "name", category.name);
  writeMember(writer, "showAtTopLevel", category.showAtTopLevel);
  writeMember(writer, "sortOrder", category.sortOrder);
  writer.endObject();
}

void write(JsonWriter& writer, const Preferences& preferences) {
  writer.beginObject();
  writeMember(writer, "flattenSingleFolder", preferences.flattenSingleFolder);
  writeMember(writer, "notifyOnFailure", preferences.notifyOnFailure);
  writeMember(writer, "useLoginShell", preferences.useLoginShell);
  writer.endObject();
}

void write(JsonWriter& writer, const QuillmarConfig& config) {
  writer.beginObject();
  writeMember(writer, "categories", config.categories);
  writeMember(writer, "description", config.description);
  writeMember(writer, "name", config.name);
  writeMember(writer, "preferences", config.preferences);
  writeMember(writer, "version", config.version);
  writer.endObject();
}

/// A little more than most documents take.
std::size_t estimatedSize(const QuillmarConfig& config) {
  constexpr std::size_t keysOfObject = 640;
  std::size_t objects = 1;
  std::size_t text = 0;
  for (const MenuCategory& category : config.categories) {
    objects += 1 + category.items.size();
    for (const MenuItem& item : category.items) text += item.command.value.size();
  }
  return objects * keysOfObject + text + text / 8;
}

}  // namespace

std::string encodeDocument(const QuillmarConfig& config) {
  JsonWriter writer(estimatedSize(config));
  write(writer, config);
  return writer.take();
}

}  // namespace quillmar
