#include "config/document_decoder.h"

#include <cstdint>
#include <limits>
#include <regex>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config/quillmar_config.h"

namespace quillmar {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

QuillmarConfig decoded(const std::string& json) {
  Result<QuillmarConfig> result = decodeDocument(json);
  EXPECT_TRUE(result.ok()) << json << ": " << result.error().description;
  return result.ok() ? std::move(result).value() : QuillmarConfig{};
}

/// The error's text; empty when there is none.
std::string errorOf(const std::string& json) {
  const Result<QuillmarConfig> result = decodeDocument(json);
  return result.ok() ? "" : result.error().description;
}

std::string withItem(const std::string& members) {
  return R"({"categories":[{"items":[{)" + members + "}]}]}";
}

MenuItem decodedItem(const std::string& members) {
  return decoded(withItem(members)).categories.at(0).items.at(0);
}

std::string errorOfItem(const std::string& members) {
  return errorOf(withItem(members));
}

bool isUuid(const std::string& id) {
  return std::regex_match(
      id, std::regex("[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}"));
}

std::string nested(std::size_t depth, const std::string& innermost) {
  return std::string(depth, '[') + innermost + std::string(depth, ']');
}

TEST(DocumentDecoder, AnEmptyObjectHasEveryDefault) {
  const QuillmarConfig config = decoded("{}");
  EXPECT_EQ(config.version, 1);
  EXPECT_EQ(config.name, std::nullopt);
  EXPECT_EQ(config.description, std::nullopt);
  EXPECT_TRUE(config.categories.empty());
  EXPECT_EQ(config.preferences, Preferences{});
}

TEST(DocumentDecoder, AFolderAndAnItemWithoutKeysHaveEveryDefault) {
  const QuillmarConfig config = decoded(R"({"categories":[{"items":[{}]}]})");
  ASSERT_EQ(config.categories.size(), 1u);
  ASSERT_EQ(config.categories[0].items.size(), 1u);

  MenuCategory category = config.categories[0];
  EXPECT_TRUE(isUuid(category.id)) << category.id;
  MenuItem item = category.items[0];
  EXPECT_TRUE(isUuid(item.id)) << item.id;
  EXPECT_NE(item.id, category.id);

  category.id = "";
  category.items.clear();
  EXPECT_EQ(category, MenuCategory{});
  EXPECT_FALSE(category.showAtTopLevel);
  EXPECT_FALSE(category.isSeparator);
  EXPECT_EQ(category.sortOrder, 0);

  item.id = "";
  EXPECT_EQ(item, MenuItem{});
  EXPECT_TRUE(item.isEnabled);
  EXPECT_FALSE(item.isSeparator);
  EXPECT_EQ(item.command, (MenuCommand{.type = CommandType::shellCommand,
                                       .value = "",
                                       .runInBackground = true,
                                       .showNotification = false,
                                       .copyToClipboard = false,
                                       .openInTerminal = false}));
}

TEST(DocumentDecoder, EmptyPreferencesHaveEveryDefault) {
  const Preferences preferences = decoded(R"({"preferences":{}})").preferences;
  EXPECT_FALSE(preferences.flattenSingleFolder);
  EXPECT_TRUE(preferences.notifyOnFailure);
  EXPECT_TRUE(preferences.useLoginShell);
}

TEST(DocumentDecoder, AShortcutWithoutAKeyCodeFailsTheWholeDocument) {
  EXPECT_EQ(errorOfItem(R"("shortcut":{"character":"a"})"),
            "categories[0].items[0].shortcut.keyCode (line 1, column 38): expected an integer from "
            "0 to 65535, found nothing.");
  EXPECT_THAT(errorOfItem(R"("shortcut":{"keyCode":null})"), HasSubstr("found nothing."));
}

TEST(DocumentDecoder, AShortcutWithOnlyAKeyCodeHasEveryOtherDefault) {
  EXPECT_EQ(decodedItem(R"("shortcut":{"keyCode":2})").shortcut,
            (KeyboardShortcut{.keyCode = 2, .character = "", .modifiers = 0, .isGlobal = true}));
}

TEST(DocumentDecoder, ACommandTypeIsItsRawValueExactly) {
  const auto typeOf = [](const std::string& text) {
    return decodedItem(R"("command":{"type" : ")" + text + "\"}").command.type;
  };
  EXPECT_EQ(typeOf("Shell Command"), CommandType::shellCommand);
  EXPECT_EQ(typeOf("Script File"), CommandType::scriptFile);
  EXPECT_EQ(typeOf("AppleScript"), CommandType::appleScript);

