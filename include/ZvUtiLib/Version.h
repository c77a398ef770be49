// The version of the library, as numbers and as text. Everything else that names the version reads it from
// here.
//
// A program that needs a certain version compares at compile time: ZVUTILIB_VERSION_NUMBER >= 1000200
// means 1.0.2 or later.
#pragma once

/// The first part of the version. A release with another one is not binary compatible.
#define ZVUTILIB_VERSION_MAJOR 1
/// The second part, from 0 to 99.
#define ZVUTILIB_VERSION_MINOR 0
/// The third part, from 0 to 99.
#define ZVUTILIB_VERSION_PATCH 0
/// The fourth part, from 0 to 99.
#define ZVUTILIB_VERSION_TWEAK 1

/// The version as one number that grows with each release: two decimal digits for each part after the first,
/// so 1.0.0.1 is 1000001.
#define ZVUTILIB_VERSION_NUMBER                                                                     \
  (((ZVUTILIB_VERSION_MAJOR * 100 + ZVUTILIB_VERSION_MINOR) * 100 + ZVUTILIB_VERSION_PATCH) * 100 + \
   ZVUTILIB_VERSION_TWEAK)

/// The version as text: "1.0.0.1".
#define ZVUTILIB_VERSION                                                                        \
  ZVUTILIB_VERSION_TEXT(ZVUTILIB_VERSION_MAJOR, ZVUTILIB_VERSION_MINOR, ZVUTILIB_VERSION_PATCH, \
                        ZVUTILIB_VERSION_TWEAK)

/// Expands the parts of ZVUTILIB_VERSION before they become text.
#define ZVUTILIB_VERSION_TEXT(a, b, c, d) ZVUTILIB_VERSION_JOIN(a, b, c, d)
/// Joins the parts of ZVUTILIB_VERSION as text.
#define ZVUTILIB_VERSION_JOIN(a, b, c, d) #a "." #b "." #c "." #d
