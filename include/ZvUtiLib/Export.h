// What marks a class or function as part of the library's interface.
//
// Define ZVUTILIB_STATIC when linking the static variant (its CMake target does so by itself).
#pragma once

#if __cplusplus < 201703L
#  error "ZvUtiLib needs C++17: compile with -std=c++17 or a later one."
// There is no such file. Compilers go on behind #error; here they end, before a page of errors that follow.
#  include <ZvUtiLib needs C++17>
#endif

/// Marks what the library exports.
#if defined(_WIN32)
#  if defined(ZVUTILIB_STATIC)
#    define ZVUTILIB_API
#  elif defined(ZVUTILIB_BUILDING)
#    define ZVUTILIB_API __declspec(dllexport)
#  else
#    define ZVUTILIB_API __declspec(dllimport)
#  endif
#else
#  define ZVUTILIB_API __attribute__((visibility("default")))
#endif

/// The calling convention of functions that the system calls back.
#if defined(_WIN32)
#  define ZVUTILIB_CALLBACK __stdcall
#else
#  define ZVUTILIB_CALLBACK
#endif
