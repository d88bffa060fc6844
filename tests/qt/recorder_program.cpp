// Shows a window with two controls that record shortcuts, a field and two buttons, until it is
// closed. "Save" is the default button. Writes a line for each event to standard output:
//
//   NAME KEY-CODE CHARACTER MODIFIERS GLOBAL   a control recorded a shortcut; the character as the
//                                              bytes of its UTF-8 in hexadecimal, or "-"
//   NAME none                                  a control removed its shortcut
//   pressed TITLE                              a button was pressed

#include <cstdio>
#include <optional>
#include <string>

#include "platform/environment.h"
#include "platform/linux/application/process_environment.h"
#include "platform/log.h"
#include "platform/memory/memory_task_queues.h"
#include "platform/qt/module/qt_window_module.h"
#include "platform/widgets/button.h"
#include "platform/widgets/label.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "platform/widgets/window.h"
#include "shortcuts/shortcut_recorder_view.h"

namespace quillmar {
namespace {

std::string hexadecimal(const std::string& bytes) {
  if (bytes.empty()) return "-";
  std::string digits;
  for (const unsigned char byte : bytes) {
    char pair[3];
    std::snprintf(pair, sizeof pair, "%02x", byte);
    digits += pair;
  }
  return digits;
}

void write(const std::string& name, const std::optional<KeyboardShortcut>& shortcut) {
  if (shortcut) {
    std::printf("%s %u %s %llu %d\n", name.c_str(), static_cast<unsigned>(shortcut->keyCode),
                hexadecimal(shortcut->character).c_str(),
                static_cast<unsigned long long>(shortcut->modifiers), shortcut->isGlobal ? 1 : 0);
  } else {
    std::printf("%s none\n", name.c_str());
  }
  std::fflush(stdout);
}

void addRecorder(StackView& column, const std::string& name,
                 std::optional<KeyboardShortcut> shortcut) {
  StackView& row = column.add<StackView>(Orientation::horizontal);
  row.setSpacing(8);
  row.add<Label>("Shortcut:");
  auto& recorder = row.add<ShortcutRecorderView>();
  recorder.setAccessibilityLabel(name);
  recorder.setShortcut(std::move(shortcut));
  recorder.setOnChange([name](const auto& changed) { write(name, changed); });
}

void addButton(StackView& row, const std::string& title, const KeyEquivalent& key) {
  auto& button = row.add<Button>(title);
  button.setKeyEquivalent(key);
  button.setOnPress([title] {
    std::printf("pressed %s\n", title.c_str());
    std::fflush(stdout);
  });
}

class QuittingDelegate final : public WindowDelegate {
 public:
  explicit QuittingDelegate(WindowModule& module) : module_(module) {}
  void windowWillClose(Window& /*window*/) override { module_.quit(); }

 private:
  WindowModule& module_;
};

int run() {
  static const Environment environment = snapshotProcessEnvironment();
  static MemoryTaskQueues queues;
  const WindowModuleHost host{.mainQueue = queues.mainQueue(),
                              .environment = environment,
                              .applicationId = "com.tovenworks.quillmar",
                              .applicationName = "Quillmar",
                              .applicationVersion = "",
                              .iconThemePath = "",
                              .log = logToStandardError};
  const auto module = QtWindowModule::start(host);
  if (!module) {
    std::fprintf(stderr, "%s\n", module.error().description.c_str());
    return 1;
  }

  Window window(module.value()->windows());
  window.setTitle("Recorders");
  StackView& column = window.setContent<StackView>(Orientation::vertical);
  column.setSpacing(12);
  column.setEdgeInsets({.top = 20, .left = 20, .bottom = 20, .right = 20});
  column.setAlignment(StackAlignment::trailing);
  addRecorder(
      column, "first",
      KeyboardShortcut{
          .keyCode = 40, .character = "k", .modifiers = modifiers::command | modifiers::shift});
  addRecorder(column, "second", {});
  column.add<TextField>().setWidth(180);
  StackView& buttons = column.add<StackView>(Orientation::horizontal);
  buttons.setSpacing(8);
  addButton(buttons, "Cancel", keys::escape);
  addButton(buttons, "Save", keys::returnKey);

  QuittingDelegate delegate(*module.value());
  window.setDelegate(&delegate);
  window.center();
  if (const auto shown = window.show({}); !shown) {
    std::fprintf(stderr, "%s\n", shown.error().description.c_str());
    return 1;
  }
  module.value()->run();
  return 0;
}

}  // namespace
}  // namespace quillmar

int main() {
  return quillmar::run();
}
