// Reads integers from bytes, in either byte order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tool {

/// The caller checks that the bytes are there.
class ByteReader {
 public:
  ByteReader(std::string_view bytes, bool isBigEndian) : bytes_(bytes), isBigEndian_(isBigEndian) {}

  std::size_t Size() const { return bytes_.size(); }
  std::string_view Bytes(std::size_t at, std::size_t size) const { return bytes_.substr(at, size); }
  bool IsBigEndian() const { return isBigEndian_; }
  void SetBigEndian(bool isBigEndian) { isBigEndian_ = isBigEndian; }

  std::uint64_t Read(std::size_t at, std::size_t size) const {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
      const std::size_t place = isBigEndian_ ? at + i : at + size - 1 - i;
      value = value << 8 | static_cast<unsigned char>(bytes_[place]);
    }
    return value;
  }
  unsigned U8(std::size_t at) const { return static_cast<unsigned char>(bytes_[at]); }
  unsigned U16(std::size_t at) const { return static_cast<unsigned>(Read(at, 2)); }
  std::uint32_t U32(std::size_t at) const { return static_cast<std::uint32_t>(Read(at, 4)); }

 private:
  std::string_view bytes_;
  bool isBigEndian_;
};

}  // namespace tool
