# What is installed beside the programs, and the Debian package: cpack --config build/release/CPackConfig.cmake
include(GNUInstallDirs)

# Installing does not build the tests.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(PIXOLUNE_RELEASE_DATE 2026-11-21)
set(id com.morvandelite.Pixolune)
set(packaging ${CMAKE_SOURCE_DIR}/packaging)
configure_file(${packaging}/${id}.metainfo.xml.in ${CMAKE_BINARY_DIR}/${id}.metainfo.xml @ONLY)

install(FILES ${packaging}/${id}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_BINARY_DIR}/${id}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${packaging}/pixolune-mime.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME pixolune.xml)
install(FILES ${packaging}/man/pixolune.1 ${packaging}/man/pixolune-cli.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

set(hicolor ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(DIRECTORY ${packaging}/icons/ DESTINATION ${hicolor} FILES_MATCHING PATTERN *.png)
install(FILES ${CMAKE_SOURCE_DIR}/src/app/ui/icons/pixolune.svg DESTINATION ${hicolor}/scalable/apps)
install(FILES ${packaging}/icons/application-x-pixolune.svg DESTINATION ${hicolor}/scalable/mimetypes)
install(FILES ${packaging}/debian/copyright ${packaging}/debian/changelog DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/pixolune)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME pixolune)
set(CPACK_PACKAGE_VENDOR Morvandelite)
set(CPACK_PACKAGE_CONTACT "Morvandelite <pixolune@morvandelite.com>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "editor for still and animated pictures made of objects")
set(CPACK_PACKAGE_DESCRIPTION
  "Pixolune edits pictures that are made of objects on a canvas. Objects are\nmoved, aligned, stacked, painted on and filtered, and every step can be\nundone. Animations come in with one object a frame.\n\nBMP, JPG, GIF, PCX, PNG, TGA, TIFF, PSD, ICO, CUR and ANI files are read and\nwritten, AVI videos are read. The program pixolune-cli runs the same commands\nwithout a window.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/cmake/CompressPages.cmake)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Libraries that are loaded with the first video are not seen in the programs.
foreach(library avformat avcodec swscale avutil)
  string(REGEX MATCH "^[0-9]+" major ${VIDEO_lib${library}_VERSION})
  list(APPEND recommended lib${library}${major})
endforeach()
string(REPLACE ";" ", " recommended "${recommended}")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "${recommended}, fonts-dejavu-core")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-wayland")
include(CPack)
