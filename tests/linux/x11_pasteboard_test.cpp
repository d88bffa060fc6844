#include "platform/linux/pasteboard/x11_pasteboard.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/conformance/pasteboard_conformance.h"
#include "tests/linux/child_programs.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/x_requestor.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

std::string megabytes(std::size_t count) {
  std::string text;
  while (text.size() < count * 1'000'000) text += "line " + std::to_string(text.size()) + " é\n";
  return text;
}

CommandOutput pasteWithXclip(const std::string& display) {
  return runCommand({"xclip", "-selection", "clipboard", "-out", "-target", "UTF8_STRING"},
                    {"DISPLAY=" + display});
}

CommandOutput pasteWithXsel(const std::string& display) {
  return runCommand({"xsel", "--clipboard", "--output"}, {"DISPLAY=" + display});
}

class X11PasteboardBackend {
 public:
  Pasteboard& pasteboard() { return pasteboard_; }
  std::optional<std::string> paste() { return pasteWithXclip(server_.display()); }

 private:
  XServer server_;
  X11Pasteboard pasteboard_{server_.display(), [](std::string_view) {}};
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11, PasteboardConformance, X11PasteboardBackend);

class X11PasteboardTest : public testing::Test {
 protected:
  const std::string& display() const { return server_.display(); }

  XServer server_;
  std::vector<std::string> log_;
  std::optional<X11Pasteboard> pasteboard_{
      std::in_place, server_.display(), [this](std::string_view line) { log_.emplace_back(line); }};
};

TEST_F(X11PasteboardTest, SeveralProgramsPasteTheSameText) {
  pasteboard_->setString("shared – text");
  EXPECT_EQ(pasteWithXclip(display()), "shared – text");
  EXPECT_EQ(pasteWithXsel(display()), "shared – text");
  EXPECT_EQ(XRequestor(display()).paste("UTF8_STRING").bytes, "shared – text");
  EXPECT_THAT(log_, IsEmpty());
}

TEST_F(X11PasteboardTest, TargetsNameEveryForm) {
  XRequestor requestor(display());
  pasteboard_->setString("plain");
  const XAnswer answer = requestor.paste("TARGETS");
  EXPECT_EQ(answer.type, XCB_ATOM_ATOM);
  EXPECT_EQ(answer.format, 32);
  EXPECT_THAT(answer.atoms(),
              UnorderedElementsAre(requestor.atom("TARGETS"), requestor.atom("TIMESTAMP"),
                                   requestor.atom("MULTIPLE"), requestor.atom("SAVE_TARGETS"),
                                   requestor.atom("UTF8_STRING"),
                                   requestor.atom("text/plain;charset=utf-8"), XCB_ATOM_STRING,
                                   requestor.atom("TEXT"), requestor.atom("text/plain")));
}

