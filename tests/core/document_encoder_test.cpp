#include "config/document_encoder.h"

#include <string>

#include <gtest/gtest.h>

#include "config/document_decoder.h"
#include "config/quillmar_config.h"

namespace quillmar {
namespace {

QuillmarConfig dailyTools() {
  MenuItem date;
  date.id = "0B9D7A52-5E33-4E0C-8F3A-6C1B2D4E5F60";
  date.title = "Copy today's date";
  date.command.value = "date +%F";
  date.command.copyToClipboard = true;
  date.shortcut = KeyboardShortcut{.keyCode = 2, .character = "d", .modifiers = 1572864};

  MenuItem separator = MenuItem::separator();
  separator.id = "C3A1F0E2-7B64-4D8A-A1E5-0F9B8C7D6E54";

  MenuCategory utilities;
  utilities.id = "6F1C2E0A-1B7D-4C55-9E0B-3A2D9C4F8E11";
  utilities.name = "Utilities";
  utilities.iconSymbolName = "terminal";
  utilities.items = {date, separator};

  QuillmarConfig config;
  config.name = "Daily Tools";
  config.description = "A few handy commands";
  config.categories = {utilities};
  return config;
}

constexpr const char* dailyToolsText = R"({
  "categories" : [
    {
      "iconSymbolName" : "terminal",
      "id" : "6F1C2E0A-1B7D-4C55-9E0B-3A2D9C4F8E11",
      "isSeparator" : false,
      "items" : [
        {
          "command" : {
            "copyToClipboard" : true,
            "openInTerminal" : false,
            "runInBackground" : true,
            "showNotification" : false,
            "type" : "Shell Command",
            "value" : "date +%F"
          },
          "confirmBeforeRunning" : false,
          "id" : "0B9D7A52-5E33-4E0C-8F3A-6C1B2D4E5F60",
          "isEnabled" : true,
          "isSeparator" : false,
          "shortcut" : {
            "character" : "d",
            "isGlobal" : true,
            "keyCode" : 2,
            "modifiers" : 1572864
          },
          "title" : "Copy today's date"
        },
        {
          "command" : {
            "copyToClipboard" : false,
            "openInTerminal" : false,
            "runInBackground" : true,
            "showNotification" : false,
            "type" : "Shell Command",
            "value" : ""
          },
          "confirmBeforeRunning" : false,
          "id" : "C3A1F0E2-7B64-4D8A-A1E5-0F9B8C7D6E54",
          "isEnabled" : true,
          "isSeparator" : true,
          "title" : ""
        }
      ],
      "name" : "Utilities",
      "showAtTopLevel" : false,
      "sortOrder" : 0
    }
  ],
  "description" : "A few handy commands",
  "name" : "Daily Tools",
  "preferences" : {
    "flattenSingleFolder" : false,
    "notifyOnFailure" : true,
    "useLoginShell" : true
  },
  "version" : 2
})";

/// The document whose name is the text, and the text as it stands in the encoded form.
QuillmarConfig documentNamed(std::string name) {
  QuillmarConfig config;
  config.name = std::move(name);
  return config;
}

std::string encodedName(const std::string& name) {
  const std::string text = encodeDocument(documentNamed(name));
  const std::string_view before = "\"name\" : \"";
  const std::size_t start = text.find(before) + before.size();
  return text.substr(start, text.find("\",\n  \"preferences\"") - start);
}

TEST(DocumentEncoder, WritesAPackByteForByte) {
  EXPECT_EQ(encodeDocument(dailyTools()), dailyToolsText);
}

TEST(DocumentEncoder, WritesWhatTheDecoderReads) {
  const Result<QuillmarConfig> decoded = decodeDocument(dailyToolsText);
  ASSERT_TRUE(decoded.ok()) << decoded.error().description;
  EXPECT_EQ(decoded.value(), dailyTools());
}

