#include "platform/linux/network/curl_library.h"

#include <mutex>
#include <string>

#include <dlfcn.h>

namespace quillmar {

namespace {

Error cannotLoad() {
  const char* reason = dlerror();
  return {std::string("Quillmar cannot download files, because the library libcurl could not be "
                      "loaded (") +
          (reason ? reason : "unknown error") + ")."};
}

/// False if the library lacks the function.
template <class Function>
bool find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(dlsym(library, name));
  return function != nullptr;
}

}  // namespace

Result<CurlLibrary> CurlLibrary::load(const char* name) {
  void* const library = dlopen(name, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (!library) return cannotLoad();
  CurlLibrary curl;
  decltype(&curl_global_init) initialise = nullptr;
  if (!find(library, "curl_global_init", initialise) ||
      !find(library, "curl_easy_init", curl.init) ||
      !find(library, "curl_easy_setopt", curl.setOption) ||
      !find(library, "curl_easy_perform", curl.perform) ||
      !find(library, "curl_easy_getinfo", curl.getInfo) ||
      !find(library, "curl_easy_cleanup", curl.cleanUp) ||
      !find(library, "curl_easy_strerror", curl.errorText)) {
    return cannotLoad();
  }
  // Initialisation is not thread-safe in every version of the library.
  static std::once_flag initialised;
  static CURLcode outcome = CURLE_OK;
  std::call_once(initialised, [&] { outcome = initialise(CURL_GLOBAL_DEFAULT); });
  if (outcome != CURLE_OK) {
    return Error{std::string("Quillmar cannot download files, because libcurl could not be "
                             "initialised: ") +
                 curl.errorText(outcome) + "."};
  }
  return curl;
}

}  // namespace quillmar