TEST_F(X11PasteboardTest, EveryTextTargetGivesTheText) {
  XRequestor requestor(display());
  pasteboard_->setString("café");
  for (const char* target : {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain"}) {
    const XAnswer answer = requestor.paste(target);
    EXPECT_EQ(answer.bytes, "café") << target;
    EXPECT_EQ(answer.type, requestor.atom(target));
    EXPECT_EQ(answer.format, 8);
  }
}

TEST_F(X11PasteboardTest, LatinTextIsAlsoAString) {
  XRequestor requestor(display());
  pasteboard_->setString("café");
  EXPECT_EQ(requestor.paste("STRING").bytes, "caf\xE9");
  EXPECT_EQ(requestor.paste("TEXT").bytes, "caf\xE9");
  EXPECT_EQ(requestor.paste("TEXT").type, XCB_ATOM_STRING);
}

TEST_F(X11PasteboardTest, OtherTextIsNoString) {
  XRequestor requestor(display());
  pasteboard_->setString("Ā");
  EXPECT_EQ(requestor.paste("STRING").property, XCB_ATOM_NONE);
  EXPECT_EQ(requestor.paste("TEXT").bytes, "Ā");
  EXPECT_EQ(requestor.paste("TEXT").type, requestor.atom("UTF8_STRING"));
  const auto targets = requestor.paste("TARGETS").atoms();
  EXPECT_EQ(std::count(targets.begin(), targets.end(), XCB_ATOM_STRING), 0);
}

TEST_F(X11PasteboardTest, ATextTooLongToConvertQuicklyIsOfferedAsUtf8Only) {
  XRequestor requestor(display());
  pasteboard_->setString(std::string(SelectionContents::maximumLatin1Bytes, 'x'));
  EXPECT_EQ(requestor.paste("TEXT").type, XCB_ATOM_STRING);
  pasteboard_->setString(std::string(SelectionContents::maximumLatin1Bytes + 1, 'x'));
  EXPECT_EQ(requestor.paste("STRING").property, XCB_ATOM_NONE);
  EXPECT_EQ(requestor.paste("TEXT").type, requestor.atom("UTF8_STRING"));
}

TEST_F(X11PasteboardTest, UnknownTargetsAreRefused) {
  XRequestor requestor(display());
  pasteboard_->setString("text");
  EXPECT_EQ(requestor.paste("image/png").property, XCB_ATOM_NONE);
}

TEST_F(X11PasteboardTest, OwnsTheClipboardSinceATimeOfTheServer) {
  XRequestor requestor(display());
  pasteboard_->setString("text");
  const XAnswer answer = requestor.paste("TIMESTAMP");
  EXPECT_EQ(answer.type, XCB_ATOM_INTEGER);
  ASSERT_THAT(answer.atoms(), SizeIs(1));
  EXPECT_NE(answer.atoms()[0], XCB_CURRENT_TIME);
}

TEST_F(X11PasteboardTest, PropertyEventsThatItDidNotAskForDoNotStopTheClipboard) {
  XRequestor other(display());
  pasteboard_->setString("before");
  const xcb_window_t window = other.owner("CLIPBOARD");
  const xcb_atom_t property = other.atom("QUILLMAR_TIMESTAMP");
  xcb_change_property(other.xcb(), XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_INTEGER, 32, 0,
                      nullptr);
  // The reply to another request says that the server has processed this one.
  other.owner("CLIPBOARD");
  for (const std::string text : {"after", "and later"}) {
    pasteboard_->setString(text);
    EXPECT_EQ(pasteWithXclip(display()), text);
  }
}

TEST_F(X11PasteboardTest, RequestsFromBeforeTheOwnershipAreRefused) {
  XRequestor requestor(display());
  pasteboard_->setString("text");
  const xcb_timestamp_t since = requestor.paste("TIMESTAMP").atoms().at(0);
  EXPECT_EQ(requestor.paste("UTF8_STRING", since - 1).property, XCB_ATOM_NONE);
  EXPECT_EQ(requestor.paste("UTF8_STRING", since).bytes, "text");
}

TEST_F(X11PasteboardTest, AnObsoleteRequestorGetsThePropertyNamedLikeItsTarget) {
  XRequestor requestor(display());
  pasteboard_->setString("text");
  const xcb_atom_t target = requestor.atom("UTF8_STRING");
  requestor.request(target, XCB_ATOM_NONE);
  ASSERT_TRUE(runMainLoopUntil([&] { return requestor.answer(target).complete; }));
  EXPECT_EQ(requestor.answer(target).property, target);
  EXPECT_EQ(requestor.answer(target).bytes, "text");
}

TEST_F(X11PasteboardTest, OneRequestCanAskForSeveralTargets) {
  XRequestor requestor(display());
  pasteboard_->setString("naïve");
  const xcb_atom_t utf8 = requestor.atom("UTF8_STRING");
  const xcb_atom_t first = requestor.atom("FIRST");
  const xcb_atom_t second = requestor.atom("SECOND");
  const auto pairs = requestor.pasteMultiple(
      {utf8, first, requestor.atom("image/png"), requestor.atom("REFUSED"), XCB_ATOM_STRING, second,
       requestor.atom("MULTIPLE"), requestor.atom("NESTED")});
  EXPECT_THAT(pairs,
              ElementsAre(utf8, first, requestor.atom("image/png"), XCB_ATOM_NONE, XCB_ATOM_STRING,
                          second, requestor.atom("MULTIPLE"), XCB_ATOM_NONE));
  EXPECT_EQ(requestor.takeProperty(first).bytes, "naïve");
  EXPECT_EQ(requestor.takeProperty(second).bytes, "na\xEFve");
}

TEST_F(X11PasteboardTest, TwoProgramsTakeMegabytesAtOnce) {
  const std::string text = megabytes(5);
  XRequestor one(display());
  XRequestor other(display());
  pasteboard_->setString(text);
  const xcb_atom_t target = one.atom("UTF8_STRING");
  const xcb_atom_t html = other.atom("text/plain");
  one.request(target, one.atom("ONE"));
  other.request(target, other.atom("ONE"));
  other.request(html, other.atom("TWO"));
  ASSERT_TRUE(runMainLoopUntil([&] {
    return one.answer(target).complete && other.answer(target).complete &&
           other.answer(html).complete;
  }));
  EXPECT_TRUE(one.answer(target).incremental);
  EXPECT_EQ(one.answer(target).type, target);
  EXPECT_TRUE(one.answer(target).bytes == text);
  EXPECT_TRUE(other.answer(target).bytes == text);
  EXPECT_TRUE(other.answer(html).bytes == text);
}

TEST_F(X11PasteboardTest, ATransferUnderWayOutlivesTheClipboardsLoss) {
  const std::string text = megabytes(2);
  XRequestor requestor(display());
  pasteboard_->setString(text);
  const xcb_atom_t target = requestor.atom("UTF8_STRING");
  requestor.request(target, requestor.atom("PASTED"));
  ASSERT_TRUE(runMainLoopUntil([&] { return requestor.answer(target).incremental; }));
  ASSERT_FALSE(requestor.answer(target).complete);
  XRequestor thief(display());
  thief.own("CLIPBOARD");
  ASSERT_TRUE(runMainLoopUntil([&] { return requestor.answer(target).complete; }));
  EXPECT_TRUE(requestor.answer(target).bytes == text);
}

TEST_F(X11PasteboardTest, ARequestorThatVanishesDuringATransferIsIgnored) {
  const std::string text = megabytes(2);
  pasteboard_->setString(text);
  {
    XRequestor requestor(display());
    requestor.stopTakingPieces();
    const xcb_atom_t target = requestor.atom("UTF8_STRING");
    requestor.request(target, requestor.atom("PASTED"));
    ASSERT_TRUE(runMainLoopUntil([&] { return requestor.answer(target).incremental; }));
  }
  EXPECT_TRUE(XRequestor(display()).paste("UTF8_STRING").bytes == text);
}

TEST_F(X11PasteboardTest, ARequestorThatIsGoneBeforeTheAnswerHarmsNobody) {
  const std::string text = megabytes(2);
  pasteboard_->setString(text);
  {
    XRequestor requestor(display());
    requestor.request(requestor.atom("text/plain"), requestor.atom("NEVER_READ"));
    requestor.request(requestor.atom("MULTIPLE"), requestor.atom("PAIRS"));
  }
  // The server gives its window the name of the one that has gone.
  EXPECT_TRUE(XRequestor(display()).paste("UTF8_STRING").bytes == text);
}

TEST_F(X11PasteboardTest, AnotherProgramsTextReplacesOurs) {
  pasteboard_->setString("ours");
  ASSERT_TRUE(runDetachingCommand({"xclip", "-selection", "clipboard"}, {"DISPLAY=" + display()},
                                  "theirs"));
  EXPECT_EQ(pasteWithXclip(display()), "theirs");
  pasteboard_->setString("ours again");
  EXPECT_EQ(pasteWithXclip(display()), "ours again");
}

TEST_F(X11PasteboardTest, TheClipboardIsEmptyAfterUsWithoutAManager) {
  pasteboard_->setString("text");
  pasteboard_->saveForQuit(std::chrono::hours(1));
  pasteboard_.reset();
  EXPECT_EQ(pasteWithXclip(display()), std::nullopt);
}

/// What SAVE_TARGETS and a clipboard manager do.
class X11PasteboardWithManagerTest : public X11PasteboardTest {
 protected:
  void startManager(const std::string& behaviour) {
    manager_.emplace(std::vector<std::string>{CLIPBOARD_MANAGER_PROGRAM, behaviour},
                     std::vector<std::string>{"DISPLAY=" + display()});
  }

  std::optional<ServerProgram> manager_;
};

TEST_F(X11PasteboardWithManagerTest, TheTextOutlivesTheProgram) {
  startManager("save");
  pasteboard_->setString("outlives “us”");
  pasteboard_->saveForQuit(std::chrono::hours(1));
  pasteboard_.reset();
  EXPECT_EQ(pasteWithXclip(display()), "outlives “us”");
}

TEST_F(X11PasteboardWithManagerTest, MegabytesOutliveTheProgram) {
  startManager("save");
  const std::string text = megabytes(5);
  pasteboard_->setString(text);
  pasteboard_->saveForQuit(std::chrono::hours(1));
  pasteboard_.reset();
  EXPECT_TRUE(pasteWithXclip(display()) == text);
}

TEST_F(X11PasteboardWithManagerTest, AManagerThatVanishesEndsTheWait) {
  startManager("vanish");
  pasteboard_->setString("text");
  pasteboard_->saveForQuit(std::chrono::hours(1));
  EXPECT_EQ(pasteWithXclip(display()), "text");
}

TEST_F(X11PasteboardWithManagerTest, AManagerThatHangsIsNotWaitedForLongerThanAllowed) {
  startManager("hang");
  pasteboard_->setString("text");
  pasteboard_->saveForQuit(std::chrono::milliseconds(50));
  EXPECT_EQ(pasteWithXclip(display()), "text");
}

TEST_F(X11PasteboardWithManagerTest, SomebodyElsesTextIsNotSaved) {
  startManager("hang");
  pasteboard_->setString("ours");
  ASSERT_TRUE(runDetachingCommand({"xclip", "-selection", "clipboard"}, {"DISPLAY=" + display()},
                                  "theirs"));
  pasteboard_->saveForQuit(std::chrono::hours(1));
  EXPECT_EQ(pasteWithXclip(display()), "theirs");
}

TEST_F(X11PasteboardWithManagerTest, NothingIsSavedWithoutAText) {
  startManager("hang");
  pasteboard_->saveForQuit(std::chrono::hours(1));
  EXPECT_EQ(pasteWithXclip(display()), std::nullopt);
}

TEST_F(X11PasteboardTest, AServerThatGoesAwayIsReportedAtTheNextText) {
  pasteboard_->setString("before");
  server_.end();
  runMainLoopWhileReady();
  EXPECT_THAT(log_, IsEmpty());
  pasteboard_->setString("after");
  EXPECT_THAT(log_, ElementsAre(HasSubstr("“" + display() + "” cannot be reached.")));
  pasteboard_->saveForQuit(std::chrono::hours(1));
}

TEST_F(X11PasteboardTest, AServerThatGoesAwayUnnoticedIsReportedToo) {
  pasteboard_->setString("before");
  server_.end();
  pasteboard_->setString("after");
  EXPECT_THAT(log_, ElementsAre(HasSubstr("The text was not copied to the clipboard")));
}

TEST_F(X11PasteboardTest, ANewServerGetsTheNextText) {
  pasteboard_->setString("before");
  server_.end();
  const XServer successor(display());
  pasteboard_->setString("after");
  EXPECT_EQ(pasteWithXclip(display()), "after");
  EXPECT_THAT(log_, IsEmpty());
}

TEST(X11Pasteboard, ConnectsToNothingBeforeTheFirstText) {
  std::vector<std::string> log;
  X11Pasteboard pasteboard(":no such display",
                           [&](std::string_view line) { log.emplace_back(line); });
  pasteboard.saveForQuit(std::chrono::hours(1));
  EXPECT_THAT(log, IsEmpty());
  pasteboard.setString("text");
  EXPECT_THAT(log, ElementsAre("The text was not copied to the clipboard: the X display “:no such "
                               "display” cannot be reached."));
}

}  // namespace
}  // namespace quillmar
