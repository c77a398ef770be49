// Bytes of a text as numbers, and what the filters of the word index look up by them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zvuti {

inline std::uint32_t ByteAt(const char* bytes, std::size_t index) {
  return static_cast<unsigned char>(bytes[index]);
}

inline std::uint32_t FourBytesAt(const char* bytes) {
  return ByteAt(bytes, 0) | ByteAt(bytes, 1) << 8 | ByteAt(bytes, 2) << 16 | ByteAt(bytes, 3) << 24;
}

/// For each byte one of `count` bits, the lowest of which is `first`. A count that divides 32 gives letters
/// of both cases the same bit. Looking a bit up is faster than shifting.
template <class Row>
constexpr std::array<Row, 256> BitsOfBytes(unsigned first, unsigned count) {
  std::array<Row, 256> bits{};
  for (std::size_t byte = 0; byte < bits.size(); ++byte) bits[byte] = Row{1} << (first + byte % count);
  return bits;
}

}  // namespace zvuti
