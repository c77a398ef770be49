include(CMakePackageConfigHelpers)

install(TARGETS ${zvutilib_libraries} EXPORT ZvUtiLibTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
# Everything that must be built before an installation. Other folders add their installed targets to it.
add_custom_target(zvutilib_installed DEPENDS ${zvutilib_libraries})
if(MINGW)
  include(${CMAKE_CURRENT_LIST_DIR}/InstallWindows.cmake)
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ZvUtiLib DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.h")

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ZvUtiLib)
install(EXPORT ZvUtiLibTargets NAMESPACE ZvUtiLib:: DESTINATION ${package_dir})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZvUtiLibConfig.cmake.in
  ${PROJECT_BINARY_DIR}/ZvUtiLibConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZvUtiLibConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZvUtiLibConfig.cmake ${PROJECT_BINARY_DIR}/ZvUtiLibConfigVersion.cmake
  DESTINATION ${package_dir})

# The .pc file finds its prefix relative to its own location, so an installed tree can be moved.
file(RELATIVE_PATH pc_prefix_from_pcdir
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(${PROJECT_SOURCE_DIR}/cmake/ZvUtiLib.pc.in ${PROJECT_BINARY_DIR}/ZvUtiLib.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/ZvUtiLib.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# Pretty-printers for gdb. It loads them automatically if the library is installed in /usr; otherwise the user
# has to source them.
set(printers ${PROJECT_SOURCE_DIR}/tools/gdb/zvutilib.py)
install(FILES ${printers} DESTINATION ${CMAKE_INSTALL_DATADIR}/ZvUtiLib/gdb)
if(NOT WIN32)
  install(FILES ${printers} RENAME libZvUtiLib.so.${PROJECT_VERSION}-gdb.py
    DESTINATION ${CMAKE_INSTALL_DATADIR}/gdb/auto-load/usr/${CMAKE_INSTALL_LIBDIR})
endif()
