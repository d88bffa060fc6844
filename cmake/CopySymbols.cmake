# Copies the symbols of an icon set in a form that panels can recolour: NAME.svg becomes
# quillmar-NAME-symbolic.svg. Skips a solid symbol ("-fill") if there is an outlined one, so that all
# symbols have the same weight. GTK and GNOME recolour icons whose name ends in "-symbolic"; Plasma
# recolours those with its style sheet (RecolourableSvg.cmake).
#
#   cmake -DFROM=FOLDER -DTO=FOLDER -P CopySymbols.cmake

include(${CMAKE_CURRENT_LIST_DIR}/RecolourableSvg.cmake)

file(GLOB icons RELATIVE ${FROM} ${FROM}/*.svg)
if(NOT icons)
  message(FATAL_ERROR "There are no icons in ${FROM}; the Debian package is bootstrap-icons.")
endif()
file(REMOVE_RECURSE ${TO})
file(MAKE_DIRECTORY ${TO})
foreach(icon IN LISTS icons)
  cmake_path(GET icon STEM LAST_ONLY name)
  string(REGEX REPLACE "-fill(-|$)" "\\1" outlined ${name})
  if(NOT name STREQUAL outlined AND EXISTS ${FROM}/${outlined}.svg)
    continue()
  endif()
  quillmar_write_recolourable_svg(${FROM}/${icon} ${TO}/quillmar-${name}-symbolic.svg)
endforeach()
