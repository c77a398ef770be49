// The two enumerations that travel as tags: fixed 32-bit constants unrelated to the members' numbers.
//
// The members have no meaning here, only in the programs that exchange them.
#pragma once

#include <cstdint>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/CStream.h>

/// Goes as one of two tags.
enum BinaryKind : std::uint32_t { BinaryKind0, BinaryKind1 };

/// Goes as one of nine tags.
enum StatusKind : std::uint32_t {
  StatusKind0,
  StatusKind1,
  StatusKind2,
  StatusKind3,
  StatusKind4,
  StatusKind5,
  StatusKind6,
  StatusKind7,
  StatusKind8,
};

/// A value that is no member writes nothing and throws std::exception, "unknown enumeration member.".
ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, BinaryKind kind);
/// A tag without a member throws the same, with its four bytes taken; fewer than four bytes throw, too,
/// and stay. The target is unchanged then.
ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, BinaryKind& kind);

/// A value that is no member writes nothing, so what follows it moves up by four bytes.
ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, StatusKind kind);
/// A tag without a member is taken and leaves the target as it was.
ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, StatusKind& kind);