TEST(DocumentEncoder, WritesAnEmptyArrayAndAllPreferencesButNoNameForADecodedEmptyObject) {
  EXPECT_EQ(encodeDocument(decodeDocument("{}").value()), R"({
  "categories" : [

  ],
  "preferences" : {
    "flattenSingleFolder" : false,
    "notifyOnFailure" : true,
    "useLoginShell" : true
  },
  "version" : 1
})");
}

TEST(DocumentEncoder, IndentsAnEmptyArrayLikeItsKey) {
  QuillmarConfig config;
  config.categories.emplace_back();
  EXPECT_NE(encodeDocument(config).find("\n      \"items\" : [\n\n      ],\n"), std::string::npos);
}

TEST(DocumentEncoder, WritesEqualValuesAsIdenticalBytes) {
  const QuillmarConfig copy = dailyTools();
  EXPECT_EQ(encodeDocument(copy), encodeDocument(dailyTools()));
}

TEST(DocumentEncoder, WritesOptionalsThatArePresentAndEmpty) {
  QuillmarConfig config;
  config.description = "";
  EXPECT_NE(encodeDocument(config).find("\n  \"description\" : \"\",\n"), std::string::npos);
}

TEST(DocumentEncoder, WritesTheLargestAndSmallestNumbers) {
  QuillmarConfig config;
  config.version = std::numeric_limits<std::int64_t>::min();
  MenuCategory& category = config.categories.emplace_back();
  category.sortOrder = std::numeric_limits<std::int64_t>::max();
  category.items.emplace_back().shortcut = KeyboardShortcut{
      .keyCode = 65535, .character = "", .modifiers = std::numeric_limits<std::uint64_t>::max()};

  const std::string text = encodeDocument(config);
  EXPECT_NE(text.find("\"version\" : -9223372036854775808\n"), std::string::npos);
  EXPECT_NE(text.find("\"sortOrder\" : 9223372036854775807\n"), std::string::npos);
  EXPECT_NE(text.find("\"keyCode\" : 65535,\n"), std::string::npos);
  EXPECT_NE(text.find("\"modifiers\" : 18446744073709551615\n"), std::string::npos);
  EXPECT_EQ(decodeDocument(text).value(), config);
}

TEST(DocumentEncoder, EscapesQuotesBackslashesSlashesAndControlCharacters) {
  EXPECT_EQ(encodedName("\"\\/"), R"(\"\\\/)");
  EXPECT_EQ(encodedName("\b\f\n\r\t"), R"(\b\f\n\r\t)");
  EXPECT_EQ(encodedName(std::string("\0\x01\x0b\x1f", 4)), R"(\u0000\u0001\u000b\u001f)");
}

TEST(DocumentEncoder, LeavesEverythingElseAsItIs) {
  EXPECT_EQ(encodedName(" !\x7f'<>&é\u2028👩‍💻\u0085"),
            " !\x7f'<>&é\u2028👩‍💻\u0085");
}

TEST(DocumentEncoder, EscapesWhereverACharacterStandsInAStringOfAnyLength) {
  // Every byte below U+0080, with every number of plain characters of each width around it.
  for (int byte = 0; byte < 0x80; ++byte) {
    const char c = static_cast<char>(byte);
    for (std::size_t before = 0; before < 17; ++before) {
      std::string name;
      for (std::size_t i = 0; i < before; ++i) name += i % 3 == 0 ? "ü" : "0";
      name += c;
      name.append(17 - before, '.');
      name += c;
      ASSERT_EQ(decodeDocument(encodeDocument(documentNamed(name))).value().name, name);

      const bool isPlain = byte >= 0x20 && c != '"' && c != '\\' && c != '/';
      ASSERT_EQ(encodedName(name) == name, isPlain) << byte << " after " << before;
    }
  }
}

TEST(DocumentEncoder, WritesLongStringsOfWhichEveryByteIsEscaped) {
  const std::string slashes(1'000'000, '/');
  std::string escaped;
  for (std::size_t i = 0; i < slashes.size(); ++i) escaped += "\\/";
  EXPECT_EQ(encodedName(slashes), escaped);
  EXPECT_EQ(encodedName(std::string(100'000, '\x01')).size(), 600'000u);
}

}  // namespace
}  // namespace quillmar