  EXPECT_EQ(errorOfItem(R"("command":{"type" : "shellCommand"})"),
            "categories[0].items[0].command.type (line 1, column 47): expected \"Shell Command\", "
            "\"Script File\" or \"AppleScript\", found the string \"shellCommand\".");
  EXPECT_NE(errorOfItem(R"("command":{"type":"shell command"})"), "");
  EXPECT_NE(errorOfItem(R"("command":{"type":""})"), "");
  EXPECT_NE(errorOfItem(R"("command":{"type":0})"), "");
}

TEST(DocumentDecoder, ReadsEveryField) {
  const QuillmarConfig config = decoded(R"({
    "version": 7, "name": "N", "description": "D",
    "preferences": {"flattenSingleFolder": true, "notifyOnFailure": false, "useLoginShell": false},
    "categories": [{
      "id": "c", "name": "Folder", "sortOrder": -4, "iconSymbolName": "star",
      "showAtTopLevel": true, "isSeparator": true,
      "items": [{
        "id": "i", "title": "Item", "isEnabled": false, "iconSymbolName": "gear",
        "confirmBeforeRunning": true, "isSeparator": true, "inputPrompt": "Who?",
        "command": {"type": "AppleScript", "value": "beep", "runInBackground": false,
                    "showNotification": true, "copyToClipboard": true, "openInTerminal": true},
        "shortcut": {"keyCode": 65535, "character": "ü", "modifiers": 1048576, "isGlobal": false}
      }]
    }]
  })");

  QuillmarConfig expected;
  expected.version = 7;
  expected.name = "N";
  expected.description = "D";
  expected.preferences = {
      .flattenSingleFolder = true, .notifyOnFailure = false, .useLoginShell = false};
  MenuCategory& category = expected.categories.emplace_back();
  category.id = "c";
  category.name = "Folder";
  category.sortOrder = -4;
  category.iconSymbolName = "star";
  category.showAtTopLevel = true;
  category.isSeparator = true;
  MenuItem& item = category.items.emplace_back();
  item.id = "i";
  item.title = "Item";
  item.isEnabled = false;
  item.iconSymbolName = "gear";
  item.confirmBeforeRunning = true;
  item.isSeparator = true;
  item.inputPrompt = "Who?";
  item.command = {.type = CommandType::appleScript,
                  .value = "beep",
                  .runInBackground = false,
                  .showNotification = true,
                  .copyToClipboard = true,
                  .openInTerminal = true};
  item.shortcut = {.keyCode = 65535, .character = "ü", .modifiers = 1048576, .isGlobal = false};
  EXPECT_EQ(config, expected);
}

TEST(DocumentDecoder, NullCountsAsMissingForEveryKey) {
  EXPECT_EQ(decoded(R"({"version":null,"name":null,"description":null,"categories":null,
                        "preferences":null})"),
            decoded("{}"));

  QuillmarConfig config = decoded(R"({"categories":[{"id":null,"name":null,"sortOrder":null,
      "iconSymbolName":null,"showAtTopLevel":null,"isSeparator":null,"items":[
        {"id":null,"title":null,"isEnabled":null,"command":null,"iconSymbolName":null,
         "shortcut":null,"confirmBeforeRunning":null,"isSeparator":null,"inputPrompt":null},
        {"command":{"type":null,"value":null,"runInBackground":null,"showNotification":null,
                    "copyToClipboard":null,"openInTerminal":null},
         "shortcut":{"keyCode":1,"character":null,"modifiers":null,"isGlobal":null}}]}]})");
  MenuCategory& category = config.categories.at(0);
  ASSERT_EQ(category.items.size(), 2u);
  for (MenuItem& item : category.items) {
    EXPECT_TRUE(isUuid(std::exchange(item.id, "")));
  }
  EXPECT_EQ(category.items[0], MenuItem{});
  EXPECT_EQ(category.items[1].command, MenuCommand{});
  EXPECT_EQ(category.items[1].shortcut, (KeyboardShortcut{.keyCode = 1, .character = ""}));
  EXPECT_TRUE(isUuid(std::exchange(category.id, "")));
  category.items.clear();
  EXPECT_EQ(category, MenuCategory{});
}

TEST(DocumentDecoder, NullIsNoFolderAndNoItem) {
  EXPECT_EQ(errorOf(R"({"categories":[null]})"),
            "categories[0] (line 1, column 16): expected an object, found null.");
  EXPECT_EQ(errorOf(R"({"categories":[{"items":[{},null]}]})"),
            "categories[0].items[1] (line 1, column 29): expected an object, found null.");
}

