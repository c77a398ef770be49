#include <ZvUtiLib/data/CByteBuffer.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "data/SizedBytes.h"

CByteBuffer::CByteBuffer(CByteBuffer&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)),
      capacity_(std::exchange(other.capacity_, 0)),
      length_(std::exchange(other.length_, 0)) {}

CByteBuffer& CByteBuffer::operator=(CByteBuffer&& other) noexcept {
  if (this == &other) return *this;
  SizedFree(std::exchange(data_, std::exchange(other.data_, nullptr)));
  capacity_ = std::exchange(other.capacity_, 0);
  length_ = std::exchange(other.length_, 0);
  return *this;
}

CByteBuffer::~CByteBuffer() {
  SizedFree(data_);
  data_ = nullptr;
  capacity_ = length_ = 0;
}

// Does not clear the first `filled` bytes after those in use, because the caller overwrites them at once.
// The caller also frees `retired`, the replaced block, because the bytes to append may lie in it.
unsigned char* CByteBuffer::Grow(std::int64_t extra, GrowMode mode, std::int64_t filled, void*& retired) {
  constexpr std::int64_t kStep = 1024;
  const std::int64_t needed = length_ + extra;
  if (needed <= capacity_) return data_ + length_;

  const std::int64_t target = mode == GrowDoubling ? std::max(needed, std::int64_t{2} * length_) : needed;
  const std::int64_t capacity = (target + kStep - 1) / kStep * kStep;
  if (capacity > std::numeric_limits<std::int32_t>::max()) return nullptr;
  auto* grown = static_cast<unsigned char*>(zvuti::SizedAllocBytes(static_cast<unsigned>(capacity)));
  if (!grown) return nullptr;

  if (length_ > 0) std::memcpy(grown, data_, static_cast<std::size_t>(length_));
  const std::int64_t written = length_ + filled;
  std::memset(grown + written, 0, static_cast<std::size_t>(capacity - written));
  retired = data_;
  data_ = grown;
  capacity_ = static_cast<std::int32_t>(capacity);
  return data_ + length_;
}

// Appends bytes for which there is already room.
void CByteBuffer::Accept(const void* bytes, std::size_t count) {
  std::memmove(data_ + length_, bytes, count);
  length_ += static_cast<std::int32_t>(count);
}

unsigned char* CByteBuffer::Reserve(int extra, GrowMode mode) {
  void* retired = nullptr;
  unsigned char* place = Grow(extra, mode, 0, retired);
  SizedFree(retired);
  return place;
}

void CByteBuffer::SetLength(int length) {
  if (length < 0) return;
  if (length > length_ && !Reserve(length - length_, GrowRounded)) return;
  length_ = length;
}

unsigned char* CByteBuffer::Append(const void* bytes, unsigned count) {
  void* retired = nullptr;
  unsigned char* place = Grow(count, GrowRounded, bytes ? count : 0, retired);
  if (place && bytes && count > 0) Accept(bytes, count);
  SizedFree(retired);
  return place;
}

void CByteBuffer::AppendText(const char* text) {
  const std::size_t count = text ? std::strlen(text) : 0;
  if (count == 0 || count > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) return;
  const auto bytes = static_cast<std::int64_t>(count);
  void* retired = nullptr;
  // The heap may refuse the larger block but still have the smaller one.
  Grow(bytes + 1, GrowDoubling, bytes, retired);
  if (Grow(bytes, GrowRounded, bytes, retired)) Accept(text, count);
  SizedFree(retired);
}
