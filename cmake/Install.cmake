# What is installed, in three components: Runtime is what programs need to run, Development what is needed to build
# them, Tools the companion for the command line (tools/zvuti/CMakeLists.txt).
include(CMakePackageConfigHelpers)

install(TARGETS ${zvutilib_libraries} EXPORT ZvUtiLibTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development)
if(MINGW)
  include(${CMAKE_CURRENT_LIST_DIR}/InstallWindows.cmake)
endif()
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ZvUtiLib DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  COMPONENT Development FILES_MATCHING PATTERN "*.h")

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ZvUtiLib)
install(EXPORT ZvUtiLibTargets NAMESPACE ZvUtiLib:: DESTINATION ${package_dir} COMPONENT Development)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZvUtiLibConfig.cmake.in
  ${PROJECT_BINARY_DIR}/ZvUtiLibConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZvUtiLibConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZvUtiLibConfig.cmake ${PROJECT_BINARY_DIR}/ZvUtiLibConfigVersion.cmake
  DESTINATION ${package_dir} COMPONENT Development)

# The .pc file finds its prefix relative to its own location, so an installed tree can be moved. Its private part is
# for those who link the static variant.
file(RELATIVE_PATH pc_prefix_from_pcdir
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
set(pc_private_packages "")
set(pc_private_libraries ${zvutilib_system_libraries})
if(EXPAT::EXPAT IN_LIST pc_private_libraries)
  list(REMOVE_ITEM pc_private_libraries EXPAT::EXPAT)
  set(pc_private_packages "expat >= 2.4")
endif()
list(TRANSFORM pc_private_libraries PREPEND "-l")
list(JOIN pc_private_libraries " " pc_private_libraries)
configure_file(${PROJECT_SOURCE_DIR}/cmake/ZvUtiLib.pc.in ${PROJECT_BINARY_DIR}/ZvUtiLib.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/ZvUtiLib.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)

# Pretty-printers for gdb. It loads them automatically if the library is installed in /usr; otherwise the user
# has to source them.
set(printers ${PROJECT_SOURCE_DIR}/tools/gdb/zvutilib.py)
install(FILES ${printers} DESTINATION ${CMAKE_INSTALL_DATADIR}/ZvUtiLib/gdb COMPONENT Development)
if(NOT WIN32)
  install(FILES ${printers} RENAME libZvUtiLib.so.${PROJECT_VERSION}-gdb.py
    DESTINATION ${CMAKE_INSTALL_DATADIR}/gdb/auto-load/usr/${CMAKE_INSTALL_LIBDIR} COMPONENT Development)
endif()

# The terms, and the notices of the libraries whose code is in what is installed, or in programs that link the static
# variant: as Debian's packages of these libraries contain them.
install(FILES ${PROJECT_SOURCE_DIR}/COPYING DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/ZvUtiLib COMPONENT Runtime)
if(NOT WIN32)
  foreach(notice libexpat1-dev:Development libcli11-dev:Tools nlohmann-json3-dev:Tools)
    string(REPLACE ":" ";" notice ${notice})
    list(GET notice 0 package)
    list(GET notice 1 component)
    install(FILES /usr/share/doc/${package}/copyright RENAME ${package}.txt OPTIONAL
      DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/ZvUtiLib/notices COMPONENT ${component})
  endforeach()
endif()

# Where another project builds us as well, that project has its own idea of uninstalling.
if(PROJECT_IS_TOP_LEVEL)
  add_custom_target(uninstall COMMAND ${CMAKE_COMMAND} -P ${PROJECT_SOURCE_DIR}/cmake/Uninstall.cmake
    WORKING_DIRECTORY ${PROJECT_BINARY_DIR} VERBATIM)
endif()
