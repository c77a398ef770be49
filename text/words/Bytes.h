// Bytes of a text as numbers, and the hash of the word search.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zvuti {

inline std::uint32_t ByteAt(const char* bytes, std::size_t index) {
  return static_cast<unsigned char>(bytes[index]);
}

/// The first of the four bytes is the lowest of the number.
inline std::uint32_t FourBytesAt(const char* bytes) {
  return ByteAt(bytes, 0) | ByteAt(bytes, 1) << 8 | ByteAt(bytes, 2) << 16 | ByteAt(bytes, 3) << 24;
}

/// Multiplies by 2^32 divided by the golden ratio (Knuth, The Art of Computer Programming 3, section 6.4).
/// Use the upper bits of the result.
constexpr std::uint32_t HashOf(std::uint32_t key) { return key * 0x9E3779B1u; }

}  // namespace zvuti
