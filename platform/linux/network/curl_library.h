// libcurl, loaded at run time: with its TLS library it needs as much memory as the rest of the
// program. Any thread.

#pragma once

#include <curl/curl.h>

#include "platform/result.h"

namespace quillmar {

/// The functions of libcurl that the program uses. The library stays loaded until the process ends.
struct CurlLibrary {
  static constexpr const char* defaultName = "libcurl.so.4";

  /// Loads and initialises the library. The error is a full sentence.
  static Result<CurlLibrary> load(const char* name = defaultName);

  decltype(&curl_easy_init) init = nullptr;
  decltype(&curl_easy_setopt) setOption = nullptr;
  decltype(&curl_easy_perform) perform = nullptr;
  decltype(&curl_easy_getinfo) getInfo = nullptr;
  decltype(&curl_easy_cleanup) cleanUp = nullptr;
  decltype(&curl_easy_strerror) errorText = nullptr;
};

}  // namespace quillmar
