#include "platform/linux/processes/shell_script_statements.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

namespace quillmar {

namespace {

constexpr std::array<std::string_view, 3> keywords = {"do", "shell", "script"};

bool isBlank(char c) {
  return c == ' ' || c == '\t';
}
bool isLineEnd(char c) {
  return c == '\n' || c == '\r';
}

/// Compares without regard to the case of ASCII letters. `keyword` is in lower case.
bool isKeyword(std::string_view word, std::string_view keyword) {
  return std::equal(word.begin(), word.end(), keyword.begin(), keyword.end(), [](char a, char b) {
    return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
  });
}

class StatementParser {
 public:
  explicit StatementParser(std::string_view source) : source_(source) {}

  Result<std::vector<std::string>> parse() {
    std::vector<std::string> commands;
    while (skipToStatement()) {
      for (const std::string_view keyword : keywords) {
        if (!take(keyword)) return unknownWord(keyword);
      }
      Result<std::string> command = takeString();
      if (!command) return command.error();
      commands.push_back(std::move(command).value());
      skipBlanks();
      if (!atLineEnd()) return unknownWord("the end of the line");
    }
    return commands;
  }

 private:
  bool atEnd() const { return position_ == source_.size(); }
  std::string_view rest() const { return source_.substr(position_); }

  /// True at the end of the line or at a comment.
  bool atLineEnd() const {
    return atEnd() || isLineEnd(source_[position_]) || source_[position_] == '#' ||
           rest().starts_with("--");
  }

  void skipBlanks() {
    while (!atEnd() && isBlank(source_[position_])) ++position_;
  }

  /// Moves to the next statement; false at the end of the source.
  bool skipToStatement() {
    for (skipBlanks(); !atEnd() && atLineEnd(); skipBlanks()) {
      while (!atEnd() && !isLineEnd(source_[position_])) ++position_;
      while (!atEnd() && isLineEnd(source_[position_])) ++position_;
    }
    return !atEnd();
  }

  /// The word at the current position, up to the next blank, quote or line end; a quote alone is a
  /// word.
  std::string_view word() const {
    if (atLineEnd()) return {};
    const std::size_t length = rest().find_first_of(" \t\r\n\"");
    return rest().substr(0, std::max<std::size_t>(length, 1));
  }

  bool take(std::string_view keyword) {
    skipBlanks();
    if (!isKeyword(word(), keyword)) return false;
    position_ += keyword.size();
    return true;
  }

  Result<std::string> takeString() {
    skipBlanks();
    if (atEnd() || source_[position_] != '"') return unknownWord("a quoted string");
    const std::size_t start = position_++;
    std::string text;
    while (!atEnd()) {
      const char c = source_[position_++];
      if (c == '"') return text;
      if (c != '\\') {
        text += c;
        continue;
      }
      if (atEnd()) break;
      const std::optional<char> meaning = escape(source_[position_]);
      if (!meaning) return unknownEscape();
      text += *meaning;
      ++position_;
    }
    position_ = start;
    return error("The string that begins in " + line() + " has no closing quote.");
  }

  static std::optional<char> escape(char c) {
    switch (c) {
      case '"':
      case '\\':
        return c;
      case 'n':
        return '\n';
      case 'r':
        return '\r';
      case 't':
        return '\t';
      default:
        return std::nullopt;
    }
  }

  Error unknownEscape() const {
    // The whole character: its continuation bytes are 10xxxxxx.
    std::size_t length = 1;
    while (length < rest().size() && (rest()[length] & 0xC0) == 0x80) ++length;
    return error("The string in " + line() + " contains “\\" +
                 std::string(rest().substr(0, length)) +
                 "”, which is not one of the escapes \\\" \\\\ \\n \\r \\t.");
  }

  Error unknownWord(std::string_view expected) const {
    const std::string what = atLineEnd() ? "the end of the line" : "“" + std::string(word()) + "”";
    const bool isKeywordExpected =
        std::find(keywords.begin(), keywords.end(), expected) != keywords.end();
    const std::string instead =
        isKeywordExpected ? "“" + std::string(expected) + "”" : std::string(expected);
    return error(
        "Without an AppleScript interpreter only statements like “do shell script "
        "\"…\"” can be run: " +
        line() + " has " + what + " where " + instead + " is expected.");
  }

  static Error error(std::string description) { return {std::move(description)}; }

  /// The line of the current position, counted from 1. CR, LF and CR LF each end one.
  std::string line() const {
    std::size_t number = 1;
    for (std::size_t i = 0; i < position_; ++i) {
      const bool secondHalf = source_[i] == '\n' && i > 0 && source_[i - 1] == '\r';
      if (isLineEnd(source_[i]) && !secondHalf) ++number;
    }
    return "line " + std::to_string(number);
  }

  std::string_view source_;
  std::size_t position_ = 0;
};

}  // namespace

Result<std::vector<std::string>> parseShellScriptStatements(std::string_view source) {
  return StatementParser(source).parse();
}

}  // namespace quillmar
