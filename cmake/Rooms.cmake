# Gives `target` all sources below the folders named. A source is built by lying in its room: no list
# names it. What is written for one system ends in _posix.cpp or _win32.cpp and is built only there.
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
