// The two enumerations written as tags: fixed 32-bit constants, unrelated to the members' values.
//
// The members have no meaning to the library, only to the programs that exchange them.
#pragma once

#include <cstdint>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/CStream.h>

/// Written as one of two tags.
enum BinaryKind : std::uint32_t { BinaryKind0, BinaryKind1 };

/// Written as one of nine tags.
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

/// A value that is not a member writes nothing and throws std::exception, "unknown enumeration member.".
ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, BinaryKind kind);
/// A tag that no member has throws the same exception after its four bytes are consumed. Fewer than four
/// bytes also throw, and they stay on the stream. The target is unchanged in both cases.
ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, BinaryKind& kind);

/// A value that is not a member writes nothing, so the bytes after it move up by four.
ZVUTILIB_API CStreamWriter& operator<<(CStreamWriter& out, StatusKind kind);
/// A tag that no member has is consumed and leaves the target unchanged.
ZVUTILIB_API CStreamReader& operator>>(CStreamReader& in, StatusKind& kind);
