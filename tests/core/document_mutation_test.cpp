// What happens to documents that are cut, damaged or made up: an error or a document, never
// anything else. The random choices are the same in every run.

#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <simdjson.h>

#include "config/document_decoder.h"
#include "config/document_encoder.h"
#include "config/json_syntax_error.h"
#include "config/quillmar_config.h"
#include "platform/text.h"

namespace quillmar {
namespace {

/// A document with a value of every kind, written as people might.
constexpr std::string_view sample = R"({"version": 2, "name": "Größe 😀", "description": null,
  "categories" : [
    {"id": "c1", "name": "Tools\/\u00e9\ud83d\ude00", "sortOrder": -12, "showAtTopLevel": true, "items": [
      {"id": "i1", "title": "Date", "command": {"type": "Shell Command", "value": "date +%F\n\t\"x\" \\"},
       "shortcut": {"keyCode": 2, "character": "d", "modifiers": 1572864, "isGlobal": false}},
      {"id": "i2", "isSeparator": true}, {"id": "i3", "inputPrompt": "", "unknown": [1.5e3, {"a": [[]]}]}
    ]}
  ],
  "preferences": {"flattenSingleFolder": true}
}
)";

/// Decodes the text, and checks what holds for every text.
void decodeAndCheck(simdjson::dom::parser& parser, const std::string& json) {
  bool hasOversizedNumber = false;
  const bool hasSyntaxError =
      findJsonSyntaxError(json, [&](std::string_view) { hasOversizedNumber = true; }).has_value();
  const bool isJson =
      parser.parse(json).error() == simdjson::SUCCESS || (hasOversizedNumber && !hasSyntaxError);
  ASSERT_EQ(isJson, !hasSyntaxError) << json;

  const Result<QuillmarConfig> result = decodeDocument(json);
  if (!result.ok()) {
    ASSERT_TRUE(result.error().description.ends_with('.')) << json;
    ASSERT_TRUE(text::isValidUtf8(result.error().description)) << json;
    return;
  }
  ASSERT_TRUE(isJson) << json;
  const std::string encoded = encodeDocument(result.value());
  const Result<QuillmarConfig> again = decodeDocument(encoded);
  ASSERT_TRUE(again.ok()) << again.error().description << encoded;
  ASSERT_EQ(again.value(), result.value()) << encoded;
}

TEST(DocumentMutation, ADocumentCutAtAnyByteIsAnError) {
  const std::size_t end = sample.rfind('}');
  ASSERT_TRUE(decodeDocument(std::string(sample)).ok());
  for (std::size_t length = 0; length <= end; ++length) {
    std::string cut(sample.substr(0, length));
    EXPECT_FALSE(decodeDocument(cut).ok()) << cut;
    // Without any room behind it, where a read past the end would be seen.
    cut.shrink_to_fit();
    EXPECT_FALSE(decodeDocument(cut).ok()) << cut;
  }
}

TEST(DocumentMutation, DamageGivesAnErrorOrADocumentThatIsWrittenAndReadAgain) {
  simdjson::dom::parser parser;
  std::mt19937 random(20240229);
  const auto below = [&](std::size_t limit) { return random() % limit; };
  constexpr std::string_view pieces[] = {
      "\"",
      "\\",
      "{",
      "}",
      "[",
      "]",
      ",",
      ":",
      "null",
      "true",
      "0",
      "-",
      "1.0",
      "1e999",
      "\\u0000",
      "\\ud8",
      "\\udc00",
      "\xFF",
      "\xC3",
      "\n",
      "é",
      "\"id\":",
      "[[[[",
      "}}",
      " ",
      "1e2",
      "65536",
      "/*",
      "\xEF\xBB\xBF",
  };

  for (int round = 0; round < 20'000; ++round) {
    std::string json(sample);
    for (std::size_t changes = 1 + below(3); changes > 0; --changes) {
      const std::size_t at = below(json.size());
      switch (below(5)) {
        case 0:
          json[at] = static_cast<char>(below(256));
          break;
        case 1:
          json.erase(at, 1 + below(8));
          break;
        case 2:
          json.insert(at, pieces[below(std::size(pieces))]);
          break;
        case 3:
          json.insert(at, json.substr(below(json.size()), below(40)));
          break;
        default:
          json.replace(at, 1, pieces[below(std::size(pieces))]);
          break;
      }
    }
    decodeAndCheck(parser, json);
    if (HasFatalFailure()) return;
  }
}

TEST(DocumentMutation, RandomSequencesOfJsonTokensGiveAnErrorOrADocument) {
  simdjson::dom::parser parser;
  std::mt19937 random(7);
  constexpr std::string_view pieces[] = {
      "{",           "}", "[",    "]",    ",",    ":", "\"name\"", "\"items\"", "\"categories\"",
      "\"version\"", "1", "null", "true", "\"\"", " ", "{}",       "[]",        "-1",
      "0.5"};
  for (int round = 0; round < 40'000; ++round) {
    std::string json;
    for (std::size_t count = random() % 12; count > 0; --count) {
      json += pieces[random() % std::size(pieces)];
    }
    decodeAndCheck(parser, json);
    if (HasFatalFailure()) return;
  }
}

TEST(DocumentMutation, RandomDocumentsAreReadAsTheyWereWritten) {
  std::mt19937_64 random(42);
  const auto flag = [&] { return random() % 2 == 0; };
  const auto string = [&] {
    constexpr std::string_view characters[] = {"a",  "\"", "\\",   "/",     "\n", "\x1f",
                                               "é",  "€",  "😀",    "\b",    "\t", "\r",
                                               "\f", "~",  "\x7f", "\u2028"};
    std::string text;
    for (std::size_t length = random() % 24; length > 0; --length) {
      text += random() % 3 == 0 ? characters[random() % std::size(characters)] : "plain";
      if (random() % 50 == 0) text += '\0';
    }
    return text;
  };
  const auto optionalString = [&] { return flag() ? std::optional(string()) : std::nullopt; };

  for (int round = 0; round < 300; ++round) {
    QuillmarConfig config;
    config.version = static_cast<std::int64_t>(random());
    config.name = optionalString();
    config.description = optionalString();
    config.preferences = {flag(), flag(), flag()};
    config.categories.resize(random() % 4);
    for (MenuCategory& category : config.categories) {
      category = {string(), string(), static_cast<std::int64_t>(random()), {}, optionalString(),
                  flag(),   flag()};
      category.items.resize(random() % 5);
      for (MenuItem& item : category.items) {
        item.id = string();
        item.title = string();
        item.isEnabled = flag();
        item.command = {allCommandTypes[random() % 3], string(), flag(), flag(), flag(), flag()};
        item.iconSymbolName = optionalString();
        if (flag()) {
          item.shortcut = {static_cast<std::uint16_t>(random()), string(), random(), flag()};
        }
        item.confirmBeforeRunning = flag();
        item.isSeparator = flag();
        item.inputPrompt = optionalString();
      }
    }
    const Result<QuillmarConfig> decoded = decodeDocument(encodeDocument(config));
    ASSERT_TRUE(decoded.ok()) << decoded.error().description;
    ASSERT_EQ(decoded.value(), config);
  }
}

}  // namespace
}  // namespace quillmar
