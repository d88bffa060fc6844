# What every target of the tree is compiled with; link quillmar_compiler privately to get it.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Programs and libraries are found beside each other in the build tree as they are when installed.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")

find_program(CCACHE ccache)
if(CCACHE)
  # Without this ccache compiles everything anew that uses a precompiled header.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
endif()

add_library(quillmar_compiler INTERFACE)
target_compile_options(quillmar_compiler INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  -Wno-missing-field-initializers  # of designated ones: what is left out has its default
  -fno-semantic-interposition)
target_link_options(quillmar_compiler INTERFACE -Wl,--as-needed -Wl,-z,relro)

if(QUILLMAR_SANITIZE)
  add_compile_options(-fsanitize=${QUILLMAR_SANITIZE} -fno-sanitize-recover=undefined
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${QUILLMAR_SANITIZE})
endif()
