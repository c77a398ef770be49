#include <ZvUtiLib/data/SizedMemory.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <new>
#include <vector>

#include "data/SizedBytes.h"
#include "tests/support/HeapFaults.h"

namespace {

struct Probe : CBasicObject {
  std::int64_t value = 7;
};

struct Throwing : CBasicObject {
  Throwing() { throw 7; }
};

std::uint32_t SizeBefore(const void* payload) {
  std::uint32_t size = 0;
  std::memcpy(&size, static_cast<const char*>(payload) - 4, 4);
  return size;
}

TEST(SizedMemory, TheSizeIsBeforeTheAlignedPayload) {
  for (const unsigned size : {0u, 1u, 1024u, 100'000u}) {
    void* payload = SizedAlloc(size);
    void* bytes = zvuti::SizedAllocBytes(size);
    EXPECT_EQ(SizeBefore(payload), size);
    EXPECT_EQ(SizeBefore(bytes), size);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(payload) % alignof(void*), 0u);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(bytes) % (2 * sizeof(void*)), sizeof(void*));
    SizedFree(payload);
    SizedFree(bytes);
  }
  SizedFree(nullptr);
}

TEST(SizedMemory, RefusedBlocksAreNull) {
  test::HeapFaults faults(1, true);
  EXPECT_EQ(SizedAlloc(16), nullptr);
  EXPECT_EQ(new Probe, nullptr);
  EXPECT_EQ(new (std::nothrow) Probe, nullptr);
  EXPECT_THROW((std::vector<int, SizedAllocator<int>>(3)), std::bad_alloc);
  // With 64-bit addresses the heap is asked for the first of these; else both are refused before.
  const std::int64_t tried = faults.Tried();
  for (const std::size_t count : {0x3FFF'FFFFu, 0x4000'0000u})
    EXPECT_THROW(SizedAllocator<std::uint32_t>().allocate(count), std::bad_alloc);
  EXPECT_EQ(faults.Tried(), tried + (sizeof(void*) > 4 ? 1 : 0));
}

TEST(SizedMemory, ObjectsLiveInSizedBlocksAndGiveThemBack) {
  const std::int64_t live = test::LiveBlocks();
  for (CBasicObject* object : {new Probe, new (std::nothrow) Probe}) {
    EXPECT_EQ(SizeBefore(object), sizeof(Probe));
    delete object;
  }
  delete[] new (std::nothrow) Probe[3];
  EXPECT_THROW(new (std::nothrow) Throwing, int);
  EXPECT_THROW(new (std::nothrow) Throwing[2], int);
  { std::vector<std::int64_t, SizedAllocator<std::int64_t>> numbers(100, 1); }
  EXPECT_EQ(test::LiveBlocks(), live);
  EXPECT_THROW(SizedAllocator<std::int64_t>().allocate(0x2000'0001), std::bad_alloc);
}

}  // namespace
