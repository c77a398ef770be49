# Sets zvutilib_version from include/ZvUtiLib/Version.h, the only place that says it.
set(version_header ${CMAKE_CURRENT_LIST_DIR}/../include/ZvUtiLib/Version.h)
file(STRINGS ${version_header} zvutilib_version REGEX "define ZVUTILIB_VERSION_[A-Z]+ [0-9]+$")
list(TRANSFORM zvutilib_version REPLACE ".* " "")
list(JOIN zvutilib_version "." zvutilib_version)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${version_header})
