# pixolune_layer(NAME [LINKS target...] [PRIVATE_LINKS target...])
#
# A layer of the program: every source below the current folder, except its
# ui/, undo/ and paint/ sub-folders, which are layers of their own.
function(pixolune_layer name)
  cmake_parse_arguments(ARG "" "" "LINKS;PRIVATE_LINKS" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS
    ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  list(FILTER sources EXCLUDE REGEX "^${CMAKE_CURRENT_SOURCE_DIR}/(ui|undo|paint)/")
  list(FILTER sources EXCLUDE REGEX "/[Mm]ain\\.cpp$")
  if(NOT sources)
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE pixolune_options ${ARG_LINKS})
    return()
  endif()
  add_library(${name} STATIC ${sources})
  target_link_libraries(${name} PUBLIC pixolune_options ${ARG_LINKS} PRIVATE ${ARG_PRIVATE_LINKS})
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX)
  if(CMAKE_CURRENT_SOURCE_DIR MATCHES "/ui$")
    pixolune_precompile(${name} widgets)
  else()
    pixolune_precompile(${name} standard)
  endif()
endfunction()

# The same for a folder of Qt Widgets.
function(pixolune_ui_layer name)
  pixolune_layer(${name} ${ARGN})
  set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
  target_compile_definitions(${name} PUBLIC ${PIXOLUNE_WIDGET_DEFINITIONS})

  # In a build folder that exists, AUTOMOC looks at new headers only when an old one has changed.
  get_target_property(sources ${name} SOURCES)
  set(list ${CMAKE_CURRENT_BINARY_DIR}/${name}_sources.txt)
  set(known "")
  if(EXISTS ${list})
    file(READ ${list} known)
  endif()
  if(NOT known STREQUAL "${sources}")
    file(WRITE ${list} "${sources}")
    file(REMOVE ${CMAKE_CURRENT_BINARY_DIR}/${name}_autogen/timestamp)
  endif()
endfunction()
