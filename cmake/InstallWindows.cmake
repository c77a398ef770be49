# What a package for Windows has besides: the compiler's runtime libraries, debug symbols, documents, the toolchain
# file, an example. Only where the library is built by itself, not as part of another project.

# Exceptions and strings cross the boundary of the DLL, so the DLL and the host program share the compiler's
# runtime libraries. They are installed beside the program, stripped of debug symbols.
foreach(runtime libstdc++-6.dll libgcc_s_dw2-1.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${runtime}
    OUTPUT_VARIABLE runtime_file OUTPUT_STRIP_TRAILING_WHITESPACE)
  execute_process(COMMAND ${CMAKE_STRIP} -o ${PROJECT_BINARY_DIR}/${runtime} ${runtime_file}
    COMMAND_ERROR_IS_FATAL ANY)
  install(PROGRAMS ${PROJECT_BINARY_DIR}/${runtime} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime)
endforeach()

install(FILES ${PROJECT_SOURCE_DIR}/cmake/StaticRuntime.cmake RENAME ZvUtiLibStaticRuntime.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/ZvUtiLib COMPONENT Development)

if(PROJECT_IS_TOP_LEVEL)
  # The symbols are in a file of their own, whose name is in the DLL; debuggers look for it beside the DLL.
  # Names of sources are relative to the project's folder.
  target_compile_options(zvutilib_objects PRIVATE -g -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
  set(debug_file $<TARGET_FILE:ZvUtiLib>.debug)
  # The tools would put the time of day into both files.
  set(timeless ${CMAKE_COMMAND} -E env SOURCE_DATE_EPOCH=0)
  add_custom_command(TARGET ZvUtiLib POST_BUILD
    COMMAND ${timeless} ${CMAKE_OBJCOPY} --only-keep-debug $<TARGET_FILE:ZvUtiLib> ${debug_file}
    COMMAND ${timeless} ${CMAKE_STRIP} $<TARGET_FILE:ZvUtiLib>
    COMMAND ${timeless} ${CMAKE_OBJCOPY} --add-gnu-debuglink=${debug_file} $<TARGET_FILE:ZvUtiLib>
    VERBATIM)
  install(FILES ${debug_file} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Development)

  # The page lies one folder higher there than the ones that it links to.
  file(READ ${PROJECT_SOURCE_DIR}/docs/windows.md page)
  string(REGEX REPLACE "\\]\\(([a-z-]+\\.md)" "](doc/\\1" page "${page}")
  file(WRITE ${PROJECT_BINARY_DIR}/windows/README.md "${page}")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/windows.md)
  install(FILES ${PROJECT_BINARY_DIR}/windows/README.md DESTINATION . COMPONENT Development)
  install(FILES
    ${PROJECT_SOURCE_DIR}/CHANGELOG.md
    ${PROJECT_SOURCE_DIR}/docs/migration.md
    ${PROJECT_SOURCE_DIR}/docs/services.md
    ${PROJECT_SOURCE_DIR}/docs/wire-format.md
    ${PROJECT_SOURCE_DIR}/docs/zvuti.md
    DESTINATION doc COMPONENT Development)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/services DESTINATION doc COMPONENT Development)
  install(FILES ${PROJECT_SOURCE_DIR}/cmake/windows-i686.cmake DESTINATION cmake COMPONENT Development)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/lobby DESTINATION examples COMPONENT Development)

  # The licences of what is in the runtime libraries and in zvuti.exe, as the build machine's packages have them.
  foreach(package gcc-mingw-w64-base mingw-w64-common libcli11-dev nlohmann-json3-dev)
    install(FILES /usr/share/doc/${package}/copyright RENAME ${package}.txt DESTINATION doc/notices
      COMPONENT Development OPTIONAL)
  endforeach()
  install(FILES /usr/share/common-licenses/GPL-3 RENAME GPL-3.txt DESTINATION doc/notices
    COMPONENT Development OPTIONAL)
endif()
