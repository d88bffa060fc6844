#include "platform/widgets/text_field.h"

#include <algorithm>

#include "platform/text.h"
#include "platform/widgets/view_visitor.h"
#include "platform/widgets/window.h"

namespace quillmar {

void TextField::accept(ViewVisitor& visitor) {
  visitor.visit(*this);
}

void TextField::setText(std::string_view text) {
  const std::string line = text::onOneLine(text);
  if (line == text_) return;
  closeCompletions();
  set(text_, line);
}

void TextField::setEditable(bool editable) {
  if (!editable) closeCompletions();
  set(editable_, editable);
}

void TextField::setCompletions(Completions completions) {
  closeCompletions();
  findCompletions_ = std::move(completions);
}

bool TextField::key(const KeyPress& press) {
  if (completions_.empty()) return false;
  if (press.is(keys::escape)) {
    closeCompletions();
    return true;
  }
  if (press.is(keys::returnKey) || press.is(keys::tab)) {
    if (!selectedCompletion_) return false;
    acceptCompletion(*selectedCompletion_);
    return true;
  }
  for (const KeyEquivalent* const key : {&keys::up, &keys::down, &keys::pageUp, &keys::pageDown}) {
    if (!press.is(*key)) continue;
    set(selectedCompletion_, selectionAfter(press));
    return true;
  }
  return false;
}

std::optional<std::size_t> TextField::selectionAfter(const KeyPress& press) const {
  const std::size_t last = completions_.size() - 1;
  const std::size_t at = selectedCompletion_.value_or(0);
  if (press.is(keys::pageUp)) return at - std::min(at, completionsPerPage - 1);
  if (press.is(keys::pageDown)) return std::min(at + completionsPerPage - 1, last);
  // Between the last and the first one is the typed text, with none selected.
  if (press.is(keys::down)) {
    if (!selectedCompletion_) return 0;
    return at == last ? std::nullopt : std::optional(at + 1);
  }
  if (!selectedCompletion_) return last;
  return at == 0 ? std::nullopt : std::optional(at - 1);
}

void TextField::type(const std::string& text) {
  if (!change(text)) return;
  if (findCompletions_ && isFirstResponder()) showCompletions(findCompletions_(text_));
  reportEdit();
}

void TextField::acceptCompletion(std::size_t index) {
  if (index >= completions_.size()) return;
  // Peers recognise an accepted completion by the open list.
  const bool isEdit = change(std::string(completions_[index].text));
  closeCompletions();
  if (isEdit) reportEdit();
}

bool TextField::change(const std::string& text) {
  const std::string before = text_;
  if (takesInput() && editable_) set(text_, text::onOneLine(text));
  // The real field may already show the rejected text.
  if (text != text_ && peer() != nullptr) peer()->viewChanged();
  return text_ != before;
}

void TextField::reportEdit() {
  if (!onEdit_) return;
  // Copies, because the handler may destroy this field.
  const auto onEdit = onEdit_;
  const std::string edited = text_;
  onEdit(edited);
}

void TextField::showCompletions(std::vector<TextCompletion> completions) {
  if (completions.empty() && completions_.empty()) return;
  completions_ = std::move(completions);
  selectedCompletion_.reset();
  if (peer() != nullptr) peer()->viewChanged();
}

bool TextField::isFirstResponder() const {
  return window() != nullptr && window()->firstResponder() == this;
}

}  // namespace quillmar
