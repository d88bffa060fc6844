# Copies the symbols of an icon set, one weight of each, in the form that panels recolour: NAME.svg
# becomes quillmar-NAME-symbolic.svg. A solid symbol ("-fill") is left out where there is an outlined
# one. GTK and GNOME recolour icons by the end of their names, Plasma by the style sheet
# (RecolourableSvg.cmake).
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
