// A running instance for tests. It appends each request of another process as a line to the file
// that its argument names, and reports that file as its settings file. The clipboard text "hold"
// blocks its main thread forever, as a command in the foreground does; so does a menu with the
// activation token "hold". It refuses a menu with the token "refuse". Exits with the application's
// status, or 3 if another instance is running.

#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

#include "platform/linux/application/application_instance.h"
#include "platform/linux/application/process_environment.h"

int main(int, char** arguments) {
  using quillmar::ApplicationInstance;
  using quillmar::Error;
  using quillmar::HotKeyReport;
  using quillmar::HotKeyStatus;
  using quillmar::Result;
  using namespace std::string_literals;
  std::ofstream out(arguments[1], std::ios::app);
  ApplicationInstance* running = nullptr;
  ApplicationInstance instance({
      .activate =
          [&] {
            const auto [timestamp, token] = running->takeActivation();
            out << "activate " << timestamp << " " << token << std::endl;
          },
      .open =
          [&](const std::vector<std::string>& urls) {
            const auto [timestamp, token] = running->takeActivation();
            out << "open " << timestamp << " " << token;
            for (const std::string& url : urls) out << " " << url;
            out << std::endl;
          },
      .showMenu = [&]() -> Result<void> {
        const auto [timestamp, token] = running->takeActivation();
        out << "menu " << timestamp << " " << token << std::endl;
        while (token == "hold") pause();
        if (token == "refuse") return Error{"There is no display."};
        return {};
      },
      .setClipboard =
          [&](const std::string& text) {
            out << "clipboard " << text << std::endl;
            while (text == "hold") pause();
          },
      .notify =
          [&](const std::string& title, const std::string& body) {
            out << "notify " << title << "|" << body << std::endl;
          },
      .hotKeyReport =
          [&] {
            return HotKeyReport{arguments[1],
                                {{"id", "ti\xfft\0le"s, HotKeyStatus::keyTaken},
                                 {"second", "", HotKeyStatus::notGranted}}};
          },
  });
  running = &instance;
  const auto start = instance.start(quillmar::snapshotProcessEnvironment());
  if (!start || start.value() != ApplicationInstance::Start::running) return 3;
  if (write(3, "ready\n", 6) != 6) return 1;
  return instance.run();
}
