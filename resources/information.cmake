# What a packager decides about a build, checked. Also runs alone, for the tests of the checks:
#
#   cmake -DQUILLMAR_SITE_URL=... -P information.cmake
cmake_minimum_required(VERSION 3.25)

set(QUILLMAR_SITE_URL https://quillmar.example CACHE STRING "The product's web site")
set(QUILLMAR_PACKS_URL https://quillmar.example/packs CACHE STRING "The web page with packs")
set(QUILLMAR_SUPPORT_ADDRESS support@quillmar.example CACHE STRING "The e-mail address for support")
set(QUILLMAR_FEED_URL "" CACHE STRING "The feed of updates; a build without one has no updates")
set(QUILLMAR_PUBLIC_ED_KEY "" CACHE STRING
  "The Ed25519 key, in base64, that updates are signed with; a build without one has no updates")

function(quillmar_require variable pattern what)
  if(NOT "${${variable}}" MATCHES "${pattern}")
    message(FATAL_ERROR "${variable} must be ${what}, and is “${${variable}}”.")
  endif()
endfunction()

set(https "https://[^/ \n][^ \n]*")
string(REPEAT "[A-Za-z0-9+/]" 43 key)
quillmar_require(QUILLMAR_SITE_URL "^${https}$" "an https address")
quillmar_require(QUILLMAR_PACKS_URL "^${https}$" "an https address")
quillmar_require(QUILLMAR_SUPPORT_ADDRESS "^[^@ \n]+@[^@ \n]+$" "an e-mail address")
quillmar_require(QUILLMAR_FEED_URL "^(${https})?$" "an https address or empty")
quillmar_require(QUILLMAR_PUBLIC_ED_KEY "^(${key}=)?$" "32 bytes in base64 or empty")
if(QUILLMAR_FEED_URL STREQUAL "" AND NOT QUILLMAR_PUBLIC_ED_KEY STREQUAL ""
   OR QUILLMAR_PUBLIC_ED_KEY STREQUAL "" AND NOT QUILLMAR_FEED_URL STREQUAL "")
  message(WARNING "This build has no updates: "
    "they need both QUILLMAR_FEED_URL and QUILLMAR_PUBLIC_ED_KEY.")
endif()
