#include "platform/application.h"

#include <charconv>
#include <system_error>

namespace quillmar {

std::uint32_t timeOfStartupId(std::string_view startupId) {
  constexpr std::string_view mark = "_TIME";
  const std::size_t found = startupId.rfind(mark);
  if (found == std::string_view::npos) return 0;
  const std::string_view digits = startupId.substr(found + mark.size());
  std::uint32_t time = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), time);
  return error == std::errc() && end == digits.data() + digits.size() ? time : 0;
}

}  // namespace quillmar
