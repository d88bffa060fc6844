#include "platform/widgets/type_ahead.h"

#include "platform/text.h"

namespace quillmar {

namespace {

/// Characters from here to U+F8FF stand for keys that type none.
constexpr std::string_view firstFunctionKey = "\uf700";
constexpr std::string_view lastFunctionKey = "\uf8ff";

bool consistsOf(std::string_view text, std::string_view character) {
  while (text.starts_with(character)) text.remove_prefix(character.size());
  return text.empty();
}

}  // namespace

bool TypeAhead::continues(Clock::time_point now) const {
  return !text_.empty() && now - last_ < pause;
}

bool TypeAhead::isSearched(const KeyPress& press, Clock::time_point now) const {
  if ((press.modifiers & ~modifiers::shift) != 0 || press.character.empty()) return false;
  if (press.character == keys::space.character) return continues(now);
  const auto first = static_cast<unsigned char>(press.character.front());
  const bool isControl = first < 0x20 || first == 0x7f;
  const bool isFunctionKey =
      press.character >= firstFunctionKey && press.character <= lastFunctionKey;
  return !isControl && !isFunctionKey;
}

std::optional<std::size_t> TypeAhead::find(const std::string& character, std::size_t count,
                                           std::optional<std::size_t> current,
                                           const std::function<std::string(std::size_t)>& title,
                                           Clock::time_point now) {
  const std::string typed = text::lowercased(character);
  const bool repeats = continues(now) && consistsOf(text_, typed);
  const bool isNew = !continues(now) || repeats;
  text_ = continues(now) ? text_ + typed : typed;
  last_ = now;
  const std::string& wanted = repeats ? typed : text_;
  const std::size_t start = current ? *current + (isNew ? 1 : 0) : 0;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t at = (start + i) % count;
    if (text::lowercased(title(at)).starts_with(wanted)) return at;
  }
  return std::nullopt;
}

}  // namespace quillmar
