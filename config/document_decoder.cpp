#include "config/document_decoder.h"

#include <algorithm>
#include <array>
#include <concepts>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include <simdjson.h>

#include "config/json_place.h"
#include "config/json_syntax_error.h"

namespace quillmar {
namespace {

namespace dom = simdjson::dom;

/// A value of the parsed text and the path to it. A missing value has no element.
struct Value {
  const Value* parent = nullptr;
  /// Empty for the root and for the elements of arrays.
  std::string_view key{};
  /// Index in its parent, counting duplicate keys.
  std::size_t ordinal = 0;
  std::optional<dom::element> element{};
};

class DocumentReader;

/// A key of the objects that are decoded to T, and the function that reads its value.
template <class T>
struct Field {
  std::string_view key;
  bool (*read)(DocumentReader& reader, const Value& value, T& target);
};

/// "an integer from -3 to 4".
template <std::integral T>
std::string integerFrom() {
  return "an integer from " + std::to_string(std::numeric_limits<T>::min()) + " to " +
         std::to_string(std::numeric_limits<T>::max());
}

/// Reads the values of one document into their types. If the value is missing, `read` leaves the
/// target at its default. If the value is invalid, it returns false and sets error().
class DocumentReader {
 public:
  /// Both must outlive the reader.
  DocumentReader(std::string_view json, const std::function<std::string()>& makeIdentifier)
      : json_(json), makeIdentifier_(makeIdentifier) {}

  const Error& error() const { return error_; }

  bool read(const Value& value, bool& target);
  bool read(const Value& value, std::string& target);
  bool read(const Value& value, CommandType& target);
  bool read(const Value& value, MenuCommand& target);
  bool read(const Value& value, KeyboardShortcut& target);
  bool read(const Value& value, MenuItem& target);
  bool read(const Value& value, MenuCategory& target);
  bool read(const Value& value, Preferences& target);
  bool read(const Value& value, QuillmarConfig& target);

  template <std::integral T>
  bool read(const Value& value, T& target);

  template <class T>
  bool read(const Value& value, std::optional<T>& target);

  template <class T>
  bool read(const Value& value, std::vector<T>& target);

  bool readRequired(const Value& value, std::uint16_t& target);
  bool readIdentifier(const Value& value, std::string& target);

 private:
  template <class T, std::size_t count>
  bool readObject(const Value& value, T& target, const std::array<Field<T>, count>& fields);

  bool fail(const Value& value, std::string_view expected);

