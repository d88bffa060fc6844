#include "platform/qt/module/x11_settings.h"

#include <cstdint>

#include "platform/qt/windows/x11_requests.h"

namespace quillmar {

namespace {

constexpr std::uint32_t longestInWords = 65536;

/// Walks through bytes in either byte order; what lies behind their end reads as nothing.
class Reader {
 public:
  explicit Reader(std::string_view bytes)
      : bytes_(bytes), isBigEndian_(bytes.substr(0, 1) == "\1") {}

  void skip(std::size_t count) { bytes_.remove_prefix(std::min(count, bytes_.size())); }
  bool atEnd() const { return bytes_.empty(); }

  std::uint32_t number(std::size_t size) {
    const std::string_view digits = text(size);
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < digits.size(); ++i) {
      const std::size_t at = isBigEndian_ ? i : digits.size() - 1 - i;
      value = value << 8U | static_cast<std::uint8_t>(digits[at]);
    }
    return value;
  }
  std::string_view text(std::size_t size) {
    const std::string_view found = bytes_.substr(0, size);
    skip(size);
    return found;
  }
  /// Texts are followed by bytes up to a multiple of four.
  std::string_view paddedText(std::size_t size) {
    const std::string_view found = text(size);
    skip((4 - size % 4) % 4);
    return found;
  }

 private:
  std::string_view bytes_;
  bool isBigEndian_;
};

}  // namespace

std::string stringSetting(std::string_view published, const std::string& name) {
  enum Type : std::uint32_t { integer = 0, string = 1, color = 2 };
  Reader reader(published);
  reader.skip(8);  // byte order, serial number
  for (std::uint32_t left = reader.number(4); left > 0 && !reader.atEnd(); --left) {
    const std::uint32_t type = reader.number(1);
    reader.skip(1);
    const std::string_view found = reader.paddedText(reader.number(2));
    reader.skip(4);  // serial number
    if (type == string) {
      const std::string_view value = reader.paddedText(reader.number(4));
      if (found == name) return std::string(value);
    } else {
      reader.skip(type == color ? 8 : 4);
    }
  }
  return {};
}

std::string x11StringSetting(const std::string& name) {
  xcb_connection_t* const connection = x11Connection();
  if (connection == nullptr) return {};
  const XcbPointer<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
      connection, xcb_get_selection_owner(connection, x11Atom(connection, "_XSETTINGS_S0")),
      nullptr));
  if (!owner || owner->owner == XCB_WINDOW_NONE) return {};
  const xcb_atom_t settings = x11Atom(connection, "_XSETTINGS_SETTINGS");
  const XcbPointer<xcb_get_property_reply_t> reply(xcb_get_property_reply(
      connection,
      xcb_get_property(connection, 0, owner->owner, settings, settings, 0, longestInWords),
      nullptr));
  if (!reply) return {};
  const auto* const bytes = static_cast<const char*>(xcb_get_property_value(reply.get()));
  return stringSetting(
      {bytes, static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))}, name);
}

}  // namespace quillmar
