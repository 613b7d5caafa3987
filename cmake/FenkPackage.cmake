# Debian packages, built from the install rules by `cpack -G DEB` in the build folder:
#   libfenk      component runtime  the shared library and the data files it reads
#   libfenk-dev  component dev      headers, CMake package, pkg-config file, libfenk.so
#   lyn-utility  component utility  the host program, its desktop entry, icon and AppStream data
#   fenk-tools   component tools    the receiver simulator and the capture decoder
# Every package carries the licence as its copyright file and the packaging changelog; the
# programs carry their manual pages. docs/packaging.md explains the choices.
set(_fenk_pkg_src ${CMAKE_SOURCE_DIR}/packaging)
set(_fenk_pkg_out ${CMAKE_BINARY_DIR}/packaging)
set(FENK_PACKAGE_COMPONENTS runtime dev utility tools)
set(_fenk_package_names libfenk libfenk-dev lyn-utility fenk-tools)
set(FENK_MAINTAINER "The FenkLib developers <developers@fenklib.org>")

# The Debian revision is the one of the changelog's latest entry; its upstream part follows the
# project's version, so a new version needs a new entry.
file(STRINGS ${_fenk_pkg_src}/changelog _fenk_top LIMIT_COUNT 1)
if(NOT _fenk_top MATCHES "^fenklib \\(([^-)]+)-([^)]+)\\)")
  message(FATAL_ERROR "packaging/changelog: the first line carries no version: ${_fenk_top}")
endif()
set(FENK_DEBIAN_REVISION ${CMAKE_MATCH_2})
if(NOT CMAKE_MATCH_1 STREQUAL PROJECT_VERSION)
  message(WARNING "packaging/changelog's latest entry is for ${CMAKE_MATCH_1}, the project is ${PROJECT_VERSION}: add an entry")
endif()

# The copyright file in the machine-readable form, with the licence text of LICENSE.
file(READ ${CMAKE_SOURCE_DIR}/LICENSE _fenk_licence)
string(REGEX REPLACE "^.*\n\n(Permission)" "\\1" _fenk_licence "${_fenk_licence}")
string(STRIP "${_fenk_licence}" _fenk_licence)
string(REPLACE "\n\n" "\n.\n" _fenk_licence "${_fenk_licence}")
string(REPLACE "\n" "\n " FENK_LICENCE_TEXT " ${_fenk_licence}")
configure_file(${_fenk_pkg_src}/copyright.in ${_fenk_pkg_out}/copyright @ONLY)

# Manual pages and the changelog go in compressed the way Debian wants them (-9, no name or time).
set(_fenk_gz)
foreach(src IN ITEMS man/lyn-utility.1 man/rcvsim.1 man/nmeadump.1 changelog)
  get_filename_component(name ${src} NAME)
  if(name STREQUAL "changelog")
    set(name changelog.Debian)
  endif()
  add_custom_command(OUTPUT ${_fenk_pkg_out}/${name}.gz
    COMMAND ${CMAKE_COMMAND} -E copy ${_fenk_pkg_src}/${src} ${_fenk_pkg_out}/${name}
    COMMAND gzip -9nf ${_fenk_pkg_out}/${name}
    DEPENDS ${_fenk_pkg_src}/${src} VERBATIM)
  list(APPEND _fenk_gz ${_fenk_pkg_out}/${name}.gz)
endforeach()
add_custom_target(fenk_package_files ALL DEPENDS ${_fenk_gz})

