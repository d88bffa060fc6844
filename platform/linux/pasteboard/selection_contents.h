// The contents of an X selection: one text, converted to the targets that requestors ask for.

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <xcb/xcb.h>

#include "platform/linux/x11/x11_connection.h"

namespace quillmar {

/// The atoms that a clipboard owner needs.
struct SelectionAtoms {
  explicit SelectionAtoms(X11Connection& connection);

  xcb_atom_t clipboard, clipboardManager, saveTargets;
  xcb_atom_t targets, timestamp, multiple, atomPair, incr;
  xcb_atom_t utf8String, text, textPlainUtf8, textPlain;
  /// Properties of our own window.
  xcb_atom_t ownTimestamp, ownSaveTargets;
};

/// The value of a property. `bytes` holds its elements in this machine's byte order.
struct SelectionValue {
  xcb_atom_t type = XCB_ATOM_NONE;
  /// Bits of one element: 8 or 32.
  std::uint8_t format = 8;
  std::shared_ptr<const std::string> bytes = std::make_shared<std::string>();

  std::uint32_t elementCount() const {
    return static_cast<std::uint32_t>(bytes->size() / (format / 8));
  }
};

class SelectionContents {
 public:
  /// Longer texts are not offered as Latin-1: converting them would block the main thread.
  static constexpr std::size_t maximumLatin1Bytes = 16 << 20;

  /// `text` is valid UTF-8; `since` is the server's time at which the selection was acquired. The
  /// atoms must outlive this.
  SelectionContents(const SelectionAtoms& atoms, std::shared_ptr<const std::string> text,
                    xcb_timestamp_t since);

  xcb_timestamp_t since() const { return since_; }

  /// The text converted to the target; absent if the target is not supported. The caller handles
  /// MULTIPLE, which asks for several conversions.
  std::optional<SelectionValue> value(xcb_atom_t target) const;

  /// Every target, in order of preference.
  std::vector<xcb_atom_t> targets() const;

  /// The targets that hold the text itself.
  std::vector<xcb_atom_t> textTargets() const;

 private:
  const SelectionAtoms& atoms_;
  std::shared_ptr<const std::string> text_;
  bool isLatin1_;
  xcb_timestamp_t since_;
};

/// A value of type ATOM.
SelectionValue atomList(const std::vector<xcb_atom_t>& atoms);

}  // namespace quillmar
