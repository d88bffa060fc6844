#include "platform/bundle_information.h"

#include <simdjson.h>

namespace quillmar {

BundleInformation parseBundleInformation(std::string_view json) {
  simdjson::dom::parser parser;
  simdjson::dom::object object;
  if (parser.parse(json.data(), json.size()).get_object().get(object) != simdjson::SUCCESS) {
    return {};
  }
  BundleInformation information;
  for (const auto& [key, value] : object) {
    std::string_view text;
    if (value.get_string().get(text) == simdjson::SUCCESS) {
      information.insert_or_assign(std::string(key), text);
    }
  }
  return information;
}

}  // namespace quillmar
