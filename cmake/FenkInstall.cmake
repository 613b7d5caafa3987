# Install: libfenk.so, the headers a host needs to call it, a CMake package (find_package(FenkLib))
# and a pkg-config file; the host program, the simulator and the capture decoder.
include(GNUInstallDirs)

install(TARGETS fenk LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS lyn-utility rcvsim-bin nmeadump RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

set(_fenk_headers
  fenklib/FenkLaunchers.h fenklib/FenkLauncherTable.h fenklib/FenkLauncherShapes.h
  fenklib/frame/FenkExport.h fenklib/frame/CFenkGlobalSettings.h fenklib/frame/CFenkLibDoc.h fenklib/frame/PortHooks.h
  fenklib/frame/CJobContext.h fenklib/files/ProgressInfo.h)
foreach(h ${_fenk_headers})
  get_filename_component(d ${h} DIRECTORY)
  install(FILES ${h} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/fenk/${d})
endforeach()
# The interfaces a host passes to the library, and the base types they are made of.
install(DIRECTORY platform/basekit DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/fenk/platform FILES_MATCHING PATTERN "*.h")
# A progress run's work gets the command layer (run_ProgressDlg).
install(DIRECTORY fenklib/receiver DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/fenk/fenklib FILES_MATCHING PATTERN "*.h")
install(DIRECTORY platform/devio DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/fenk/platform FILES_MATCHING PATTERN "*.h")

configure_file(cmake/package/FenkLibConfig.cmake.in ${CMAKE_BINARY_DIR}/package/FenkLibConfig.cmake @ONLY)
configure_file(cmake/package/fenk.pc.in ${CMAKE_BINARY_DIR}/package/fenk.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/package/FenkLibConfig.cmake DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/FenkLib)
install(FILES ${CMAKE_BINARY_DIR}/package/fenk.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
