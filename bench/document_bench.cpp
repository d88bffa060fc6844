// Decoding and encoding a document of 10,000 items, compared with libraries that only parse or
// print the same JSON.

#include <optional>
#include <string>

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>
#include <simdjson.h>

#include "bench/sample_document.h"
#include "config/document_decoder.h"
#include "config/document_encoder.h"
#include "config/quillmar_config.h"

namespace quillmar {
namespace {

const QuillmarConfig& sample() {
  static const QuillmarConfig config = makeSampleDocument();
  return config;
}

/// The encoded sample, with spare capacity for the parser's padding, as files are read.
const std::string& sampleText() {
  static const std::string text = [] {
    std::string encoded = encodeDocument(sample());
    encoded.reserve(encoded.size() + simdjson::SIMDJSON_PADDING);
    return encoded;
  }();
  return text;
}

void countBytes(benchmark::State& state) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(sampleText().size()));
}

void decodeDocument(benchmark::State& state) {
  for (auto _ : state) {
    std::optional<Result<QuillmarConfig>> result = quillmar::decodeDocument(sampleText());
    benchmark::DoNotOptimize(result);
    // The parser alone has no result to destroy.
    state.PauseTiming();
    result.reset();
    state.ResumeTiming();
  }
  countBytes(state);
}
BENCHMARK(decodeDocument)->Unit(benchmark::kMicrosecond);

void parseWithSimdjson(benchmark::State& state) {
  const std::string& text = sampleText();
  for (auto _ : state) {
    // decodeDocument() has a new parser for each document, too.
    simdjson::dom::parser parser;
    benchmark::DoNotOptimize(parser.parse(text.data(), text.size(), false));
  }
  countBytes(state);
}
BENCHMARK(parseWithSimdjson)->Unit(benchmark::kMicrosecond);

void parseWithNlohmann(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(nlohmann::json::parse(sampleText()));
  countBytes(state);
}
BENCHMARK(parseWithNlohmann)->Unit(benchmark::kMicrosecond);

void encodeDocument(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(quillmar::encodeDocument(sample()));
  countBytes(state);
}
BENCHMARK(encodeDocument)->Unit(benchmark::kMicrosecond);

void dumpWithNlohmann(benchmark::State& state) {
  const nlohmann::json json = nlohmann::json::parse(sampleText());
  for (auto _ : state) benchmark::DoNotOptimize(json.dump(2));
  countBytes(state);
}
BENCHMARK(dumpWithNlohmann)->Unit(benchmark::kMicrosecond);

/// Two documents of one folder with 10,000 items each, without common item ids.
struct ToMerge {
  QuillmarConfig config = makeSampleDocument(1, 10000);
  QuillmarConfig pack = config;

  ToMerge() {
    for (MenuItem& item : pack.categories.front().items) item.id += "-2";
  }
};

void mergeFolders(benchmark::State& state) {
  const ToMerge documents;
  for (auto _ : state) benchmark::DoNotOptimize(documents.config.merging(documents.pack));
}
BENCHMARK(mergeFolders)->Unit(benchmark::kMicrosecond);

void copyFolders(benchmark::State& state) {
  const ToMerge documents;
  for (auto _ : state) {
    QuillmarConfig copy = documents.config;
    QuillmarConfig otherCopy = documents.pack;
    benchmark::DoNotOptimize(copy);
    benchmark::DoNotOptimize(otherCopy);
  }
}
BENCHMARK(copyFolders)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace quillmar
