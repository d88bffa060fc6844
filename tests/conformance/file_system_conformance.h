// What every file system does. A fixture names the implementation: it is default-constructible,
// gives out `files()`, works in an empty folder `root()` (an absolute path), and has
//   void addSymbolicLink(path, target)
//   bool isSymbolicLink(path)
//   std::vector<std::string> names()    of everything below the root, relative to it, sorted

#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/file_system.h"

namespace quillmar {

template <class Fixture>
class FileSystemConformance : public testing::Test {
 protected:
  FileSystem& files() { return fixture_.files(); }
  std::string path(const std::string& name) { return fixture_.root() + "/" + name; }

  /// The file's bytes, or the error's text.
  std::string contents(const std::string& name) {
    Result<std::string> read = files().read(path(name));
    return read ? std::move(read).value() : read.error().description;
  }

  void write(const std::string& name, std::string_view bytes, std::uint32_t permissions = 0644) {
    const Result<void> written = files().replace(path(name), bytes, permissions);
    ASSERT_TRUE(written.ok()) << written.error().description;
  }

  std::unique_ptr<FileOverwrite> open(const std::string& name) {
    auto opened = files().openForOverwriting(path(name));
    if (opened) return std::move(opened).value();
    ADD_FAILURE() << opened.error().description;
    return nullptr;
  }

  std::string readError(const std::string& name, std::string_view reason) {
    return "The file “" + path(name) + "” could not be read: " + std::string(reason) + ".";
  }
  std::string writeError(const std::string& name, std::string_view reason) {
    return "The file “" + path(name) + "” could not be written: " + std::string(reason) + ".";
  }

