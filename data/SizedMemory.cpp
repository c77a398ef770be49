#include <ZvUtiLib/data/SizedMemory.h>

#include <cstdint>
#include <cstring>

namespace {

// On 64-bit targets the header is padded: a payload 4 bytes behind the block would be misaligned.
constexpr std::size_t kHeader = sizeof(void*) == 4 ? 4 : __STDCPP_DEFAULT_NEW_ALIGNMENT__;
constexpr std::size_t kLargest = std::numeric_limits<std::uint32_t>::max();

void* AllocObject(std::size_t size) noexcept {
  return size > kLargest ? nullptr : SizedAlloc(static_cast<unsigned>(size));
}

}  // namespace

void* SizedAlloc(unsigned size) noexcept {
  const std::size_t blockSize = kHeader + size;
  if (blockSize < size) return nullptr;  // only where size_t has 32 bits
  char* block = static_cast<char*>(::operator new(blockSize, std::nothrow));
  if (!block) return nullptr;
  const std::uint32_t stored = size;
  std::memcpy(block + kHeader - sizeof stored, &stored, sizeof stored);
  return block + kHeader;
}

void SizedFree(void* payload) noexcept {
  if (payload) ::operator delete(static_cast<char*>(payload) - kHeader);
}

CBasicObject::~CBasicObject() = default;

void* CBasicObject::operator new(std::size_t size) noexcept { return AllocObject(size); }
void* CBasicObject::operator new[](std::size_t size) noexcept { return AllocObject(size); }
