#include "import/url.h"

#include <optional>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Url, HasItsPartsWithCodesDecoded) {
  const auto url = parseUrl("HTTPS://user@B%C3%BCcher.example:8443/a%20b/c?x=1&y=%26#part");
  ASSERT_TRUE(url);
  EXPECT_EQ(url->scheme, "https");
  EXPECT_EQ(url->host, "Bücher.example");
  EXPECT_EQ(url->path, "/a b/c");
  EXPECT_THAT(url->queryItems, ElementsAre(Url::QueryItem{"x", "1"}, Url::QueryItem{"y", "&"}));
  EXPECT_EQ(url->absoluteString, "HTTPS://user@B%C3%BCcher.example:8443/a%20b/c?x=1&y=%26#part");
}

TEST(Url, QueryItemsKeepTheirOrderAndTheirPlusSigns) {
  const auto url = parseUrl("a:?b=1+2&a&a=&b=%2B=x");
  ASSERT_TRUE(url);
  EXPECT_THAT(url->queryItems,
              ElementsAre(Url::QueryItem{"b", "1+2"}, Url::QueryItem{"a", std::nullopt},
                          Url::QueryItem{"a", ""}, Url::QueryItem{"b", "+=x"}));
}

TEST(Url, MissingPartsAreAbsent) {
  for (const char* const text : {"file:///p", "a:b", "a:", "p/q", ""}) {
    const auto url = parseUrl(text);
    ASSERT_TRUE(url) << text;
    EXPECT_EQ(url->host, std::nullopt) << text;
    EXPECT_THAT(url->queryItems, IsEmpty()) << text;
  }
  EXPECT_EQ(parseUrl("p/q")->scheme, "");
  EXPECT_EQ(parseUrl("p/q")->path, "p/q");
}

TEST(Url, BytesThatNoUrlMayContainAreEncoded) {
  const std::string odd = "a:?q=é \"<>\\^`{|}\n\x7f\xff 100% %4 %zz [x]";
  const auto url = parseUrl(odd);
  ASSERT_TRUE(url);
  EXPECT_EQ(url->queryItems.at(0).value, odd.substr(5));
  EXPECT_EQ(url->absoluteString,
            "a:?q=%C3%A9%20%22%3C%3E%5C%5E%60%7B%7C%7D%0A%7F%FF%20100%25%20%254%20%25zz%20%5Bx%5D");
}

TEST(Url, APercentSignAtTheEndIsEncoded) {
  EXPECT_EQ(parseUrl("a:?%")->absoluteString, "a:?%25");
  // The byte behind the text would complete a code.
  EXPECT_EQ(parseUrl(std::string_view("a:?%41", 5))->absoluteString, "a:?%254");
}

TEST(Url, TheAddressOfAHostMayBeInBrackets) {
  EXPECT_EQ(parseUrl("https://[::1]:80/p")->host, "::1");
}

TEST(Url, OtherTextsAreNoUrls) {
  for (const char* const text : {"https://[::1", "https://a:b/", ":", "1a://b", "a://b c:x"}) {
    EXPECT_FALSE(parseUrl(text)) << text;
  }
}

TEST(Url, AZeroByteIsNotAccepted) {
  EXPECT_FALSE(parseUrl(std::string_view("a://b\0c", 7)));
}

TEST(Url, TheCodeOfAZeroByteIsDecodedLikeOthers) {
  const auto url = parseUrl("a://b/c%00d?e%00f=g%00h");
  ASSERT_TRUE(url);
  EXPECT_EQ(url->path, std::string("/c\0d", 4));
  EXPECT_THAT(url->queryItems,
              ElementsAre(Url::QueryItem{std::string("e\0f", 3), std::string("g\0h", 3)}));
}

TEST(Url, RejectsUrlsLongerThanTheLimit) {
  for (const std::string character : {"a", "/", "&", "é", "=", "%20", ":", "."}) {
    std::string longest = "a:?";
    while (longest.size() + character.size() <= maximumUrlLength) longest += character;
    EXPECT_TRUE(parseUrl(longest)) << character;
  }
  EXPECT_FALSE(parseUrl("a:" + std::string(maximumUrlLength - 1, 'b')));
  EXPECT_EQ(parseUrl("a:" + std::string(maximumUrlLength - 2, 'b'))->path.size(),
            maximumUrlLength - 2);
}

TEST(Url, ALocalFileIsAPathOrAFileUrl) {
  EXPECT_EQ(localFilePath("/a/100%25 #1?.json"), "/a/100%25 #1?.json");
  EXPECT_EQ(localFilePath("file:///a/b%20c%25/%C3%A9.json"), "/a/b c%/é.json");
  EXPECT_EQ(localFilePath("file:///a/é.json"), "/a/é.json");
  EXPECT_EQ(localFilePath("FILE:/a.json"), "/a.json");
  EXPECT_EQ(localFilePath("file://localhost/a.json"), "/a.json");
  EXPECT_EQ(localFilePath("file://LOCALHOST/a.json"), "/a.json");
  for (const char* const text :
       {"file:a.json", "file:", "file://elsewhere/a.json", "file:///a%00.json", "file://[/a.json",
        "a.json", "quillmar://import", "https://a/b", ""}) {
    EXPECT_EQ(localFilePath(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace quillmar
