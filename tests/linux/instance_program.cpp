// A running instance for tests: it appends what other processes ask it for to the file that its
// argument names, a line each. Its exit status is the application's; 3 when it is not the one.

#include <fstream>

#include <unistd.h>

#include "platform/linux/application/application_instance.h"

int main(int, char** arguments) {
  std::ofstream out(arguments[1], std::ios::app);
  quillmar::ApplicationInstance instance({
      .activate = [&] { out << "activate" << std::endl; },
      .setClipboard = [&](const std::string& text) { out << "clipboard " << text << std::endl; },
      .notify =
          [&](const std::string& title, const std::string& body) {
            out << "notify " << title << "|" << body << std::endl;
          },
  });
  if (instance.start() != quillmar::ApplicationInstance::Start::running) return 3;
  if (write(3, "ready\n", 6) != 6) return 1;
  return instance.run();
}