  std::string_view json_;
  const std::function<std::string()>& makeIdentifier_;
  Error error_;
};

template <auto pointer, class T>
bool member(DocumentReader& reader, const Value& value, T& target) {
  return reader.read(value, target.*pointer);
}

template <auto pointer, class T>
bool requiredMember(DocumentReader& reader, const Value& value, T& target) {
  return reader.readRequired(value, target.*pointer);
}

template <auto pointer, class T>
bool identifierMember(DocumentReader& reader, const Value& value, T& target) {
  return reader.readIdentifier(value, target.*pointer);
}

bool DocumentReader::read(const Value& value, QuillmarConfig& target) {
  static constexpr auto fields = std::to_array<Field<QuillmarConfig>>({
      {"categories", member<&QuillmarConfig::categories>},
      {"description", member<&QuillmarConfig::description>},
      {"name", member<&QuillmarConfig::name>},
      {"preferences", member<&QuillmarConfig::preferences>},
      {"version", member<&QuillmarConfig::version>},
  });
  target.version = 1;
  return readObject(value, target, fields);
}

bool DocumentReader::read(const Value& value, Preferences& target) {
  static constexpr auto fields = std::to_array<Field<Preferences>>({
      {"flattenSingleFolder", member<&Preferences::flattenSingleFolder>},
      {"notifyOnFailure", member<&Preferences::notifyOnFailure>},
      {"useLoginShell", member<&Preferences::useLoginShell>},
  });
  return readObject(value, target, fields);
}

bool DocumentReader::read(const Value& value, MenuCategory& target) {
  static constexpr auto fields = std::to_array<Field<MenuCategory>>({
      {"iconSymbolName", member<&MenuCategory::iconSymbolName>},
      {"id", identifierMember<&MenuCategory::id>},
      {"isSeparator", member<&MenuCategory::isSeparator>},
      {"items", member<&MenuCategory::items>},
      {"name", member<&MenuCategory::name>},
      {"showAtTopLevel", member<&MenuCategory::showAtTopLevel>},
      {"sortOrder", member<&MenuCategory::sortOrder>},
  });
  return readObject(value, target, fields);
}

bool DocumentReader::read(const Value& value, MenuItem& target) {
  static constexpr auto fields = std::to_array<Field<MenuItem>>({
      {"command", member<&MenuItem::command>},
      {"confirmBeforeRunning", member<&MenuItem::confirmBeforeRunning>},
      {"iconSymbolName", member<&MenuItem::iconSymbolName>},
      {"id", identifierMember<&MenuItem::id>},
      {"inputPrompt", member<&MenuItem::inputPrompt>},
      {"isEnabled", member<&MenuItem::isEnabled>},
      {"isSeparator", member<&MenuItem::isSeparator>},
      {"shortcut", member<&MenuItem::shortcut>},
      {"title", member<&MenuItem::title>},
  });
  return readObject(value, target, fields);
}

bool DocumentReader::read(const Value& value, MenuCommand& target) {
  static constexpr auto fields = std::to_array<Field<MenuCommand>>({
      {"copyToClipboard", member<&MenuCommand::copyToClipboard>},
      {"openInTerminal", member<&MenuCommand::openInTerminal>},
      {"runInBackground", member<&MenuCommand::runInBackground>},
      {"showNotification", member<&MenuCommand::showNotification>},
      {"type", member<&MenuCommand::type>},
      {"value", member<&MenuCommand::value>},
  });
  return readObject(value, target, fields);
}

bool DocumentReader::read(const Value& value, KeyboardShortcut& target) {
  static constexpr auto fields = std::to_array<Field<KeyboardShortcut>>({
      {"character", member<&KeyboardShortcut::character>},
      {"isGlobal", member<&KeyboardShortcut::isGlobal>},
      {"keyCode", requiredMember<&KeyboardShortcut::keyCode>},
      {"modifiers", member<&KeyboardShortcut::modifiers>},
  });
  return readObject(value, target, fields);
}

bool DocumentReader::read(const Value& value, bool& target) {
  if (!value.element) return true;
  return value.element->get_bool().get(target) == simdjson::SUCCESS || fail(value, "true or false");
}

bool DocumentReader::read(const Value& value, std::string& target) {
  if (!value.element) return true;
  std::string_view text;
  if (value.element->get_string().get(text) != simdjson::SUCCESS) return fail(value, "a string");
  target = text;
  return true;
}

bool DocumentReader::read(const Value& value, CommandType& target) {
  if (!value.element) return true;
  std::string_view text;
  if (value.element->get_string().get(text) == simdjson::SUCCESS) {
    if (const std::optional<CommandType> type = commandTypeFromRawValue(text)) {
      target = *type;
      return true;
    }
  }
  return fail(value, "\"Shell Command\", \"Script File\" or \"AppleScript\"");
}

template <std::integral T>
bool DocumentReader::read(const Value& value, T& target) {
  if (!value.element) return true;
  using Wide = std::conditional_t<std::is_signed_v<T>, std::int64_t, std::uint64_t>;
  Wide number = 0;
  if (value.element->get<Wide>().get(number) == simdjson::SUCCESS && std::in_range<T>(number)) {
    target = static_cast<T>(number);
    return true;
  }
  return fail(value, integerFrom<T>());
}

bool DocumentReader::readRequired(const Value& value, std::uint16_t& target) {
  return value.element ? read(value, target) : fail(value, integerFrom<std::uint16_t>());
}

bool DocumentReader::readIdentifier(const Value& value, std::string& target) {
  if (value.element) return read(value, target);
  target = makeIdentifier_();
  return true;
}

template <class T>
bool DocumentReader::read(const Value& value, std::optional<T>& target) {
  return !value.element || read(value, target.emplace());
}

template <class T>
bool DocumentReader::read(const Value& value, std::vector<T>& target) {
  if (!value.element) return true;
  dom::array elements;
  if (value.element->get_array().get(elements) != simdjson::SUCCESS) {
    return fail(value, "an array");
  }
  // Grows step by step: an array of millions of invalid values must not reserve memory for all.
  constexpr std::size_t maximumReserved = 4096;
  target.reserve(std::min(elements.size(), maximumReserved));
  Value child{.parent = &value};
  for (const dom::element element : elements) {
    child.element = element;
    if (!read(child, target.emplace_back())) return false;
    ++child.ordinal;
  }
  return true;
}

/// The last value of a key.
struct Found {
  dom::element element;
  std::size_t ordinal = 0;
  bool isPresent = false;
};

/// Reads the last value of each field's key. A missing key or null counts as a missing value.
template <class T, std::size_t count>
bool DocumentReader::readObject(const Value& value, T& target,
                                const std::array<Field<T>, count>& fields) {
  if (!value.element) return true;
  dom::object object;
  if (value.element->get_object().get(object) != simdjson::SUCCESS) {
    return fail(value, "an object");
  }

  std::array<Found, count> found;
  std::size_t ordinal = 0;
  // Most documents have their keys in the order of the fields, so the search starts after the last
  // match.
  std::size_t next = 0;
  for (auto child = object.begin(); child != object.end(); ++child) {
    const std::string_view key = child.key();
    for (std::size_t tried = 0; tried < count; ++tried) {
      const std::size_t i = next;
      next = next + 1 == count ? 0 : next + 1;
      if (fields[i].key != key) continue;
      found[i].element = child.value();
      found[i].ordinal = ordinal;
      found[i].isPresent = true;
      break;
    }
    ++ordinal;
  }

  for (std::size_t i = 0; i < count; ++i) {
    Value child{.parent = &value, .key = fields[i].key, .ordinal = found[i].ordinal};
    if (found[i].isPresent && !found[i].element.is_null()) child.element = found[i].element;
    if (!fields[i].read(*this, child, target)) return false;
  }
  return true;
}

/// "categories[3].items[0].shortcut"; the root's is "The document".
std::string pathOf(const Value& value) {
  if (value.parent == nullptr) return "The document";
  std::string path = value.parent->parent == nullptr ? "" : pathOf(*value.parent);
  if (value.key.empty()) return path + "[" + std::to_string(value.ordinal) + "]";
  if (!path.empty()) path += '.';
  return path.append(value.key);
}

std::vector<std::size_t> ordinalsOf(const Value& value) {
  if (value.parent == nullptr) return {};
  std::vector<std::size_t> ordinals = ordinalsOf(*value.parent);
  ordinals.push_back(value.ordinal);
  return ordinals;
}

/// Describes a value for an error message; `source` is its text.
std::string described(dom::element element, std::string_view source) {
  switch (element.type()) {
    case dom::element_type::OBJECT:
      return "an object";
    case dom::element_type::ARRAY:
      return "an array";
    case dom::element_type::STRING:
      return "the string " + quotedExcerpt(element.get_string().value_unsafe());
    case dom::element_type::INT64:
    case dom::element_type::UINT64:
    case dom::element_type::DOUBLE:
      return "the number " + excerpt(source);
    case dom::element_type::BOOL:
    case dom::element_type::NULL_VALUE:
      return std::string(source);
  }
  return "something else";
}

bool DocumentReader::fail(const Value& value, std::string_view expected) {
  // A missing value is reported at its object.
  const Value& place = value.element ? value : *value.parent;
  const std::string_view source = valueAt(json_, ordinalsOf(place));
  const TextPosition position =
      positionAt(json_, static_cast<std::size_t>(source.data() - json_.data()));
  error_.description = pathOf(value) + " (" + description(position) + "): expected " +
                       std::string(expected) + ", found " +
                       (value.element ? described(*value.element, source) : "nothing") + ".";
  return false;
}

simdjson::simdjson_result<dom::element> parse(dom::parser& parser, const std::string& json) {
  const bool isPadded = json.capacity() - json.size() >= simdjson::SIMDJSON_PADDING;
  return parser.parse(json.data(), json.size(), !isPadded);
}

/// Replaces a number that is too large for the parser with a valid one of the same length, so that
/// all positions stay valid. The new number is not an integer, so it is an error for every known
/// key; the message quotes the original text.
void replaceNumber(std::string& json, std::size_t offset, std::size_t length) {
  constexpr std::string_view number = "0.0";
  json.replace(offset, length, std::string(number) + std::string(length - number.size(), ' '));
}

}  // namespace

Result<QuillmarConfig> decodeDocument(const std::string& json,
                                      const std::function<std::string()>& makeIdentifier) {
  dom::parser parser;
  dom::element root;
  simdjson::error_code status = parse(parser, json).get(root);
  if (status == simdjson::EMPTY) return Error{"The document is empty."};

  std::string smallerNumbers;
  dom::parser deeperParser;
  if (status != simdjson::SUCCESS) {
    const auto makeSmaller = [&](std::string_view number) {
      if (smallerNumbers.empty()) smallerNumbers = json;
      replaceNumber(smallerNumbers, static_cast<std::size_t>(number.data() - json.data()),
                    number.size());
    };
    if (std::optional<Error> error = findJsonSyntaxError(json, makeSmaller)) {
      return *std::move(error);
    }
    const std::string& text = smallerNumbers.empty() ? json : smallerNumbers;
    status = parse(parser, text).get(root);
    if (status == simdjson::DEPTH_ERROR) {
      // The parser counts an empty object or array as one level less than one with content. At its
      // usual limit it rejects content at the deepest allowed level; with one level more it accepts
      // an empty container below that.
      status = deeperParser.allocate(text.size(), maximumJsonDepth + 1);
      if (status == simdjson::SUCCESS) status = parse(deeperParser, text).get(root);
    }
  }
  if (status != simdjson::SUCCESS) {
    return Error{
        "The document could not be parsed: " + std::string(simdjson::error_message(status)) + "."};
  }

  DocumentReader reader(json, makeIdentifier);
  QuillmarConfig config;
  if (!reader.read(Value{.element = root}, config)) return reader.error();
  return config;
}

}  // namespace quillmar
