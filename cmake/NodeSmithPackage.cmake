# ./dev package: one Debian package with the four editions.

include(GNUInstallDirs)
install(TARGETS canopen-nodesmith j1939-nodesmith can-nodesmith energybus-nodeguide
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

set(CPACK_PACKAGE_NAME nodesmith)
set(CPACK_PACKAGE_VENDOR "Korvel")
set(CPACK_PACKAGE_CONTACT "NodeSmith maintainers <maintainers@nodesmith.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6sql6-sqlite, libqt6svg6")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
include(CPack)
