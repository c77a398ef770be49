// Export macros: mark the classes and functions of the library's public interface.
//
// Define ZVUTILIB_STATIC when linking the static variant (its CMake target does so by itself).
#pragma once

#if __cplusplus < 201703L
#  error "ZvUtiLib needs C++17: compile with -std=c++17 or a later one."
// This file does not exist. Compilers continue after #error; the missing include stops them, before they
// print a page of further errors.
#  include <ZvUtiLib needs C++17>
#endif

/// Marks a class or function that the library exports.
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

/// The calling convention of callbacks from the system.
#if defined(_WIN32)
#  define ZVUTILIB_CALLBACK __stdcall
#else
#  define ZVUTILIB_CALLBACK
#endif
