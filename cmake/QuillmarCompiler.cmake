# Compiler settings of all targets. Link quillmar_compiler privately to use them.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# The build tree has the layout of an installation, so programs find libraries in the same way.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")

find_program(CCACHE ccache)
if(CCACHE)
  # Without the first setting, ccache never has a hit for a file that uses a precompiled header. The
  # second one makes build folders share what they compile with the same options.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros
      CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} ${CCACHE})
endif()

add_library(quillmar_compiler INTERFACE)
target_compile_options(quillmar_compiler INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
  -Wno-missing-field-initializers  # omitted designated initializers have defaults
  -fno-semantic-interposition)
target_link_options(quillmar_compiler INTERFACE -Wl,--as-needed -Wl,-z,relro)

if(QUILLMAR_SANITIZE)
  add_compile_options(-fsanitize=${QUILLMAR_SANITIZE} -fno-sanitize-recover=undefined
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${QUILLMAR_SANITIZE})
  # Eight files at once compile in half the time. The core does without, because its windows have
  # layout constants of the same names.
  set(CMAKE_UNITY_BUILD ON)
  set(CMAKE_UNITY_BUILD_BATCH_SIZE 8)
  target_compile_options(quillmar_compiler INTERFACE -Wno-shadow)
endif()
