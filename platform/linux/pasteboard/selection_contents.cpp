#include "platform/linux/pasteboard/selection_contents.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

namespace quillmar {

namespace {

/// Latin-1 is U+0000 to U+00FF. UTF-8 encodes these in one byte, or in two with a first byte up to
/// this value.
constexpr unsigned char lastLatin1Lead = 0xC3;

bool isLatin1(std::string_view utf8) {
  return std::all_of(utf8.begin(), utf8.end(),
                     [](char byte) { return static_cast<unsigned char>(byte) <= lastLatin1Lead; });
}

std::string latin1(std::string_view utf8) {
  std::string out;
  out.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    if (byte < 0x80) {
      out += utf8[i];
    } else {
      const auto next = static_cast<unsigned char>(utf8[++i]);
      out += static_cast<char>((byte & 0x03) << 6 | (next & 0x3F));
    }
  }
  return out;
}

template <class Element>
std::shared_ptr<const std::string> bytesOf(const Element* elements, std::size_t count) {
  return std::make_shared<std::string>(reinterpret_cast<const char*>(elements),
                                       count * sizeof(Element));
}

}  // namespace

SelectionAtoms::SelectionAtoms(X11Connection& connection) {
  const auto atoms = connection.internAtoms(
      {"CLIPBOARD", "CLIPBOARD_MANAGER", "SAVE_TARGETS", "TARGETS", "TIMESTAMP", "MULTIPLE",
       "ATOM_PAIR", "INCR", "UTF8_STRING", "TEXT", "text/plain;charset=utf-8", "text/plain",
       "QUILLMAR_TIMESTAMP", "QUILLMAR_SAVE_TARGETS"});
  std::size_t next = 0;
  for (xcb_atom_t* atom :
       {&clipboard, &clipboardManager, &saveTargets, &targets, &timestamp, &multiple, &atomPair,
        &incr, &utf8String, &text, &textPlainUtf8, &textPlain, &ownTimestamp, &ownSaveTargets}) {
    *atom = atoms[next++];
  }
}

SelectionValue atomList(const std::vector<xcb_atom_t>& atoms) {
  return {XCB_ATOM_ATOM, 32, bytesOf(atoms.data(), atoms.size())};
}

SelectionContents::SelectionContents(const SelectionAtoms& atoms,
                                     std::shared_ptr<const std::string> text, xcb_timestamp_t since)
    : atoms_(atoms),
      text_(std::move(text)),
      isLatin1_(text_->size() <= maximumLatin1Bytes && isLatin1(*text_)),
      since_(since) {}

std::optional<SelectionValue> SelectionContents::value(xcb_atom_t target) const {
  if (target == atoms_.targets) return atomList(targets());
  if (target == atoms_.timestamp) return SelectionValue{XCB_ATOM_INTEGER, 32, bytesOf(&since_, 1)};
  // Only clipboard managers act on this target; an owner has nothing to do.
  if (target == atoms_.saveTargets) {
    return SelectionValue{.type = XCB_ATOM_NONE, .format = 32};
  }
  if (isLatin1_ && (target == XCB_ATOM_STRING || target == atoms_.text)) {
    return SelectionValue{XCB_ATOM_STRING, 8, std::make_shared<std::string>(latin1(*text_))};
  }
  if (target == atoms_.text) return SelectionValue{atoms_.utf8String, 8, text_};
  if (target == atoms_.utf8String || target == atoms_.textPlainUtf8 || target == atoms_.textPlain) {
    return SelectionValue{target, 8, text_};
  }
  return std::nullopt;
}

std::vector<xcb_atom_t> SelectionContents::targets() const {
  auto all = textTargets();
  all.insert(all.begin(), {atoms_.targets, atoms_.timestamp, atoms_.multiple, atoms_.saveTargets});
  return all;
}

std::vector<xcb_atom_t> SelectionContents::textTargets() const {
  std::vector<xcb_atom_t> all{atoms_.utf8String, atoms_.textPlainUtf8};
  if (isLatin1_) all.push_back(XCB_ATOM_STRING);
  all.push_back(atoms_.text);
  all.push_back(atoms_.textPlain);
  return all;
}

}  // namespace quillmar