  Fixture fixture_;
};

TYPED_TEST_SUITE_P(FileSystemConformance);

TYPED_TEST_P(FileSystemConformance, NothingIsThereBeforeItIsMade) {
  EXPECT_FALSE(this->files().exists(this->path("a")));
  EXPECT_FALSE(this->files().isExecutableFile(this->path("a")));
  EXPECT_EQ(this->contents("a"), this->readError("a", "No such file or directory"));
  EXPECT_EQ(this->files().permissions(this->path("a")).error().description,
            "The file “" + this->path("a") + "” could not be examined: No such file or directory.");
}

TYPED_TEST_P(FileSystemConformance, FoldersAreMadeWithAllAboveThemAndMayExist) {
  EXPECT_TRUE(this->files().createDirectories(this->path("a/b/c")).ok());
  EXPECT_TRUE(this->files().createDirectories(this->path("a/b")).ok());
  EXPECT_TRUE(this->files().createDirectories(this->path("a/b/d/")).ok());
  EXPECT_THAT(this->fixture_.names(), testing::ElementsAre("a", "a/b", "a/b/c", "a/b/d"));
  EXPECT_TRUE(this->files().exists(this->path("a/b/c")));
  EXPECT_FALSE(this->files().isExecutableFile(this->path("a/b/c")));
}

TYPED_TEST_P(FileSystemConformance, AFolderCannotBeMadeWhereAFileIs) {
  this->write("a", "");
  EXPECT_EQ(this->files().createDirectories(this->path("a")).error().description,
            "The folder “" + this->path("a") + "” could not be created: Not a directory.");
  EXPECT_EQ(this->files().createDirectories(this->path("a/b")).error().description,
            "The folder “" + this->path("a/b") + "” could not be created: Not a directory.");
}

TYPED_TEST_P(FileSystemConformance, APrivateFolderIsMadeWithAllAboveItAndMayExist) {
  EXPECT_TRUE(this->files().createPrivateDirectory(this->path("a/b")).ok());
  EXPECT_EQ(this->files().permissions(this->path("a/b")).value(), 0700u);
  this->write("a/b/kept", "");
  EXPECT_TRUE(this->files().createPrivateDirectory(this->path("a/b")).ok());
  EXPECT_THAT(this->fixture_.names(), testing::ElementsAre("a", "a/b", "a/b/kept"));
}

TYPED_TEST_P(FileSystemConformance, AFolderThatIsNotPrivateIsRefusedWithTheReason) {
  const auto refusal = [this](const std::string& name) {
    const Result<void> made = this->files().createPrivateDirectory(this->path(name));
    return made ? "It was made." : made.error().description;
  };
  const auto sentence = [this](const std::string& name, const std::string& reason) {
    return "The folder “" + this->path(name) + "” could not be used: " + reason + ".";
  };
  ASSERT_TRUE(this->files().createPrivateDirectory(this->path("private")).ok());
  ASSERT_TRUE(this->files().createDirectories(this->path("open")).ok());
  this->write("file", "");
  this->fixture_.addSymbolicLink(this->path("link"), "private");
  this->fixture_.addSymbolicLink(this->path("dangling"), "nothing");
  EXPECT_EQ(refusal("open"), sentence("open", "Its permissions are 0755 instead of 0700"));
  EXPECT_EQ(refusal("file"), sentence("file", "Not a directory"));
  EXPECT_EQ(refusal("link"), sentence("link", "It is a symbolic link"));
  EXPECT_EQ(refusal("dangling"), sentence("dangling", "It is a symbolic link"));
  EXPECT_EQ(refusal("file/below"),
            "The folder “" + this->path("file") + "” could not be created: Not a directory.");
  EXPECT_THAT(this->fixture_.names(),
              testing::ElementsAre("dangling", "file", "link", "open", "private"));
}

TYPED_TEST_P(FileSystemConformance, APrivateFolderIsMadeBelowALink) {
  ASSERT_TRUE(this->files().createDirectories(this->path("folder")).ok());
  this->fixture_.addSymbolicLink(this->path("link"), "folder");
  EXPECT_TRUE(this->files().createPrivateDirectory(this->path("link/a")).ok());
  EXPECT_TRUE(this->files().createPrivateDirectory(this->path("link/a")).ok());
  EXPECT_THAT(this->fixture_.names(), testing::ElementsAre("folder", "folder/a", "link"));
}

TYPED_TEST_P(FileSystemConformance, AFileIsReadWholeWithSpareCapacityBehindIt) {
  using std::string_literals::operator""s;
  for (const std::size_t size : {0u, 1u, 15u, 4095u, 4096u, 4097u, 1000000u}) {
    std::string bytes = "\0\xFF\n"s;
    bytes.resize(size, 'x');
    this->write("a", bytes);
    const Result<std::string> read = this->files().read(this->path("a"));
    ASSERT_TRUE(read.ok()) << read.error().description;
    EXPECT_EQ(read.value(), bytes);
    EXPECT_GE(read.value().capacity(), size + 64);
  }
}

TYPED_TEST_P(FileSystemConformance, AFolderIsNeitherReadNorWritten) {
  ASSERT_TRUE(this->files().createDirectories(this->path("a")).ok());
  EXPECT_EQ(this->contents("a"), this->readError("a", "Is a directory"));
  EXPECT_EQ(this->files().openForOverwriting(this->path("a")).error().description,
            this->writeError("a", "Is a directory"));
  EXPECT_EQ(this->files().replace(this->path("a"), "x", 0644).error().description,
            this->writeError("a", "Is a directory"));
  EXPECT_THAT(this->fixture_.names(), testing::ElementsAre("a"));
}

TYPED_TEST_P(FileSystemConformance, AMissingFolderIsAnError) {
  EXPECT_EQ(this->files().openForOverwriting(this->path("a/b")).error().description,
            this->writeError("a/b", "No such file or directory"));
  EXPECT_EQ(this->files().replace(this->path("a/b"), "x", 0644).error().description,
            this->writeError("a/b", "No such file or directory"));
  EXPECT_THAT(this->fixture_.names(), testing::IsEmpty());
}

TYPED_TEST_P(FileSystemConformance, TheEmptyPathAndOneWithANullCharacterNameNothing) {
  using std::string_literals::operator""s;
  this->write("a", "bytes");
  for (const std::string& path : {""s, this->path("a") + "\0b"s}) {
    EXPECT_FALSE(this->files().exists(path));
    EXPECT_FALSE(this->files().read(path).ok());
    EXPECT_FALSE(this->files().replace(path, "x", 0644).ok());
    EXPECT_FALSE(this->files().openForOverwriting(path).ok());
    EXPECT_FALSE(this->files().createDirectories(path).ok());
    EXPECT_FALSE(this->files().createPrivateDirectory(path).ok());
  }
  EXPECT_EQ(this->contents("a"), "bytes");
}

TYPED_TEST_P(FileSystemConformance, ReplacingSetsBytesAndPermissionsAndLeavesNothingElse) {
  this->write("a", "first", 0640);
  this->write("a", "second", 0755);
  EXPECT_EQ(this->contents("a"), "second");
  EXPECT_EQ(this->files().permissions(this->path("a")).value(), 0755u);
  EXPECT_TRUE(this->files().isExecutableFile(this->path("a")));
  this->write("a", "third", 0600);
  EXPECT_FALSE(this->files().isExecutableFile(this->path("a")));
  EXPECT_THAT(this->fixture_.names(), testing::ElementsAre("a"));
}

TYPED_TEST_P(FileSystemConformance, ReplacingThroughALinkReplacesWhatItLeadsTo) {
  this->fixture_.addSymbolicLink(this->path("link"), "a");
  this->write("link", "made");
  EXPECT_TRUE(this->fixture_.isSymbolicLink(this->path("link")));
  EXPECT_EQ(this->contents("a"), "made");
  this->write("link", "replaced");
  EXPECT_TRUE(this->fixture_.isSymbolicLink(this->path("link")));
  EXPECT_EQ(this->contents("a"), "replaced");
  EXPECT_THAT(this->fixture_.names(), testing::ElementsAre("a", "link"));
}

TYPED_TEST_P(FileSystemConformance, OpeningForOverwritingChangesNothing) {
  this->write("a", "bytes", 0640);
  this->open("a").reset();
  EXPECT_EQ(this->contents("a"), "bytes");
  EXPECT_EQ(this->files().permissions(this->path("a")).value(), 0640u);
}

TYPED_TEST_P(FileSystemConformance, OpeningForOverwritingMakesAMissingFile) {
  this->open("a").reset();
  EXPECT_EQ(this->contents("a"), "");
  EXPECT_FALSE(this->files().isExecutableFile(this->path("a")));
}

TYPED_TEST_P(FileSystemConformance, OverwritingKeepsPermissionsAndWhatIsNotWritten) {
  this->write("a", "0123456789", 0600);
  const std::unique_ptr<FileOverwrite> file = this->open("a");
  EXPECT_TRUE(file->write(2, "ab").ok());
  EXPECT_EQ(this->contents("a"), "01ab456789");
  EXPECT_TRUE(file->write(9, "cde").ok());
  EXPECT_TRUE(file->write(0, "").ok());
  EXPECT_EQ(this->contents("a"), "01ab45678cde");
  EXPECT_TRUE(file->setLength(3).ok());
  EXPECT_EQ(this->contents("a"), "01a");
  EXPECT_EQ(this->files().permissions(this->path("a")).value(), 0600u);
}

TYPED_TEST_P(FileSystemConformance, AWriteBehindTheEndAndAGreaterLengthFillWithZeros) {
  using std::string_literals::operator""s;
  const std::unique_ptr<FileOverwrite> file = this->open("a");
  EXPECT_TRUE(file->write(2, "x").ok());
  EXPECT_TRUE(file->setLength(5).ok());
  EXPECT_EQ(this->contents("a"), "\0\0x\0\0"s);
}

TYPED_TEST_P(FileSystemConformance, ReservingChangesNeitherBytesNorLength) {
  this->write("a", "bytes");
  const std::unique_ptr<FileOverwrite> file = this->open("a");
  EXPECT_TRUE(file->reserve(0).ok());
  EXPECT_TRUE(file->reserve(3).ok());
  EXPECT_TRUE(file->reserve(100000).ok());
  EXPECT_EQ(this->contents("a"), "bytes");
}

TYPED_TEST_P(FileSystemConformance, OverwritingThroughALinkKeepsIt) {
  ASSERT_TRUE(this->files().createDirectories(this->path("folder")).ok());
  this->write("folder/a", "old", 0604);
  this->fixture_.addSymbolicLink(this->path("link"), "folder/a");
  EXPECT_TRUE(this->open("link")->write(0, "new").ok());
  EXPECT_EQ(this->contents("folder/a"), "new");
  EXPECT_TRUE(this->fixture_.isSymbolicLink(this->path("link")));
  EXPECT_EQ(this->files().permissions(this->path("link")).value(), 0604u);
}

TYPED_TEST_P(FileSystemConformance, LinksAreFollowedEverywhere) {
  ASSERT_TRUE(this->files().createDirectories(this->path("folder/inner")).ok());
  this->write("folder/a", "bytes", 0755);
  this->fixture_.addSymbolicLink(this->path("relative"), "folder/../folder");
  this->fixture_.addSymbolicLink(this->path("absolute"), this->path("relative"));
  EXPECT_EQ(this->contents("absolute/a"), "bytes");
  EXPECT_EQ(this->contents("absolute/inner/../a"), "bytes");
  EXPECT_TRUE(this->files().isExecutableFile(this->path("relative/a")));
  EXPECT_TRUE(this->files().createDirectories(this->path("absolute/made")).ok());
  EXPECT_TRUE(this->files().exists(this->path("folder/made")));
}

TYPED_TEST_P(FileSystemConformance, ALinkThatLeadsNowhereIsNotThere) {
  this->fixture_.addSymbolicLink(this->path("dangling"), "nothing");
  this->fixture_.addSymbolicLink(this->path("loop"), "loop");
  EXPECT_FALSE(this->files().exists(this->path("dangling")));
  EXPECT_EQ(this->contents("dangling"), this->readError("dangling", "No such file or directory"));
  EXPECT_EQ(this->contents("loop"), this->readError("loop", "Too many levels of symbolic links"));
  EXPECT_FALSE(this->files().replace(this->path("loop"), "x", 0644).ok());
}

TYPED_TEST_P(FileSystemConformance, AnOpenFileOutlivesItsReplacement) {
  this->write("a", "old");
  const std::unique_ptr<FileOverwrite> file = this->open("a");
  this->write("a", "new");
  EXPECT_TRUE(file->write(0, "late").ok());
  EXPECT_EQ(this->contents("a"), "new");
}

TYPED_TEST_P(FileSystemConformance, ReplacingWithoutPermissionsGivesThoseOfANewFile) {
  EXPECT_TRUE(this->files().replace(this->path("replaced"), "bytes", std::nullopt));
  EXPECT_TRUE(this->open("opened"));
  EXPECT_EQ(this->contents("replaced"), "bytes");
  EXPECT_EQ(this->files().permissions(this->path("replaced")).value(),
            this->files().permissions(this->path("opened")).value());
}

TYPED_TEST_P(FileSystemConformance, AFinishedFileHoldsWhatWasWritten) {
  this->write("a", "old");
  const auto file = this->open("a");
  EXPECT_TRUE(file->write(0, "newer"));
  EXPECT_TRUE(file->finish());
  EXPECT_EQ(this->contents("a"), "newer");
}

TYPED_TEST_P(FileSystemConformance, NothingExistsWhereNothingCanBe) {
  this->write("file", "bytes");
  this->fixture_.addSymbolicLink(this->path("loop"), this->path("loop"));
  std::string tooLong = this->path("");
  while (tooLong.size() <= 4096) tooLong += "./";
  for (const std::string& path :
       {this->path("file/below"), this->path("loop"), this->path("loop/below"),
        this->path("nothing/below"), this->path(std::string(256, 'n')), tooLong + "file"}) {
    EXPECT_FALSE(this->files().exists(path)) << path;
    EXPECT_FALSE(this->files().read(path)) << path;
  }
}

TYPED_TEST_P(FileSystemConformance, AFileOf64MiBIsReadAndALargerOneIsRefused) {
  const std::unique_ptr<FileOverwrite> file = this->open("a");
  ASSERT_TRUE(file->setLength(maximumFileSize));
  EXPECT_EQ(this->contents("a").size(), maximumFileSize);
  ASSERT_TRUE(file->setLength(maximumFileSize + 1));
  const Result<std::string> read = this->files().read(this->path("a"));
  ASSERT_FALSE(read);
  EXPECT_EQ(read.error(),
            (Error{this->readError("a", "It is larger than 64 MiB"), ErrorKind::tooLarge}));
}

REGISTER_TYPED_TEST_SUITE_P(
    FileSystemConformance, NothingIsThereBeforeItIsMade, FoldersAreMadeWithAllAboveThemAndMayExist,
    APrivateFolderIsMadeWithAllAboveItAndMayExist, AFolderThatIsNotPrivateIsRefusedWithTheReason,
    APrivateFolderIsMadeBelowALink, AFolderCannotBeMadeWhereAFileIs,
    AFileIsReadWholeWithSpareCapacityBehindIt, AFolderIsNeitherReadNorWritten,
    AMissingFolderIsAnError, TheEmptyPathAndOneWithANullCharacterNameNothing,
    ReplacingSetsBytesAndPermissionsAndLeavesNothingElse,
    ReplacingThroughALinkReplacesWhatItLeadsTo, OpeningForOverwritingChangesNothing,
    OpeningForOverwritingMakesAMissingFile, OverwritingKeepsPermissionsAndWhatIsNotWritten,
    AWriteBehindTheEndAndAGreaterLengthFillWithZeros, ReservingChangesNeitherBytesNorLength,
    OverwritingThroughALinkKeepsIt, LinksAreFollowedEverywhere, ALinkThatLeadsNowhereIsNotThere,
    AnOpenFileOutlivesItsReplacement, ReplacingWithoutPermissionsGivesThoseOfANewFile,
    AFinishedFileHoldsWhatWasWritten, NothingExistsWhereNothingCanBe,
    AFileOf64MiBIsReadAndALargerOneIsRefused);

}  // namespace quillmar
