#include "shortcuts/unregistered_hot_key.h"

namespace quillmar {

std::string_view explanation(HotKeyStatus status) {
  switch (status) {
    case HotKeyStatus::keyTaken:
      return "the shortcut is already in use";
    case HotKeyStatus::noSuchKey:
      return "the keyboard or the desktop has no such key";
    case HotKeyStatus::noService:
      return "this session has no service for hot keys";
    case HotKeyStatus::notGranted:
      return "the desktop did not allow the shortcut";
    case HotKeyStatus::serviceFailed:
      return "the service for hot keys failed";
  }
  return "the X server reported an error";
}

}  // namespace quillmar
