// A running instance for tests: it appends what other processes ask it for to the file that its
// argument names, a line each. The text "hold" for the clipboard holds its main thread for good, as
// a command in the foreground would; so does a menu for the activation token "hold". It refuses to
// show one for the token "refuse". Its exit status is the application's; 3 when it is not the one.

#include <fstream>
#include <string>

#include <unistd.h>

#include "platform/linux/application/application_instance.h"
#include "platform/linux/application/process_environment.h"

int main(int, char** arguments) {
  using quillmar::ApplicationInstance;
  using quillmar::Error;
  using quillmar::Result;
  std::ofstream out(arguments[1], std::ios::app);
  ApplicationInstance* running = nullptr;
  ApplicationInstance instance({
      .activate =
          [&] {
            const auto [timestamp, token] = running->takeActivation();
            out << "activate " << timestamp << " " << token << std::endl;
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
  });
  running = &instance;
  const auto start = instance.start(quillmar::snapshotProcessEnvironment());
  if (!start || start.value() != ApplicationInstance::Start::running) return 3;
  if (write(3, "ready\n", 6) != 6) return 1;
  return instance.run();
}
