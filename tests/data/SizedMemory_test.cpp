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

std::uint32_t SizeInFrontOf(const void* payload) {
  std::uint32_t size = 0;
  std::memcpy(&size, static_cast<const char*>(payload) - 4, 4);
  return size;
}

TEST(SizedMemory, SizeStandsInFrontOfTheAlignedPayload) {
  for (const unsigned size : {0u, 1u, 1024u, 100'000u}) {
    void* payload = SizedAlloc(size);
    ASSERT_NE(payload, nullptr);
    EXPECT_EQ(SizeInFrontOf(payload), size);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(payload) % alignof(void*), 0u);
    SizedFree(payload);
  }
  SizedFree(nullptr);
}

TEST(SizedMemory, BytesAreSizedBlocksThatTakeLessInFront) {
  void* payload = zvuti::SizedAllocBytes(1024);
  ASSERT_NE(payload, nullptr);
  EXPECT_EQ(SizeInFrontOf(payload), 1024u);
  const auto address = reinterpret_cast<std::uintptr_t>(payload);
  EXPECT_EQ(address % (2 * sizeof(void*)), sizeof(void*));  // one pointer's length behind a block's begin
  SizedFree(payload);
}

TEST(SizedMemory, RefusedBlocksAreNull) {
  test::HeapFaults faults(1, true);
  EXPECT_EQ(SizedAlloc(16), nullptr);
  EXPECT_EQ(new Probe, nullptr);
  EXPECT_EQ(new (std::nothrow) Probe, nullptr);
  EXPECT_THROW((std::vector<int, SizedAllocator<int>>(3)), std::bad_alloc);
}

TEST(SizedMemory, ObjectsLiveInSizedBlocksAndGiveThemBack) {
  const std::int64_t live = test::LiveBlocks();
  for (CBasicObject* object : {new Probe, new (std::nothrow) Probe}) {
    EXPECT_EQ(SizeInFrontOf(object), sizeof(Probe));
    delete object;
  }
  delete[] new (std::nothrow) Probe[3];
  EXPECT_THROW(new (std::nothrow) Throwing, int);
  { std::vector<std::int64_t, SizedAllocator<std::int64_t>> numbers(100, 1); }
  EXPECT_EQ(test::LiveBlocks(), live);
  EXPECT_THROW(SizedAllocator<std::int64_t>().allocate(0x2000'0001), std::bad_alloc);
}

}  // namespace
