#include <ZvUtiLib/data/Crc16.h>

#include <array>
#include <cstdint>

namespace {

constexpr std::uint16_t ShiftedThrough(unsigned byte) {
  unsigned crc = byte << 8;
  for (int bit = 0; bit < 8; ++bit) crc = (crc & 0x8000) != 0 ? (crc << 1) ^ 0x1021 : crc << 1;
  return static_cast<std::uint16_t>(crc);
}

// The CRC-16/XMODEM table: entry i is the checksum of the single byte i.
constexpr std::array<std::uint16_t, 256> kTable = [] {
  std::array<std::uint16_t, 256> table{};
  for (unsigned i = 0; i < table.size(); ++i) table[i] = ShiftedThrough(i);
  return table;
}();
static_assert(kTable[1] == 0x1021 && kTable[255] == 0x1EF0);

}  // namespace

unsigned Crc16(unsigned init, const void* data, unsigned length) {
  const auto* bytes = static_cast<const unsigned char*>(data);
  unsigned crc = init;
  for (unsigned i = 0; i < length; ++i) crc = (crc & 0xFF) << 8 ^ kTable[(crc >> 8 & 0xFF) ^ bytes[i]];
  return crc;
}
