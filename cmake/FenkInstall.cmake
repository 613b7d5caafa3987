# Install: libfenk.so, the headers a host needs to call it, a CMake package (find_package(FenkLib))
# and a pkg-config file; the host program, the simulator and the capture decoder. Each rule names
# the component, and so the Debian package, it belongs to (cmake/FenkPackage.cmake).
include(GNUInstallDirs)

# libfenk.so.<major> is what programs load; the unversioned name is for building against it.
set_target_properties(fenk PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${FENK_SOVERSION})
install(TARGETS fenk LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ COMPONENT runtime NAMELINK_COMPONENT dev)
install(TARGETS lyn-utility RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT utility)
install(TARGETS rcvsim-bin nmeadump RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)

set(_fenk_headers
  fenklib/FenkLaunchers.h fenklib/FenkLauncherTable.h fenklib/FenkLauncherShapes.h
  fenklib/frame/FenkExport.h fenklib/frame/CFenkGlobalSettings.h fenklib/frame/CFenkLibDoc.h fenklib/frame/PortHooks.h
  fenklib/frame/CJobContext.h fenklib/files/ProgressInfo.h)
foreach(h ${_fenk_headers})
  get_filename_component(d ${h} DIRECTORY)
  install(FILES ${h} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/fenk/${d} COMPONENT dev)
endforeach()
# The interfaces a host passes to the library, and the base types they are made of.
install(DIRECTORY platform/basekit DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/fenk/platform COMPONENT dev FILES_MATCHING PATTERN "*.h")
# A progress run's work gets the command layer (run_ProgressDlg).
install(DIRECTORY fenklib/receiver DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/fenk/fenklib COMPONENT dev FILES_MATCHING PATTERN "*.h")
install(DIRECTORY platform/devio DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/fenk/platform COMPONENT dev FILES_MATCHING PATTERN "*.h")

# Both find the prefix from where they lie, so that a copy unpacked anywhere works.
file(RELATIVE_PATH FENK_CONFIG_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/cmake/FenkLib /)
file(RELATIVE_PATH FENK_PC_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" FENK_CONFIG_TO_PREFIX ${FENK_CONFIG_TO_PREFIX})
string(REGEX REPLACE "/$" "" FENK_PC_TO_PREFIX ${FENK_PC_TO_PREFIX})
configure_file(cmake/package/FenkLibConfig.cmake.in ${CMAKE_BINARY_DIR}/package/FenkLibConfig.cmake @ONLY)
configure_file(cmake/package/fenk.pc.in ${CMAKE_BINARY_DIR}/package/fenk.pc @ONLY)
include(CMakePackageConfigHelpers)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/package/FenkLibConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/package/FenkLibConfig.cmake ${CMAKE_BINARY_DIR}/package/FenkLibConfigVersion.cmake DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/FenkLib COMPONENT dev)
install(FILES ${CMAKE_BINARY_DIR}/package/fenk.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)

include(cmake/FenkPackage.cmake)

# Help > User's Guide opens the guide, or the README while there is none, from the program's
# documentation folder.
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/lyn-utility COMPONENT utility)
if(EXISTS ${CMAKE_SOURCE_DIR}/docs/user-guide.md)
  install(FILES docs/user-guide.md DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/lyn-utility COMPONENT utility)
endif()
