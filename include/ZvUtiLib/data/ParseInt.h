// ParseInt: the number at the beginning of a short text.
#pragma once

#include <cstdint>

#include <ZvUtiLib/Export.h>

/// The decimal number at the beginning of `text`, behind white space and with or without a sign.
/// Looks at `length` bytes, at 31 at most, and no further than the text's terminator; a length of
/// 0xFFFFFFFF means the whole text. What follows the digits is ignored. Text without digits and a null
/// text give 0, numbers beyond 32 bits the nearest bound.
ZVUTILIB_API std::int32_t ParseInt(const char* text, unsigned length);
