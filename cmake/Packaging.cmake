# The Debian package: the three programs, the shipped files, the desktop entry with its
# icons, the AppStream metadata, the manual pages and the bash completion.
# `cpack -G DEB` in the build directory (scripts/package) makes it.
set(R6183_PKG ${PROJECT_SOURCE_DIR}/data/package)
set(R6183_PKG_BUILD ${CMAKE_BINARY_DIR}/package-files)
set(R6183_APP_ID org.r6183.ProgrammingTool)

# icons in the sizes of the hicolor theme
set(R6183_ICON_SIZES 16 22 24 32 48 64 128 256)
set(R6183_ICONS)
foreach(size IN LISTS R6183_ICON_SIZES)
  list(APPEND R6183_ICONS ${R6183_PKG_BUILD}/icons/${size}x${size}/apps/r6183.png)
endforeach()
add_custom_command(OUTPUT ${R6183_ICONS}
  COMMAND r6183-mkicons ${PROJECT_SOURCE_DIR}/data/icons/r6183.ico ${R6183_PKG_BUILD}/icons
  DEPENDS r6183-mkicons ${PROJECT_SOURCE_DIR}/data/icons/r6183.ico
  COMMENT "Icons in the standard sizes")

# manual pages and the changelog, compressed as Debian keeps them
set(R6183_GZIPPED)
foreach(f r6183.1 r6183ctl.1 r6183-sim.1 changelog)
  add_custom_command(OUTPUT ${R6183_PKG_BUILD}/${f}.gz
    COMMAND gzip -9n -c ${R6183_PKG}/${f} > ${R6183_PKG_BUILD}/${f}.gz
    DEPENDS ${R6183_PKG}/${f})
  list(APPEND R6183_GZIPPED ${R6183_PKG_BUILD}/${f}.gz)
endforeach()
add_custom_target(r6183_package_files ALL DEPENDS ${R6183_ICONS} ${R6183_GZIPPED})

install(DIRECTORY ${R6183_PKG_BUILD}/icons/ DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES ${R6183_PKG}/${R6183_APP_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${R6183_PKG}/${R6183_APP_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${R6183_PKG_BUILD}/r6183.1.gz ${R6183_PKG_BUILD}/r6183ctl.1.gz ${R6183_PKG_BUILD}/r6183-sim.1.gz
  DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${R6183_PKG}/r6183ctl.bash-completion DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
  RENAME r6183ctl)
install(FILES ${R6183_PKG}/copyright ${R6183_PKG_BUILD}/changelog.gz DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME r6183)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CONTACT "R-6183 Programming Tool <r6183@example.org>" CACHE STRING "maintainer of the package")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS OFF)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "programming tool for the R-6183 intercom and paging unit")
set(CPACK_PACKAGE_DESCRIPTION "The desktop program r6183 prepares the whole programming of an R-6183
intercom and paging control unit (stations, page groups, schedules, audio
routing, class of service, option switches, clocks), keeps it as a file,
prints it and moves it to and from the unit over a serial line.

r6183ctl checks, changes, compares and converts programmings, keeps them as
YAML text and verifies what a unit holds; r6183-sim is a simulated unit on a
pseudo-terminal for tests and training.")
set(CPACK_SET_DESTDIR OFF)
include(CPack)
