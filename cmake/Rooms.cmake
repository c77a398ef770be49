# The rooms: the folders that the table in docs/architecture.md lists, which is the only list of them.
file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/../docs/architecture.md rooms REGEX "^\\| `[a-z]+/` ")
list(TRANSFORM rooms REPLACE "^\\| `([a-z]+)/.*" "\\1")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/../docs/architecture.md)

# Adds all sources of the given folders to `target`, so that no list has to name each source. Sources whose
# names end in _posix.cpp or _win32.cpp are built for that host system only.
function(zvutilib_add_rooms target)
  if(WIN32)
    set(other_system posix)
  else()
    set(other_system win32)
  endif()
  foreach(room IN LISTS ARGN)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${room}/*.cpp)
    list(FILTER sources EXCLUDE REGEX "_${other_system}(_test)?\\.cpp$")
    target_sources(${target} PRIVATE ${sources})
  endforeach()
endfunction()
