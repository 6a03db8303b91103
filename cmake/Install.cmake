# Installation and the Debian package (cpack -G DEB in the build folder).
include(GNUInstallDirs)

install(TARGETS velmorak velmorak-cardsim RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# The seed database; the per-user copy is made from it on first run (see platform/AppFolder).
install(FILES ${CMAKE_BINARY_DIR}/DBDefaults.MDB DESTINATION ${CMAKE_INSTALL_DATADIR}/velmorak)
install(FILES ${PROJECT_SOURCE_DIR}/docs/user-guide.md DESTINATION ${CMAKE_INSTALL_DATADIR}/velmorak)
install(FILES ${PROJECT_SOURCE_DIR}/data/velmorak.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PROJECT_SOURCE_DIR}/data/velmorak.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${PROJECT_SOURCE_DIR}/docs/man/velmorak.1 ${PROJECT_SOURCE_DIR}/docs/man/velmorak-cardsim.1
    DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME velmorak)
set(CPACK_PACKAGE_VENDOR Velmorak)
set(CPACK_PACKAGE_CONTACT "Velmorak maintainers <maintainers@velmorak.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "Service tool for Velmorak fibre-optic video extender cards")
set(CPACK_PACKAGE_DESCRIPTION
    "Reads and changes the settings of a Velmorak Transmitter or Receiver card over a USB\
 serial port. Includes velmorak-cardsim, a virtual card on a pseudo-terminal.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://velmorak.invalid")
# The Qt 6 and SQLite runtime libraries the executables link; libqt6gui6 carries the xcb plugin.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "libqt6core6 (>= 6.4), libqt6gui6 (>= 6.4), libqt6widgets6 (>= 6.4), libqt6serialport6 (>= 6.4), libqt6printsupport6 (>= 6.4), libqt6svg6 (>= 6.4), libsqlite3-0 (>= 3.35), libc6, libstdc++6")
include(CPack)

# The package check needs plain binaries (a sanitized build would pack the sanitizers' ones).
if(VELMORAK_TESTS AND NOT VELMORAK_SANITIZE)
    add_test(NAME package.deb COMMAND ${PROJECT_SOURCE_DIR}/scripts/check-package ${CMAKE_BINARY_DIR})
    set_tests_properties(package.deb PROPERTIES TIMEOUT 60)
endif()
