#include "platform/background_writer.h"

#include <chrono>
#include <functional>
#include <string>
#include <utility>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/file_descriptor.h"
#include "tests/core/timeouts.h"

namespace quillmar {
namespace {

/// A pipe whose reader decides when it is emptied.
class SlowPipe {
 public:
  SlowPipe() {
    int ends[2];
    EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
    readEnd_ = FileDescriptor(ends[0]);
    writeEnd_ = FileDescriptor(ends[1]);
  }

  /// A write of more bytes than the pipe has room for blocks.
  void fill() {
    fcntl(writeEnd_.number(), F_SETFL, O_NONBLOCK);
    const std::string page(4096, '.');
    while (write(writeEnd_.number(), page.data(), page.size()) > 0) {
    }
    fcntl(writeEnd_.number(), F_SETFL, 0);
  }

  /// What was written since the last call, without the bytes of fill(). Waits for the last one.
  std::string readUntil(char last) {
    std::string bytes;
    char byte = 0;
    while (read(readEnd_.number(), &byte, 1) == 1) {
      if (byte != '.') bytes += byte;
      if (byte == last) break;
    }
    return bytes;
  }

  int writer() const { return writeEnd_.number(); }

 private:
  FileDescriptor readEnd_;
  FileDescriptor writeEnd_;
};

TEST(BackgroundWriter, WritesLinesInOrder) {
  SlowPipe pipe;
  BackgroundWriter writer(pipe.writer());
  writer.writeLine("one");
  writer.writeLine("two");
  writer.writeLine("three!");
  EXPECT_TRUE(writer.flush(longTimeout));
  EXPECT_EQ(pipe.readUntil('!'), "one\ntwo\nthree!");
}

TEST(BackgroundWriter, ABlockedStreamDoesNotBlockTheCaller) {
  SlowPipe pipe;
  pipe.fill();
  BackgroundWriter writer(pipe.writer());
  for (int i = 0; i < 1000; ++i) writer.writeLine("line");
  writer.writeLine("last!");
  EXPECT_FALSE(writer.flush(noTimeout));
  std::string expected;
  for (int i = 0; i < 1000; ++i) expected += "line\n";
  EXPECT_EQ(pipe.readUntil('!'), expected + "last!");
  EXPECT_TRUE(writer.flush(longTimeout));
}

TEST(BackgroundWriter, LinesWithoutRoomAreDroppedAndCounted) {
  SlowPipe pipe;
  std::function<void()> thread;
  BackgroundWriter writer(pipe.writer(), 100, [&](std::function<void()> task) {
    thread = std::move(task);
    return true;
  });
  writer.writeLine(std::string(80, 'x'));
  writer.writeLine(std::string(80, 'y'));
  writer.writeLine("short");
  thread();
  EXPECT_EQ(pipe.readUntil(')'),
            std::string(80, 'x') + "\n(Log lines dropped while the output was blocked: 2)");
  writer.writeLine("after!");
  thread();
  EXPECT_EQ(pipe.readUntil('!'), "\nafter!");
}

TEST(BackgroundWriter, LinesWithoutAThreadWaitForTheNextOne) {
  SlowPipe pipe;
  bool hasThread = false;
  BackgroundWriter writer(pipe.writer(), 100, [&](std::function<void()> task) {
    return hasThread && startDetachedThread(std::move(task));
  });
  writer.writeLine("one");
  EXPECT_FALSE(writer.flush(noTimeout));
  hasThread = true;
  writer.writeLine("two!");
  EXPECT_EQ(pipe.readUntil('!'), "one\ntwo!");
}

TEST(BackgroundWriter, AClosedStreamIsIgnored) {
  BackgroundWriter writer(-1);
  writer.writeLine("lost");
  EXPECT_TRUE(writer.flush(longTimeout));
}

}  // namespace
}  // namespace quillmar
