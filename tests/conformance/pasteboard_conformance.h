// What every Pasteboard does. A backend is a default-constructible type with
//   Pasteboard& pasteboard();
//   std::optional<std::string> paste();   // what another program gets; nothing without a text

#pragma once

#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "platform/pasteboard.h"

namespace quillmar {

template <class Backend>
class PasteboardConformance : public testing::Test {
 protected:
  Pasteboard& pasteboard() { return backend_.pasteboard(); }
  std::optional<std::string> paste() { return backend_.paste(); }

 private:
  Backend backend_;
};

TYPED_TEST_SUITE_P(PasteboardConformance);

TYPED_TEST_P(PasteboardConformance, HoldsNothingBeforeTheFirstText) {
  EXPECT_EQ(this->paste(), std::nullopt);
}

TYPED_TEST_P(PasteboardConformance, GivesOutItsText) {
  this->pasteboard().setString("ready");
  EXPECT_EQ(this->paste(), "ready");
}

TYPED_TEST_P(PasteboardConformance, CanBePastedSeveralTimes) {
  this->pasteboard().setString("again");
  EXPECT_EQ(this->paste(), "again");
  EXPECT_EQ(this->paste(), "again");
  EXPECT_EQ(this->paste(), "again");
}

TYPED_TEST_P(PasteboardConformance, HoldsTheLastText) {
  this->pasteboard().setString("first");
  this->pasteboard().setString("second");
  EXPECT_EQ(this->paste(), "second");
  this->pasteboard().setString("third");
  EXPECT_EQ(this->paste(), "third");
}

TYPED_TEST_P(PasteboardConformance, KeepsEveryCharacter) {
  const std::string text = " \tnaïve “Grüße” 日本語 🧭\n\nlast line\n";
  this->pasteboard().setString(text);
  EXPECT_EQ(this->paste(), text);
}

TYPED_TEST_P(PasteboardConformance, HoldsMegabytes) {
  std::string text;
  for (int line = 0; text.size() < 5'000'000; ++line) text += std::to_string(line) + " ü\n";
  this->pasteboard().setString(text);
  // Not EXPECT_EQ, which would print both.
  EXPECT_TRUE(this->paste() == text);
}

REGISTER_TYPED_TEST_SUITE_P(PasteboardConformance, HoldsNothingBeforeTheFirstText, GivesOutItsText,
                            CanBePastedSeveralTimes, HoldsTheLastText, KeepsEveryCharacter,
                            HoldsMegabytes);

}  // namespace quillmar
