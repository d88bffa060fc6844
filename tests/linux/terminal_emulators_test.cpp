#include "platform/linux/workspace/terminal_emulators.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/file_descriptor.h"
#include "platform/memory/memory_file_system.h"
#include "tests/linux/temporary_folder.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// How many words run the file: "/bin/sh -c SCRIPT FILE".
constexpr std::size_t wordsOfFile = 4;

class TerminalEmulatorsTest : public testing::Test {
 protected:
  TerminalEmulatorsTest() { environment_.variables["PATH"] = "/usr/local/bin:/usr/bin"; }

  void install(const std::string& path) { files_.addFile(path, "", 0755); }
  void choose(const std::string& command) { environment_.variables["TERMINAL"] = command; }

  /// The terminal and its arguments up to the words that run the file, or the error.
  std::vector<std::string> terminal() const {
    const Result<Process> process = terminalProcess("/t/a.command", environment_, files_);
    if (!process) return {process.error().description};
    std::vector<std::string> words = {process.value().executable};
    const auto& arguments = process.value().arguments;
    words.insert(words.end(), arguments.begin(), arguments.end() - wordsOfFile);
    return words;
  }

  MemoryFileSystem files_;
  Environment environment_;
};

TEST_F(TerminalEmulatorsTest, TheTerminalRunsTheFileInThisProgramsEnvironment) {
  install("/usr/bin/xterm");
  const Process process = terminalProcess("/t/a b.command", environment_, files_).value();
  EXPECT_EQ(process.environment, environment_.variables);
  ASSERT_EQ(process.arguments.size(), 1 + wordsOfFile);
  EXPECT_EQ(process.arguments[1], "/bin/sh");
  EXPECT_EQ(process.arguments[2], "-c");
  EXPECT_EQ(process.arguments[4], "/t/a b.command");
}

TEST_F(TerminalEmulatorsTest, TheUsersChoiceComesFirst) {
  install("/usr/bin/xdg-terminal-exec");
  install("/usr/local/bin/xterm");
  choose("xterm");
  EXPECT_THAT(terminal(), ElementsAre("/usr/local/bin/xterm", "-e"));
}

TEST_F(TerminalEmulatorsTest, TheUsersChoiceMayHaveArguments) {
  install("/usr/bin/kitty");
  choose("kitty -1 --title 'My terminal'");
  EXPECT_THAT(terminal(), ElementsAre("/usr/bin/kitty", "-1", "--title", "My terminal", "--"));
}

TEST_F(TerminalEmulatorsTest, AnUnknownTerminalGetsTheUsualOption) {
  install("/opt/my terminal");
  choose("'/opt/my terminal'");
  EXPECT_THAT(terminal(), ElementsAre("/opt/my terminal", "-e"));
}

TEST_F(TerminalEmulatorsTest, AChoiceThatIsNotInstalledGivesWayToTheNext) {
  install("/usr/bin/konsole");
  for (const char* choice : {"gone", "/usr/bin/gone", "", "'unbalanced", " "}) {
    choose(choice);
    EXPECT_THAT(terminal(), ElementsAre("/usr/bin/konsole", "-e")) << choice;
  }
}

TEST_F(TerminalEmulatorsTest, TerminalsAreTriedInOrderWithTheOptionOfEach) {
  const std::vector<std::vector<std::string>> inOrder = {
      {"xdg-terminal-exec"},    {"x-terminal-emulator", "-e"},
      {"gnome-terminal", "--"}, {"konsole", "-e"},
      {"xfce4-terminal", "-x"}, {"mate-terminal", "-x"},
      {"kitty", "--"},          {"foot", "--"},
      {"alacritty", "-e"},      {"wezterm", "start", "--"},
      {"terminator", "-x"},     {"xterm", "-e"}};
  for (const auto& words : inOrder) install("/usr/bin/" + words.front());
  for (std::vector<std::string> words : inOrder) {
    const std::string path = words.front() = "/usr/bin/" + words.front();
    EXPECT_EQ(terminal(), words);
    files_.removeEntry(path);
  }
}

TEST_F(TerminalEmulatorsTest, AFileThatIsNotExecutableIsNoTerminal) {
  files_.addFile("/usr/local/bin/xterm", "", 0644);
  install("/usr/bin/xterm");
  EXPECT_THAT(terminal(), ElementsAre("/usr/bin/xterm", "-e"));
}