TEST(DocumentDecoder, OfDuplicateKeysTheLastWins) {
  EXPECT_EQ(decoded(R"({"version":3,"version":4})").version, 4);
  EXPECT_EQ(decoded(R"({"version":"x","version":4})").version, 4);
  EXPECT_EQ(decoded(R"({"name":"a","name":null})").name, std::nullopt);
  EXPECT_EQ(decoded(R"({"version":3,"version":null})").version, 1);
  EXPECT_EQ(decoded(R"({"vers\u0069on":3,"version":4,"v\u0065rsion":5})").version, 5);
  EXPECT_TRUE(decoded(R"({"categories":[{},{}],"categories":[]})").categories.empty());
  EXPECT_FALSE(decoded(R"({"preferences":{"flattenSingleFolder":true},"preferences":{}})")
                   .preferences.flattenSingleFolder);
  EXPECT_EQ(errorOf("{\"version\":4,\n\"version\":true}"),
            "version (line 2, column 11): expected an integer from -9223372036854775808 to "
            "9223372036854775807, found true.");
}

TEST(DocumentDecoder, TakesAPresentIdAsItStands) {
  EXPECT_EQ(decodedItem(R"("id":"")").id, "");
  EXPECT_EQ(decodedItem(R"("id":"not | a uuid")").id, "not | a uuid");
  const QuillmarConfig config = decoded(R"({"categories":[{"id":"a"},{"id":"a"}]})");
  EXPECT_EQ(config.categories[0].id, config.categories[1].id);
}

TEST(DocumentDecoder, GivesNewIdsOnEachDecode) {
  const std::string json = R"({"categories":[{}]})";
  EXPECT_NE(decoded(json).categories[0].id, decoded(json).categories[0].id);
}

TEST(DocumentDecoder, MissingIdsComeFromTheGivenGenerator) {
  int made = 0;
  const Result<QuillmarConfig> result =
      decodeDocument(R"({"categories":[{"items":[{"id":"own"},{},{"id":null}]}]})",
                     [&] { return "new" + std::to_string(++made); });
  const MenuCategory& folder = result.value().categories[0];
  EXPECT_EQ(folder.id, "new1");
  EXPECT_EQ(folder.items[0].id, "own");
  EXPECT_EQ(folder.items[1].id, "new2");
  EXPECT_EQ(folder.items[2].id, "new3");
}

TEST(DocumentDecoder, KeepsTheFoldersInTheOrderOfTheDocument) {
  const QuillmarConfig config =
      decoded(R"({"categories":[{"name":"b","sortOrder":2},{"name":"a","sortOrder":1}]})");
  EXPECT_EQ(config.categories[0].name, "b");
  EXPECT_EQ(config.categories[1].name, "a");
}

TEST(DocumentDecoder, IgnoresUnknownKeysAnywhere) {
  EXPECT_EQ(decoded(R"({"x":1,"Version":3,"VERSION":[],"version ":{},"is_enabled":0,"":null})"),
            decoded("{}"));
  EXPECT_EQ(
      decodedItem(R"("title":"t","name":5,"IsEnabled":"no","command":{"Value":1,"value":"v"})")
          .command.value,
      "v");
}

