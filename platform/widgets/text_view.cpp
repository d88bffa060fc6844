#include "platform/widgets/text_view.h"

#include "platform/widgets/view_visitor.h"

namespace quillmar {

namespace {

std::string withLineFeeds(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    bool isLineEnd = false;
    for (const std::string_view end : {"\r\n", "\r", "\u2029"}) {
      isLineEnd = text.starts_with(end);
      if (!isLineEnd) continue;
      text.remove_prefix(end.size());
      break;
    }
    result += isLineEnd ? '\n' : text.front();
    if (!isLineEnd) text.remove_prefix(1);
  }
  return result;
}

}  // namespace

void TextView::accept(ViewVisitor& visitor) {
  visitor.visit(*this);
}

void TextView::setText(std::string_view text) {
  set(text_, showsInvisibleCharacters_ ? std::string(text) : withLineFeeds(text));
}

bool TextView::key(const KeyPress& press) {
  if (!press.is(keys::returnKey) || !editable_ || !takesInput()) return false;
  type(text_ + "\n");
  return true;
}

void TextView::type(std::string_view text) {
  const std::string before = text_;
  if (takesInput() && editable_) setText(text);
  // The real view may already show the rejected text.
  if (text != text_ && peer() != nullptr) peer()->viewChanged();
  if (text_ == before || !onEdit_) return;
  // Copies, because the handler may destroy this view.
  const auto onEdit = onEdit_;
  const std::string edited = text_;
  onEdit(edited);
}

}  // namespace quillmar
