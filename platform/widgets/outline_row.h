// What one row of an outline shows.

#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/control_state.h"
#include "platform/font.h"
#include "platform/image.h"
#include "platform/widgets/label.h"

namespace quillmar {

struct CheckboxCell {
  /// Reported when the user toggles the checkbox.
  std::string identifier;
  ControlState state = ControlState::off;

  bool operator==(const CheckboxCell&) const = default;
};

struct SymbolCell {
  /// If absent, the cell is empty but keeps its width.
  std::optional<Image> image;
  double width = 16;

  bool operator==(const SymbolCell&) const = default;
};

struct TextCell {
  std::string text;
  Font font;
  TextColor color = TextColor::label;
  /// Gives way to the other cells if the row is too narrow, and then ends in an ellipsis.
  bool truncates = false;

  bool operator==(const TextCell&) const = default;
};

using OutlineCell = std::variant<CheckboxCell, SymbolCell, TextCell>;

struct OutlineRow {
  /// From the leading edge.
  std::vector<OutlineCell> cells;
  /// For screen readers; empty for the texts of the cells.
  std::string accessibilityLabel;

  /// The first text; type-ahead compares with it.
  std::string title() const;
  /// What a screen reader says.
  std::string spokenText() const;
  /// The first checkbox; null if there is none.
  const CheckboxCell* checkbox() const;

  bool operator==(const OutlineRow&) const = default;
};

}  // namespace quillmar
