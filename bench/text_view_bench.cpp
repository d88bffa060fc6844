// Measures how long a text view that marks invisible characters takes to show long texts, compared
// with the toolkit's own view of plain text, which wraps words in the same way. Prints medians.
// Needs a display.

#include <QApplication>
#include <QPlainTextEdit>
#include <cstdio>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "bench/statistics.h"
#include "platform/memory/memory_task_queues.h"
#include "platform/qt/widgets/text_wrapping.h"
#include "platform/qt/windows/qt_window_system.h"
#include "platform/widgets/text_view.h"
#include "platform/widgets/window.h"

namespace quillmar {
namespace {

constexpr int rounds = 7;
constexpr int width = 480;
constexpr int height = 300;

double medianTime(const std::function<void()>& action) {
  std::vector<double> times;
  for (int round = 0; round < rounds; ++round) {
    const auto start = BenchClock::now();
    action();
    times.push_back(milliseconds(BenchClock::now() - start));
  }
  return median(std::move(times));
}

std::string manyLines() {
  std::string lines;
  for (int i = 0; i < 20'000; ++i) {
    lines += "    Item " + std::to_string(i) + ": echo " + std::string(80, 'x') + "\n";
  }
  return lines;
}

/// `limit` is the maximum of the ratio.
void measure(const char* name, const std::string& text, double limit) {
  const QString shown = QString::fromStdString(text);
  const double plain = medianTime([&] {
    QPlainTextEdit edit;
    edit.resize(width, height);
    edit.setWordWrapMode(wrapModeFor(shown));
    edit.setPlainText(shown);
    edit.show();
    QCoreApplication::processEvents();
  });
  MemoryTaskQueues queues;
  QtWindowSystem windows(queues.mainQueue());
  const double marked = medianTime([&] {
    Window window(windows);
    auto& view = window.setContent<TextView>();
    view.setWidth(width);
    view.setHeight(height);
    view.setEditable(false);
    view.setShowsInvisibleCharacters(true);
    view.setText(text);
    (void)window.show({});
    QCoreApplication::processEvents();
  });
  std::printf("  %-32s %7.1f ms / %7.1f ms = %.2f (limit %.2f)\n", name, marked, plain,
              marked / plain, limit);
}

}  // namespace
}  // namespace quillmar

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  std::printf("a text view with marks / a plain view, median of %d:\n", quillmar::rounds);
  quillmar::measure("2 MB in 20,000 lines", quillmar::manyLines(), 3);
  quillmar::measure("a line of 1,000,000 characters", std::string(1'000'000, 'x'), 1.5);
  quillmar::measure("10,000 blanks before a word", "a" + std::string(10'000, ' ') + "rm", 1.5);
}
