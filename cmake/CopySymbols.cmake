# Copies a folder of SVG icons under names that panels tint: NAME.svg becomes
# quillmar-NAME-symbolic.svg.
#
#   cmake -DFROM=FOLDER -DTO=FOLDER -P CopySymbols.cmake

file(GLOB icons RELATIVE ${FROM} ${FROM}/*.svg)
if(NOT icons)
  message(FATAL_ERROR "There are no icons in ${FROM}; the Debian package is bootstrap-icons.")
endif()
file(REMOVE_RECURSE ${TO})
file(MAKE_DIRECTORY ${TO})
foreach(icon IN LISTS icons)
  cmake_path(GET icon STEM LAST_ONLY name)
  file(COPY_FILE ${FROM}/${icon} ${TO}/quillmar-${name}-symbolic.svg)
endforeach()