TEST(DocumentDecoder, NumbersAreIntegersThatFit) {
  const auto sortOrder = [](const std::string& number) {
    return decoded(R"({"categories":[{"sortOrder":)" + number + "}]}").categories.at(0).sortOrder;
  };
  EXPECT_EQ(sortOrder("-0"), 0);
  EXPECT_EQ(sortOrder("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(sortOrder("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(decodedItem(R"("shortcut":{"keyCode":0,"modifiers":18446744073709551615})")
                .shortcut->modifiers,
            std::numeric_limits<std::uint64_t>::max());

  for (const char* number : {"1.0", "1e2", "0.5", "-0.0", "9223372036854775808", "\"1\"", "[1]",
                             "true", "1E0", "1e-400"}) {
    EXPECT_THAT(errorOf(R"({"version":)" + std::string(number) + "}"),
                StartsWith("version (line 1, column 12): expected an integer from "))
        << number;
  }
  for (const char* number : {"-1", "65536", "1.0", "18446744073709551615"}) {
    EXPECT_EQ(errorOfItem(R"("shortcut":{"keyCode":)" + std::string(number) + "}"),
              "categories[0].items[0].shortcut.keyCode (line 1, column 49): expected an integer "
              "from 0 to 65535, found the number " +
                  std::string(number) + ".");
  }
  EXPECT_THAT(errorOfItem(R"("shortcut":{"keyCode":1,"modifiers":-1})"),
              HasSubstr("from 0 to 18446744073709551615, found the number -1."));
}

TEST(DocumentDecoder, ANumberOfAnySizeUnderAnUnknownKeyIsIgnored) {
  for (const std::string& number :
       {std::string("1e999"), std::string("-1E+999"), std::string("18446744073709551616"),
        std::string(1000, '9'), "0." + std::string(1000, '1') + "e9999"}) {
    EXPECT_EQ(decoded(R"({"name":"a","x":)" + number + R"(,"version":7})"),
              decoded(R"({"name":"a","version":7})"));
    EXPECT_EQ(decodedItem(R"("title":"t","x":[1,{"y":)" + number + "}]").title, "t");
    EXPECT_EQ(decoded("{\"x\":" + nested(1023, number) + ",\"name\":\"deep\"}").name, "deep");
  }
  EXPECT_EQ(decoded(R"({"x":1e999,"name":"1e999"})").name, "1e999");
}

TEST(DocumentDecoder, ANumberThatIsTooLargeForAKnownKeyIsReportedWithPathAndRange) {
  EXPECT_EQ(errorOf("{\"x\":1e999,\n \"version\":99999999999999999999,\"y\":-1e999}"),
            "version (line 2, column 12): expected an integer from -9223372036854775808 to "
            "9223372036854775807, found the number 99999999999999999999.");
  EXPECT_EQ(errorOfItem(R"("shortcut":{"keyCode":1e999})"),
            "categories[0].items[0].shortcut.keyCode (line 1, column 49): expected an integer from "
            "0 to 65535, found the number 1e999.");
  EXPECT_EQ(errorOf(R"({"name":)" + std::string(1'000'000, '9') + "}"),
            "name (line 1, column 9): expected a string, found the number " + std::string(40, '9') +
                "….");
  EXPECT_EQ(errorOf("1e999"),
            "The document (line 1, column 1): expected an object, found the number 1e999.");
}

TEST(DocumentDecoder, AValueOfAnotherTypeIsAnErrorThatNamesItsPlace) {
  EXPECT_EQ(
      errorOf("{\"categories\" : [\n  {\"items\" : [{}, {}, {\n    \"isEnabled\" : \"yes\"}]}]}"),
      "categories[0].items[2].isEnabled (line 3, column 19): expected true or false, found "
      "the string \"yes\".");
  EXPECT_EQ(errorOf(R"({"name":[]})"),
            "name (line 1, column 9): expected a string, found an array.");
  EXPECT_EQ(errorOf(R"({"description":{"a":1}})"),
            "description (line 1, column 16): expected a string, found an object.");
  EXPECT_EQ(errorOf(R"({"categories":{}})"),
            "categories (line 1, column 15): expected an array, found an object.");
  EXPECT_EQ(errorOf(R"({"preferences":false})"),
            "preferences (line 1, column 16): expected an object, found false.");
  EXPECT_EQ(errorOf(R"({"preferences":{"useLoginShell":1}})"),
            "preferences.useLoginShell (line 1, column 33): expected true or false, found the "
            "number 1.");
  EXPECT_EQ(errorOf(R"({"categories":[{},{},{},{"items":[{"shortcut":3}]}]})"),
            "categories[3].items[0].shortcut (line 1, column 47): expected an object, found the "
            "number 3.");
}

TEST(DocumentDecoder, FindsThePlaceOfAValueBehindStringsThatLookLikeStructure) {
  EXPECT_EQ(errorOf(R"({ "é\"]}" : "\\", "x\\" : ["}", {"a":[{}, 2 ]}] , "name" : 1.50e1 })"),
            "name (line 1, column 60): expected a string, found the number 1.50e1.");
}

TEST(DocumentDecoder, TheDocumentItselfIsAnObject) {
  EXPECT_EQ(errorOf("[]"), "The document (line 1, column 1): expected an object, found an array.");
  EXPECT_EQ(errorOf("\n \"\""),
            "The document (line 2, column 2): expected an object, found the string \"\".");
  EXPECT_EQ(errorOf("12"),
            "The document (line 1, column 1): expected an object, found the number 12.");
  EXPECT_EQ(errorOf("null"), "The document (line 1, column 1): expected an object, found null.");
}

TEST(DocumentDecoder, ErrorsShowNoMoreThanTheBeginningOfAValue) {
  const std::string start = "0123456789é123456789012345678901234567ü9";
  EXPECT_THAT(errorOf(R"({"version":")" + start + "\"}"),
              EndsWith(", found the string \"" + start + "\"."));
  EXPECT_THAT(errorOf(R"({"version":")" + start + std::string(3'000'000, 'x') + "\"}"),
              EndsWith(", found the string \"" + start + "…\"."));
  EXPECT_LT(errorOf(R"({"version":0.)" + std::string(3'000'000, '1') + "}").size(), 200u);
}

