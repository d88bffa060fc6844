#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "config/document_decoder.h"
#include "config/document_encoder.h"

namespace quillmar {
namespace {

TEST(ExampleSettings, AreWrittenAsTheProgramWritesThem) {
  std::ifstream file(QUILLMAR_EXAMPLE_SETTINGS, std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(file), {});
  const auto decoded = decodeDocument(bytes);
  ASSERT_TRUE(decoded) << decoded.error().description;
  EXPECT_EQ(encodeDocument(decoded.value()), bytes);
}

}  // namespace
}  // namespace quillmar
