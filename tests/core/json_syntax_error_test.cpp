#include "config/json_syntax_error.h"

#include <optional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "config/document_decoder.h"

namespace quillmar {
namespace {

/// The text that a decode fails with, which is the scanner's when it finds the place.
std::string errorOf(const std::string& json) {
  const Result<QuillmarConfig> result = decodeDocument(json);
  EXPECT_FALSE(result.ok()) << json;
  const std::optional<Error> syntaxError = findJsonSyntaxError(json);
  EXPECT_TRUE(syntaxError.has_value()) << json;
  if (result.ok() || !syntaxError) return "";
  EXPECT_EQ(result.error(), *syntaxError);
  return syntaxError->description;
}

std::string errorInArray(std::string_view value) {
  return errorOf(std::string("[").append(value).append("]"));
}

TEST(JsonSyntaxError, IsAbsentInEveryKindOfValue) {
  for (const char* json :
       {"{}", "[]", " [ ] ", "\t{\r\n}\n", "null", "true", "false", "\"\"", "0", "-0", "12.5e-3",
        "1E+9", "0e999", "1e-999", "18446744073709551615", "-9223372036854775808",
        "123456789012345678901.0", R"({"a":{"b":[1,{"c":null}]},"a":""})",
        R"(["\"\\\/\b\f\n\r\t\u0000\ud83d\ude00 é€😀 /)"
        "\x7f\"]"}) {
    EXPECT_EQ(findJsonSyntaxError(json), std::nullopt) << json;
  }
}

TEST(JsonSyntaxError, TellsWhatIsMissing) {
  EXPECT_EQ(errorOf("{"),
            "Line 1, column 2: expected a key in double quotes or \"}\", found the end of the "
            "document.");
  EXPECT_EQ(errorOf("{\n\"a\" 1}"),
            "Line 2, column 5: expected a colon after the key, found \"1\".");
  EXPECT_EQ(errorOf("{\"a\":}"), "Line 1, column 6: expected a value, found \"}\".");
  EXPECT_EQ(errorOf("{\"a\":1"),
            "Line 1, column 7: expected a comma or \"}\", found the end of the document.");
  EXPECT_EQ(errorOf("{\"a\":1 \"b\":2}"),
            "Line 1, column 8: expected a comma or \"}\", found a double quote.");
  EXPECT_EQ(errorOf("[1\n 2]"), "Line 2, column 2: expected a comma or \"]\", found \"2\".");
  EXPECT_EQ(errorOf("[1"),
            "Line 1, column 3: expected a comma or \"]\", found the end of the document.");
  EXPECT_EQ(errorOf("\n["), "Line 2, column 2: expected a value, found the end of the document.");
}

TEST(JsonSyntaxError, ReportsUnexpectedText) {
  EXPECT_EQ(errorOf("[1,]"), "Line 1, column 4: expected a value, found \"]\".");
  EXPECT_EQ(errorOf("{\"a\":1,}"),
            "Line 1, column 8: expected a key in double quotes, found \"}\".");
  EXPECT_EQ(errorOf("{} x"), "Line 1, column 4: expected the end of the document, found \"x\".");
  EXPECT_EQ(errorOf("{}}"), "Line 1, column 3: expected the end of the document, found \"}\".");
  EXPECT_EQ(errorOf(std::string("{}\0", 3)),
            "Line 1, column 3: expected the end of the document, found \"\\u0000\".");
  EXPECT_EQ(errorOf("[}"), "Line 1, column 2: expected a value, found \"}\".");
  EXPECT_EQ(errorOf("{]"),
            "Line 1, column 2: expected a key in double quotes or \"}\", found \"]\".");
}

TEST(JsonSyntaxError, RejectsNonJsonNotations) {
  EXPECT_EQ(errorOf("// note\n{}"), "Line 1, column 1: expected a value, found \"/\".");
  EXPECT_EQ(errorOf("{a:1}"),
            "Line 1, column 2: expected a key in double quotes or \"}\", found \"a\".");
  EXPECT_EQ(errorOf("{'a':1}"),
            "Line 1, column 2: expected a key in double quotes or \"}\", found \"'\".");
  EXPECT_EQ(errorOf("[True]"), "Line 1, column 2: expected a value, found \"True\".");
  EXPECT_EQ(errorOf("[NaN]"), "Line 1, column 2: expected a value, found \"NaN\".");
  EXPECT_EQ(errorOf("[truely]"), "Line 1, column 2: expected a value, found \"truely\".");
  EXPECT_EQ(errorOf("[“a”]"), "Line 1, column 2: expected a value, found \"“\".");
  EXPECT_EQ(errorOf("\xEF\xBB\xBF{}"),
            "Line 1, column 1: expected a value, found a byte-order mark.");
}

TEST(JsonSyntaxError, RejectsMalformedNumbers) {
  for (const char* number :
       {"01", "-", "-a", "1.", "1.e5", "1e", "1e+", "0x1F", "1_000", "--1", "1.2.3", "00", "-01"}) {
    EXPECT_EQ(errorInArray(number), "Line 1, column 2: expected a valid JSON number, found \"" +
                                        std::string(number) + "\".");
  }
  EXPECT_EQ(errorOf("[+1]"), "Line 1, column 2: expected a value, found \"+1\".");
  EXPECT_EQ(errorOf("[.5]"), "Line 1, column 2: expected a value, found \".5\".");
}

TEST(JsonSyntaxError, NumbersThatTheParserRefusesAreNoErrorAndAreHandedOut) {
  std::string handed;
  EXPECT_EQ(findJsonSyntaxError("[1e999, 12, {\"1e999\":-9223372036854775809}, 1e9, "
                                "123456789012345678901.0, 18446744073709551616]",
                                [&](std::string_view number) { handed.append(number) += ' '; }),
            std::nullopt);
  EXPECT_EQ(handed, "1e999 -9223372036854775809 18446744073709551616 ");
}

TEST(JsonSyntaxError, TellsWhatIsWrongInAString) {
  EXPECT_EQ(errorOf("[\n \"abc]"),
            "Line 2, column 7: expected a double quote to end the string that starts at line 2, "
            "column 2, found the end of the document.");
  EXPECT_EQ(
      errorOf("[\"a\nb\"]"),
      "Line 1, column 4: expected a control character in a string to be written as \\n, found "
      "the raw character.");
  EXPECT_EQ(errorOf(std::string("[\"\0\"]", 5)),
            "Line 1, column 3: expected a control character in a string to be written as \\u0000, "
            "found the raw character.");
  EXPECT_EQ(errorOf(R"(["\q"])"),
            "Line 1, column 4: expected one of the characters \" \\ / b f n r t u after the "
            "backslash, found \"q\".");
  EXPECT_EQ(errorOf("[\"\\"),
            "Line 1, column 4: expected one of the characters \" \\ / b f n r t u after the "
            "backslash, found the end of the document.");
  EXPECT_EQ(errorOf(R"(["\u12g4"])"),
            "Line 1, column 5: expected four hexadecimal digits after \"\\u\", found \"12g4\".");
  EXPECT_EQ(errorOf(R"(["\u12"])"),
            "Line 1, column 5: expected four hexadecimal digits after \"\\u\", found \"12\".");
}

TEST(JsonSyntaxError, TellsWhichSurrogateIsAlone) {
  EXPECT_EQ(errorOf(R"(["é\udc00"])"),
            "Line 1, column 4: expected the first half of a surrogate pair before the second one, "
            "found \"\\udc00\".");
  EXPECT_EQ(errorOf(R"(["\ud800x"])"),
            "Line 1, column 9: expected the second half of a surrogate pair, \"\\udc00\" to "
            "\"\\udfff\", found \"x\".");
  EXPECT_EQ(errorOf(R"(["\ud800\u0041"])"),
            "Line 1, column 9: expected the second half of a surrogate pair, \"\\udc00\" to "
            "\"\\udfff\", found \"\\\".");
}

TEST(JsonSyntaxError, TellsWhichByteIsNotUtf8) {
  EXPECT_EQ(errorOf("[\"a\xFF\"]"), "Line 1, column 4: expected UTF-8, found the byte 0xFF.");
  EXPECT_EQ(errorOf("[\"\xC0\x80\"]"), "Line 1, column 3: expected UTF-8, found the byte 0xC0.");
  EXPECT_EQ(errorOf("[\"\xED\xA0\x80\"]"),
            "Line 1, column 3: expected UTF-8, found the byte 0xED.");
  EXPECT_EQ(errorOf("[\"\xE2\x82"), "Line 1, column 3: expected UTF-8, found the byte 0xE2.");
  EXPECT_EQ(errorOf("{} \x80"),
            "Line 1, column 4: expected the end of the document, found the byte 0x80.");
}

TEST(JsonSyntaxError, CountsColumnsInCharactersAndLinesByLineFeeds) {
  EXPECT_EQ(errorOf("[\"é€😀\", x]"), "Line 1, column 9: expected a value, found \"x\".");
  EXPECT_EQ(errorOf("[\r\n\"é\",\r\n\tx]"), "Line 3, column 2: expected a value, found \"x\".");
}

}  // namespace
}  // namespace quillmar
