// The conversion tables of code page 936. Only CodePage936.cpp uses them.
#pragma once

#include <cstdint>

namespace zvuti::gbk::table {

inline constexpr int kFirstLead = 0x81, kFirstTrail = 0x40;
inline constexpr int kTrails = 0xFF - kFirstTrail;

extern const char16_t kSingle[256];            // UTF-16 unit for a single byte
extern const char16_t kDouble[126 * kTrails];  // UTF-16 unit for a pair of bytes, one row per lead byte
extern const std::uint8_t kPageOf[256];        // the page in kPages for the high byte of a UTF-16 unit
// By page and low byte: one byte, or lead << 8 | trail. A best fit of two bytes lacks the highest bit. One of
// one byte, like the question mark of a character outside GBK, is ASCII.
extern const std::uint16_t kPages[];

}  // namespace zvuti::gbk::table
