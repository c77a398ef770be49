// ParseInt: parses the number at the start of a short text.
#pragma once

#include <cstdint>

#include <ZvUtiLib/Export.h>

/// Returns the decimal number at the start of `text`, after optional white space and an optional sign.
/// Reads at most `length` bytes, at most 31 bytes, and not beyond the terminator; a length of 0xFFFFFFFF
/// means the whole text. Anything after the digits is ignored. Returns 0 for a null text or a text without
/// digits, and the nearest bound for a number beyond 32 bits.
ZVUTILIB_API std::int32_t ParseInt(const char* text, unsigned length);
