#include <ZvUtiLib/data/SizedMemory.h>

#include <cstdint>
#include <cstring>

#include "data/SizedBytes.h"

namespace {

// On 64-bit targets the header is padded, because a payload 4 bytes after the start of the block would be
// misaligned. Byte blocks use an 8-byte header; SizedFree distinguishes them by the payload's alignment.
constexpr std::size_t kHeader = sizeof(void*) == 4 ? 4 : __STDCPP_DEFAULT_NEW_ALIGNMENT__;
constexpr std::size_t kBytesHeader = sizeof(void*);
constexpr std::size_t kLargest = std::numeric_limits<std::uint32_t>::max();

void* Alloc(unsigned size, std::size_t header) noexcept {
  const std::size_t blockSize = header + size;
  if (blockSize < size) return nullptr;  // possible only if size_t has 32 bits
  char* block = static_cast<char*>(::operator new(blockSize, std::nothrow));
  if (!block) return nullptr;
  const std::uint32_t stored = size;
  std::memcpy(block + header - sizeof stored, &stored, sizeof stored);
  return block + header;
}

void* AllocObject(std::size_t size) noexcept {
  return size > kLargest ? nullptr : SizedAlloc(static_cast<unsigned>(size));
}

}  // namespace

void* SizedAlloc(unsigned size) noexcept { return Alloc(size, kHeader); }

void* zvuti::SizedAllocBytes(unsigned size) noexcept { return Alloc(size, kBytesHeader); }

void SizedFree(void* payload) noexcept {
  if (!payload) return;
  const bool isAligned = reinterpret_cast<std::uintptr_t>(payload) % kHeader == 0;
  ::operator delete(static_cast<char*>(payload) - (isAligned ? kHeader : kBytesHeader));
}

CBasicObject::~CBasicObject() = default;

void* CBasicObject::operator new(std::size_t size) noexcept { return AllocObject(size); }
void* CBasicObject::operator new[](std::size_t size) noexcept { return AllocObject(size); }
