// Building the menu model of a document.

#include <benchmark/benchmark.h>

#include "app/status_menu_builder.h"
#include "bench/sample_document.h"
#include "platform/linux/files/bundle_directory.h"
#include "platform/linux/icons/icon_theme_images.h"

namespace quillmar {
namespace {

void buildMenu(benchmark::State& state, std::size_t folders) {
  const QuillmarConfig config = makeSampleDocument(folders, 100);
  IconThemeImages images(BundleDirectory::ofThisProgram().iconThemePath(), IconThemes({}, {}));
  for (auto _ : state) benchmark::DoNotOptimize(buildStatusMenu(config, images, false));
}

void menuModelOf10000Items(benchmark::State& state) {
  buildMenu(state, 100);
}
void menuModelOf20000Items(benchmark::State& state) {
  buildMenu(state, 200);
}

BENCHMARK(menuModelOf10000Items)->Unit(benchmark::kMicrosecond);
BENCHMARK(menuModelOf20000Items)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace quillmar
