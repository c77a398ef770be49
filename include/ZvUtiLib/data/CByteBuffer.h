// CByteBuffer: a growable run of bytes, the storage under every binary stream and record image.
#pragma once

#include <cstddef>
#include <cstdint>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/data/SizedMemory.h>

namespace zvuti::wire {
class Room;
}

/// How a buffer picks its next capacity.
enum GrowMode {
  GrowRounded,   ///< what is needed, rounded up to a multiple of 1024
  GrowDoubling,  ///< at least twice the length in use, rounded in the same way
};

/// The buffer owns one sized block, whose capacity is 0 or a multiple of 1024 and never shrinks. All
/// lengths are signed 32-bit numbers of bytes; a request beyond that range fails like an exhausted
/// heap. A failed growth leaves the buffer as it was. One object serves one thread at a time.
class ZVUTILIB_API CByteBuffer : public CBasicObject {
 public:
  /// Empty, with no storage.
  CByteBuffer() = default;
  CByteBuffer(const CByteBuffer&) = delete;
  CByteBuffer& operator=(const CByteBuffer&) = delete;
  ~CByteBuffer() override;

  /// The bytes, or null while the buffer has never grown; good until the next growth.
  unsigned char* Data() { return data_; }
  const unsigned char* Data() const { return data_; }
  /// Bytes in use.
  int Length() const { return length_; }
  /// Bytes that fit without growing.
  int Capacity() const { return capacity_; }

  /// Sets the length, growing if needed; a negative length, or a growth that fails, changes nothing.
  /// Bytes that come into use are zero where nothing was ever written, old bytes otherwise.
  void SetLength(int length);

  /// Adds `count` bytes, which may lie inside this buffer; null `bytes` only make room for them.
  /// Returns the place of the added bytes (null for no bytes on an empty buffer), null on failure.
  unsigned char* Append(const void* bytes, unsigned count);

  /// Adds a zero-terminated text without its terminator; it may lie inside this buffer. Capacity at
  /// least doubles when it grows, and leaves room for a terminator. Null adds nothing.
  void AppendText(const char* text);

  /// Makes room for `extra` bytes behind those in use, cleared to zero. Returns the end of the bytes
  /// in use, null on failure.
  unsigned char* Reserve(int extra, GrowMode mode);

 private:
  friend class zvuti::wire::Room;

  unsigned char* Grow(std::int64_t extra, GrowMode mode, std::int64_t filled, void*& retired);
  void Accept(const void* bytes, std::size_t count);

  unsigned char* data_ = nullptr;
  std::int32_t capacity_ = 0;
  std::int32_t length_ = 0;
};
