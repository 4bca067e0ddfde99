# Run by cpack on what goes into a package: manual pages and the change log are stored compressed.
file(GLOB_RECURSE pages ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share/man/*.1)
execute_process(COMMAND gzip -9 -n -f ${pages} ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr/share/doc/pixolune/changelog
  COMMAND_ERROR_IS_FATAL ANY)
