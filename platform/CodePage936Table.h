// The conversion tables of code page 936; only CodePage936.cpp reads them.
#pragma once

#include <cstdint>

namespace zvuti::gbk::table {

inline constexpr int kFirstLead = 0x81, kFirstTrail = 0x40;
inline constexpr int kTrails = 0xFF - kFirstTrail;

extern const char16_t kSingle[256];            // UTF-16 unit of a single byte
extern const char16_t kDouble[126 * kTrails];  // UTF-16 unit of lead and trail, row by lead
extern const std::uint8_t kPageOf[256];        // page in kPages by the high byte of a unit
extern const std::uint16_t kPages[];           // bytes of a unit, one or two (lead high)

}  // namespace zvuti::gbk::table