TEST_F(TerminalEmulatorsTest, WithoutATerminalTheErrorSaysWhatToDo) {
  EXPECT_THAT(terminal(),
              ElementsAre("No terminal is installed. Install a terminal, such as xterm, or set "
                          "TERMINAL to the command that starts yours."));
  choose("gone");
  EXPECT_THAT(terminal(),
              ElementsAre("The terminal “gone”, which the environment variable TERMINAL names, is "
                          "not installed, and there is no other. Install a terminal, such as "
                          "xterm, or set TERMINAL to the command that starts yours."));
}

/// The words that run a file, in a terminal of the test's own.
class TerminalWindowTest : public testing::Test {
 protected:
  ~TerminalWindowTest() override {
    if (child_ <= 0) return;
    kill(child_, SIGKILL);
    waitpid(child_, nullptr, 0);
  }

  void run(const std::string& script) {
    MemoryFileSystem files;
    files.addFile("/bin/xterm", "", 0755);
    const std::string file = path("a b's.command");
    std::ofstream(file) << "#!/bin/sh\n" << script;
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    const Process process = terminalProcess(file, {{{"PATH", "/bin"}}}, files).value();
    std::vector<std::string> words(process.arguments.end() - wordsOfFile, process.arguments.end());
    std::vector<char*> addresses;
    for (std::string& word : words) addresses.push_back(word.data());
    addresses.push_back(nullptr);
    int terminal = -1;
    child_ = forkpty(&terminal, nullptr, nullptr, nullptr);
    ASSERT_GE(child_, 0);
    if (child_ == 0) {
      execv(addresses[0], addresses.data());
      _exit(127);
    }
    terminal_ = FileDescriptor(terminal);
  }

  /// Reads what the terminal shows until it contains the text.
  void waitFor(const std::string& text) {
    while (shown_.find(text) == std::string::npos) {
      char character = 0;
      ASSERT_EQ(read(terminal_.number(), &character, 1), 1) << shown_;
      shown_ += character;
    }
  }

  void type(const std::string& text) {
    ASSERT_EQ(write(terminal_.number(), text.data(), text.size()),
              static_cast<ssize_t>(text.size()));
  }

  /// True if the shell of the window sleeps, which it does while it waits for input; false if it
  /// has ended.
  bool isWaiting() {
    for (;;) {
      std::ifstream status("/proc/" + std::to_string(child_) + "/stat");
      std::string id, name, state;
      status >> id >> name >> state;
      if (state == "S") return true;
      if (state == "Z") return false;
    }
  }

  void pressEnterAndExpectTheEnd() {
    EXPECT_TRUE(isWaiting());
    type("\n");
    EXPECT_EQ(waitpid(child_, nullptr, 0), child_);
    child_ = 0;
  }

  std::string path(const std::string& name) const { return folder_.path() + "/" + name; }

  static constexpr const char* prompt = "Press Enter to close this window.] ";

  std::string shown_;

 private:
  TemporaryFolder folder_;
  FileDescriptor terminal_;
  pid_t child_ = 0;
};

TEST_F(TerminalWindowTest, StaysOpenUntilEnterIsPressed) {
  run("echo output");
  waitFor(prompt);
  EXPECT_EQ(shown_, "output\r\n\r\n[The command has ended. " + std::string(prompt));
  pressEnterAndExpectTheEnd();
}

TEST_F(TerminalWindowTest, SaysThatTheCommandFailed) {
  run("exit 3");
  waitFor(prompt);
  EXPECT_THAT(shown_, HasSubstr("[The command failed with status 3. Press"));
  pressEnterAndExpectTheEnd();
}

TEST_F(TerminalWindowTest, StaysOpenAfterInputThatTheCommandDidNotRead) {
  ASSERT_EQ(mkfifo(path("go").c_str(), 0600), 0);
  run("echo running; read -r line <'" + path("go") + "'");
  waitFor("running");
  type("typed\n\n");
  waitFor("typed\r\n\r\n");
  std::ofstream(path("go")) << "go\n";
  waitFor(prompt);
  pressEnterAndExpectTheEnd();
}

TEST_F(TerminalWindowTest, CtrlCEndsTheCommandOnly) {
  ASSERT_EQ(mkfifo(path("never").c_str(), 0600), 0);
  run("echo running; exec cat '" + path("never") + "'");
  waitFor("running");
  type("\x03");
  waitFor(prompt);
  EXPECT_THAT(shown_, HasSubstr("failed with status 130"));
  pressEnterAndExpectTheEnd();
}

TEST_F(TerminalWindowTest, RestoresTheTerminalThatACommandLeftWithoutEcho) {
  run("stty raw -echo");
  waitFor(prompt);
  type("x");
  waitFor("] x");
  pressEnterAndExpectTheEnd();
}

}  // namespace
}  // namespace quillmar
