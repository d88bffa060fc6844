#include "platform/linux/network/curl_downloader.h"

#include <utility>

namespace quillmar {

void CurlDownloader::get(const std::string& /*url*/, std::size_t /*maximumBodySize*/,
                         Completion completion) {
  mainQueue_.async([completion = std::move(completion)] {
    completion(Error{"This build of Quillmar cannot download files."});
  });
}

}  // namespace quillmar
