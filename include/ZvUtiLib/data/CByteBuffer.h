// CByteBuffer: a growable array of bytes, the storage of every binary stream and record image.
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
  GrowRounded,   ///< the required size, rounded up to a multiple of 1024
  GrowDoubling,  ///< at least twice the length in use, rounded up likewise
};

/// The buffer owns one sized block, whose capacity is 0 or a multiple of 1024 and never shrinks. All
/// lengths are signed 32-bit byte counts; a request beyond that range fails as if the heap were
/// exhausted. A failed growth leaves the buffer unchanged. One object may be used by one thread at a time.
class ZVUTILIB_API CByteBuffer : public CBasicObject {
 public:
  /// Empty, with no storage.
  CByteBuffer() = default;
  CByteBuffer(const CByteBuffer&) = delete;
  CByteBuffer& operator=(const CByteBuffer&) = delete;
  /// Take the bytes and the storage. `other` is then as new: no storage, capacity and length 0. The
  /// assignment frees what the left side held; to itself it changes nothing.
  CByteBuffer(CByteBuffer&& other) noexcept;
  CByteBuffer& operator=(CByteBuffer&& other) noexcept;
  ~CByteBuffer() override;

  /// The bytes, or null if the buffer has never grown. Valid until the next growth.
  unsigned char* Data() { return data_; }
  const unsigned char* Data() const { return data_; }
  /// Bytes in use.
  int Length() const { return length_; }
  /// Bytes that fit without growing.
  int Capacity() const { return capacity_; }

  /// Sets the length and grows if needed. Does nothing if the length is negative or growing fails.
  /// Added bytes are zero where nothing was ever written; elsewhere they keep their old contents.
  void SetLength(int length);

  /// Appends `count` bytes, which may lie inside this buffer. If `bytes` is null, only reserves room.
  /// Returns the address of the added bytes, or null on failure. Also returns null when no bytes are
  /// appended to an empty buffer.
  unsigned char* Append(const void* bytes, unsigned count);

  /// Appends a zero-terminated text without its terminator. The text may lie inside this buffer. The
  /// capacity grows as with GrowDoubling, with room for a terminator, or only as far as needed if the heap
  /// refuses that. Null appends nothing.
  void AppendText(const char* text);

  /// Makes room for `extra` bytes after those in use, cleared to zero. Returns the end of the bytes in
  /// use, or null on failure.
  unsigned char* Reserve(int extra, GrowMode mode);

 private:
  friend class zvuti::wire::Room;

  unsigned char* Grow(std::int64_t extra, GrowMode mode, std::int64_t filled, void*& retired);
  void Accept(const void* bytes, std::size_t count);

  unsigned char* data_ = nullptr;
  std::int32_t capacity_ = 0;
  std::int32_t length_ = 0;
};
