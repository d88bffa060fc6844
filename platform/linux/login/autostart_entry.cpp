#include "platform/linux/login/autostart_entry.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include <glib.h>

#include "platform/linux/bus/glib_pointers.h"
#include "platform/linux/files/program_path.h"
#include "platform/text.h"

namespace quillmar {

namespace {

constexpr const char* group = G_KEY_FILE_DESKTOP_GROUP;
constexpr const char* mark = "X-Quillmar-LoginItem";
/// Tells a file that this program has hidden from one that the user has switched off.
constexpr const char* unregisteredMark = "X-Quillmar-Unregistered";

bool isTrue(GKeyFile* file, const char* key) {
  return g_key_file_get_boolean(file, group, key, nullptr);
}

bool isFalse(GKeyFile* file, const char* key) {
  return g_key_file_has_key(file, group, key, nullptr) && !isTrue(file, key);
}

std::string stringOf(GKeyFile* file, const char* key) {
  const GStringPtr value(g_key_file_get_string(file, group, key, nullptr));
  return value ? value.get() : "";
}

/// True if one of the current desktops is in the list.
bool namesCurrentDesktop(const std::string& list, const Environment& environment) {
  const std::vector<std::string> names = text::split(list, ';');
  const std::string current = environment.value("XDG_CURRENT_DESKTOP").value_or("");
  return std::ranges::any_of(text::split(current, ':'), [&](const std::string& desktop) {
    return std::ranges::find(names, desktop) != names.end();
  });
}

/// systemd ignores the key of GNOME, but desktops obey it.
std::string reasonForOff(GKeyFile* file, const Environment& environment) {
  if (isTrue(file, "Hidden")) return "its key Hidden is true";
  if (isFalse(file, "X-GNOME-Autostart-enabled")) {
    return "its key X-GNOME-Autostart-enabled is false";
  }
  const std::string only = stringOf(file, "OnlyShowIn");
  if (!only.empty() && !namesCurrentDesktop(only, environment)) {
    return "its key OnlyShowIn does not name this desktop";
  }
  if (namesCurrentDesktop(stringOf(file, "NotShowIn"), environment)) {
    return "its key NotShowIn names this desktop";
  }
  return "";
}

std::string firstWord(const std::string& command) {
  int count = 0;
  char** words = nullptr;
  if (!g_shell_parse_argv(command.c_str(), &count, &words, nullptr)) return "";
  std::string word = words[0];
  g_strfreev(words);
  for (std::size_t at = word.find("%%"); at != std::string::npos; at = word.find("%%", at + 1)) {
    word.erase(at, 1);
  }
  return word;
}

/// The path as a quoted argument of Exec.
std::string quotedArgument(std::string_view path) {
  std::string quoted = "\"";
  for (const char character : path) {
    if (std::string_view("\"`$\\").find(character) != std::string_view::npos) quoted += '\\';
    if (character == '%') quoted += '%';
    quoted += character;
  }
  return quoted += '"';
}

void setString(GKeyFile* file, const char* key, const std::string& value) {
  g_key_file_set_string(file, group, key, value.c_str());
}

GKeyFilePtr entryOf(const std::string& program) {
  GKeyFilePtr file(g_key_file_new());
  setString(file.get(), "Type", "Application");
  setString(file.get(), "Version", "1.4");
  setString(file.get(), "Name", "Quillmar");
  setString(file.get(), "Comment", "Run your own commands from a menu in the panel");
  setString(file.get(), "Exec", quotedArgument(program));
  setString(file.get(), "Icon", "com.tovenworks.quillmar");
  setString(file.get(), "Terminal", "false");
  setString(file.get(), "StartupNotify", "false");
  setString(file.get(), mark, "true");
  return file;
}

std::string textOf(GKeyFile* file) {
  gsize length = 0;
  const GStringPtr text(g_key_file_to_data(file, &length, nullptr));
  return {text.get(), length};
}

}  // namespace

AutostartEntry parseAutostartEntry(const std::string& text, const Environment& environment,
                                   const FileSystem& files) {
  AutostartEntry entry;
  const GKeyFilePtr file(g_key_file_new());
  if (!g_key_file_load_from_data(file.get(), text.data(), text.size(), G_KEY_FILE_NONE, nullptr)) {
    return entry;
  }
  entry.switchedOffBy = reasonForOff(file.get(), environment);
  entry.program = firstWord(stringOf(file.get(), "Exec"));
  const std::string tried = stringOf(file.get(), "TryExec");
  entry.isProgramInstalled = findProgram(entry.program, environment, files) &&
                             (tried.empty() || findProgram(tried, environment, files));
  entry.isOurs = isTrue(file.get(), mark);
  entry.isUnregistered = isTrue(file.get(), unregisteredMark) && isTrue(file.get(), "Hidden");
  return entry;
}

std::string makeAutostartEntry(const std::string& program) {
  return textOf(entryOf(program).get());
}

std::string makeHiddenAutostartEntry(const std::string& program) {
  const GKeyFilePtr file = entryOf(program);
  setString(file.get(), "Hidden", "true");
  setString(file.get(), unregisteredMark, "true");
  return textOf(file.get());
}

}  // namespace quillmar
