#include "platform/bundle_information.h"

#include <fstream>
#include <optional>
#include <sstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_bundle.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

TEST(BundleInformationTest, HoldsTheStringsByTheirKeys) {
  EXPECT_THAT(parseBundleInformation(R"({"SUFeedURL": "https://a.example/", "empty": ""})"),
              ElementsAre(Pair("SUFeedURL", "https://a.example/"), Pair("empty", "")));
}

TEST(BundleInformationTest, WhatIsNoStringIsLeftOut) {
  EXPECT_THAT(
      parseBundleInformation(
          R"({"a": 1, "b": null, "c": true, "d": ["x"], "e": {"f": "x"}, "g": "kept", "h": 1.5})"),
      ElementsAre(Pair("g", "kept")));
}

TEST(BundleInformationTest, OfAKeyThatStandsTwiceTheLastCounts) {
  EXPECT_THAT(parseBundleInformation(R"({"a": "first", "a": "last"})"),
              ElementsAre(Pair("a", "last")));
}

TEST(BundleInformationTest, WhatIsNotOneObjectGivesNothing) {
  for (const char* json : {"", " ", "{", R"({"a": "b")", R"({"a": "b"} {})", R"(["a"])", R"("a")",
                           "null", "{\"a\": \"\xff\"}", "no JSON"}) {
    EXPECT_THAT(parseBundleInformation(json), IsEmpty()) << json;
  }
}

TEST(BundleInformationTest, TheStringsOfABuildArriveAsTheyWereSet) {
  const std::ifstream file(QUILLMAR_AWKWARD_INFORMATION);
  std::ostringstream json;
  json << file.rdbuf();
  EXPECT_THAT(parseBundleInformation(json.str()),
              ElementsAre(Pair("lines", "one\ntwo\tthree"), Pair("list", "a;b;;[c"),
                          Pair("quoted", R"(say "x" \ or \n\)"),
                          Pair("variables", "${PROJECT_NAME} @PROJECT_NAME@ $ENV{HOME}"),
                          Pair("words", "Straße ©")));
}

TEST(BundleInformationTest, ABundleTellsWhatItsDictionaryHolds) {
  MemoryBundle bundle;
  bundle.information = {{"CFBundleShortVersionString", "1.2"}};
  EXPECT_EQ(bundle.informationString(information_key::version), "1.2");
  EXPECT_EQ(bundle.informationString(information_key::copyright), std::nullopt);
}

}  // namespace
}  // namespace quillmar