install(FILES ${_fenk_pkg_out}/lyn-utility.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT utility)
install(FILES ${_fenk_pkg_out}/rcvsim.1.gz ${_fenk_pkg_out}/nmeadump.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
install(FILES ${_fenk_pkg_src}/desktop/org.fenklib.LynUtility.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT utility)
install(FILES ${_fenk_pkg_src}/desktop/org.fenklib.LynUtility.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT utility)
install(FILES ${_fenk_pkg_src}/desktop/org.fenklib.LynUtility.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
  COMPONENT utility)
# Only in the packages: a plain `cmake --install` has no use for Debian's per-package documents.
foreach(component package IN ZIP_LISTS FENK_PACKAGE_COMPONENTS _fenk_package_names)
  install(FILES ${_fenk_pkg_out}/copyright ${_fenk_pkg_out}/changelog.Debian.gz
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package} COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()

# A component some folder installs into that no package takes would be left out silently.
get_cmake_property(_fenk_components COMPONENTS)
foreach(component IN LISTS _fenk_components)
  if(NOT component IN_LIST FENK_PACKAGE_COMPONENTS)
    message(WARNING "install component \"${component}\" is in no Debian package (cmake/FenkPackage.cmake)")
  endif()
endforeach()

set(CPACK_PACKAGE_NAME fenklib)
set(CPACK_PACKAGE_VENDOR "The FenkLib developers")
set(CPACK_PACKAGE_CONTACT ${FENK_MAINTAINER})
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL ${FENK_PACKAGE_COMPONENTS})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${FENK_DEBIAN_REVISION})
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${FENK_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Depends from the libraries the binaries link (dpkg-shlibdeps), between our packages from the
# components' dependencies, and a shlibs file so that other packages' binaries depend on ours.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

foreach(component package IN ZIP_LISTS FENK_PACKAGE_COMPONENTS _fenk_package_names)
  string(TOUPPER ${component} c)
  set(CPACK_DEBIAN_${c}_PACKAGE_NAME ${package})
endforeach()

set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
# The loader's cache is brought up to date by libc's ldconfig trigger.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${_fenk_pkg_src}/control/libfenk/triggers)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "user-interface library for GNSS survey receivers
FenkLib is the user-interface library of a field controller for GNSS survey
receivers and their radio modems. A host program opens a link to a receiver
and calls one of the library's launchers, which runs one dialog that talks to
the receiver in its text command language: receiver information, the live
status sheet, ports and output messages, files and logs, site configuration,
modems and the controller's own tools.

This package holds the shared library and the data files it reads (the
predefined message sets and the receiver message registry).")

set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEV_DEPENDS runtime)
# The headers are made of Qt types, and find_package(FenkLib) asks for Qt.
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "qt6-base-dev")
set(CPACK_COMPONENT_DEV_DESCRIPTION "user-interface library for GNSS survey receivers (development files)
FenkLib is the user-interface library of a field controller for GNSS survey
receivers and their radio modems: a host program opens a link to a receiver
and calls one of the library's launchers.

This package holds what a host needs to build against the library: the
headers of the launchers, the port hooks, the settings and the device
interfaces, the CMake package (find_package(FenkLib), target FenkLib::fenk)
and the pkg-config file (fenk).")

set(CPACK_DEBIAN_UTILITY_PACKAGE_SECTION science)
# The program loads the library at run time, which dpkg-shlibdeps cannot see.
set(CPACK_COMPONENT_UTILITY_DEPENDS runtime)
set(CPACK_COMPONENT_UTILITY_DESCRIPTION "field utility for GNSS survey receivers and radio modems
Lyn Utility connects to a GNSS survey receiver over a serial line or TCP, or
to its built-in simulated receiver, and runs the windows of the FenkLib
library on it: receiver information, the live status with sky and scatter
plots, ports and output messages, the receiver's files and logs, site
configuration, power, Bluetooth, modems and the controller's tools.

Without a display it takes a headless tour of every window, printing what
each one read and saving screenshots.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION science)
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "simulated GNSS survey receiver and NMEA capture decoder
Two command-line tools that come with the FenkLib library.

rcvsim plays a GNSS survey receiver on loopback TCP and a pseudo-terminal:
its command language, scheduled messages, NMEA from a moving constellation,
log files and injected faults.

nmeadump decodes a receiver capture (NMEA sentences and the receiver's
frames) into JSON lines, optionally in gpsd's shape.")

include(CPack)
