# quillmar_write_recolourable_svg(FROM TO) copies a monochrome SVG icon and adds the style sheet
# that Plasma replaces to recolour the icon.
#
# Panels that do not recolour icons draw it in this colour. This grey has a contrast of at least 3:1 on
# every background that is lighter than #e0e0e0 or darker than #373737, white and black included.
set(QUILLMAR_NEUTRAL_COLOUR "#808080")

function(quillmar_write_recolourable_svg from to)
  file(READ ${from} svg)
  string(CONCAT head
    "<style type=\"text/css\" id=\"current-color-scheme\">"
    ".ColorScheme-Text{color:${QUILLMAR_NEUTRAL_COLOUR}}</style>"
    "<g fill=\"currentColor\" class=\"ColorScheme-Text\">")
  string(REGEX REPLACE "(<svg[^>]*>)" "\\1${head}" svg "${svg}")
  string(REPLACE "</svg>" "</g></svg>" svg "${svg}")
  file(WRITE ${to} "${svg}")
endfunction()

if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
  quillmar_write_recolourable_svg(${FROM} ${TO})
endif()
