# ./dev package: one Debian package with the four editions.

include(GNUInstallDirs)

# The programs look for their data beside themselves, so both live in a folder of their own and the
# commands are links to it.
set(NODESMITH_INSTALL_DIR ${CMAKE_INSTALL_LIBDIR}/nodesmith)
set(editions canopen-nodesmith j1939-nodesmith can-nodesmith energybus-nodeguide)
install(TARGETS ${editions} RUNTIME DESTINATION ${NODESMITH_INSTALL_DIR})
install(FILES ${CMAKE_BINARY_DIR}/bin/data/mt.data ${CMAKE_BINARY_DIR}/bin/data/objects.data
  DESTINATION ${NODESMITH_INSTALL_DIR}/data)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/links)
foreach(edition IN LISTS editions)
  file(CREATE_LINK ../${NODESMITH_INSTALL_DIR}/${edition} ${CMAKE_BINARY_DIR}/links/${edition} SYMBOLIC)
  install(FILES ${CMAKE_BINARY_DIR}/links/${edition} DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/${edition}.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${PROJECT_SOURCE_DIR}/resources/icons/${edition}.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
endforeach()

set(CPACK_PACKAGE_NAME nodesmith)
set(CPACK_PACKAGE_VENDOR "Korvel")
set(CPACK_PACKAGE_CONTACT "NodeSmith maintainers <maintainers@nodesmith.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6sql6-sqlite, libqt6svg6")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
include(CPack)
