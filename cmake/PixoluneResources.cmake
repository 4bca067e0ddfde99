# pixolune_resources(TARGET): compiles the icons and the help into a program that shows windows.
function(pixolune_resources target)
  set(docs ${CMAKE_SOURCE_DIR}/docs)
  file(GLOB pages CONFIGURE_DEPENDS ${docs}/help/*.md ${docs}/help/pictures/*.png)
  target_sources(${target} PRIVATE ${CMAKE_SOURCE_DIR}/src/app/ui/icons/icons.qrc)
  set_target_properties(${target} PROPERTIES AUTORCC ON)
  qt_add_resources(${target} ${target}_help PREFIX /help BASE ${docs}/help FILES ${pages})
  # One page serves readers of the sources as well.
  qt_add_resources(${target} ${target}_docs PREFIX /help BASE ${docs} FILES ${docs}/command-line.md)
endfunction()