TEST(DocumentDecoder, ErrorsShowControlCharactersEscaped) {
  EXPECT_EQ(errorOf(R"({"preferences":"\u0000\u001b\n\t\u007f\u0085\u2028\u202Ea"})"),
            "preferences (line 1, column 16): expected an object, found the string "
            "\"\\u0000\\u001b\\n\\t\\u007f\\u0085\\u2028\\u202ea\".");
}

TEST(DocumentDecoder, StringsHoldAnyCharacter) {
  EXPECT_EQ(decoded(R"({"name":"\"\\\/\b\f\n\r\t\u00e9\u20AC\ud83d\ude00 é😀"})").name,
            "\"\\/\b\f\n\r\té€😀 é😀");
  EXPECT_EQ(decoded(R"({"name":"a\u0000b"})").name, std::string("a\0b", 3));
}

TEST(DocumentDecoder, ALoneSurrogateIsAnError) {
  for (const char* escape : {R"(\ud800)", R"(\udc00)", R"(\udfff\ud800)", R"(\ud800\ud800)",
                             R"(\ud800\u0041)", R"(\udbffx)", R"(\uDC00\uDC00)"}) {
    const std::string text(escape);
    EXPECT_THAT(errorOf(R"({"name":")" + text + "\"}"), HasSubstr("half of a surrogate pair"));
    EXPECT_THAT(errorOf(R"({"unknown":")" + text + " and more\"}"),
                HasSubstr("half of a surrogate pair"));
    EXPECT_THAT(errorOf("{\"" + text + "\":1}"), HasSubstr("half of a surrogate pair"));
  }
}

TEST(DocumentDecoder, AnEmptyTextIsNoDocument) {
  EXPECT_EQ(errorOf(""), "The document is empty.");
  EXPECT_EQ(errorOf(" \n\t"), "The document is empty.");
}

TEST(DocumentDecoder, NestingIsAllowedToADepthOf1024) {
  // The document and the array of its key are one level each.
  const auto document = [](std::size_t depth, const std::string& innermost) {
    return "{\"x\":" + nested(depth - 1, innermost) + "}";
  };
  EXPECT_EQ(errorOf(document(1023, "1")), "");
  EXPECT_EQ(errorOf(document(1024, "1")), "");
  EXPECT_EQ(errorOf(document(1024, "")), "");
  const std::string tooDeep =
      "Line 1, column 1029: expected at most 1,024 levels of nesting, found one more.";
  EXPECT_EQ(errorOf(document(1025, "")), tooDeep);
  EXPECT_EQ(errorOf(document(1025, "1")), tooDeep);
  EXPECT_EQ(errorOf(document(1025, "{}")), tooDeep);
}

TEST(DocumentDecoder, AMillionBracketsAreAnError) {
  const std::string tooDeep = "expected at most 1,024 levels of nesting, found one more.";
  EXPECT_THAT(errorOf(std::string(1'000'000, '[')), HasSubstr(tooDeep));
  EXPECT_THAT(errorOf(nested(1'000'000, "")), HasSubstr(tooDeep));
  std::string objects;
  for (int i = 0; i < 200'000; ++i) objects += "{\"a\":";
  EXPECT_THAT(errorOf(objects), HasSubstr(tooDeep));
}

TEST(DocumentDecoder, AMillionWrongFoldersAreOneError) {
  std::string json = R"({"categories":[1)";
  for (int i = 0; i < 1'000'000; ++i) json += ",1";
  EXPECT_EQ(errorOf(json + "]}"),
            "categories[0] (line 1, column 16): expected an object, found the number 1.");
}

TEST(DocumentDecoder, ReadsHugeStrings) {
  const std::string text(20'000'000, 'x');
  EXPECT_EQ(decoded(R"({"name":")" + text + "\"}").name, text);
}

TEST(DocumentDecoder, ReadsATextWithOrWithoutRoomBehindIt) {
  std::string json = R"({"name":"a"})";
  json.shrink_to_fit();
  EXPECT_EQ(decoded(json).name, "a");
  json.reserve(json.size() + 64);
  EXPECT_EQ(decoded(json).name, "a");
}

}  // namespace
}  // namespace quillmar
