// The layout that 32-bit hosts compile in: a change here breaks every program that was built before it.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

#include <ZvUtiLib/ZvUtiLib.h>

namespace {

constexpr std::size_t kWord = 4;  // a pointer, a handle, the table of virtual operations

static_assert(sizeof(void*) == kWord && sizeof(std::size_t) == kWord && sizeof(unsigned long) == kWord);
// No data but their virtual operations, or one COM pointer beside them.
static_assert(sizeof(CDebug) == kWord && sizeof(CKxTime) == kWord && sizeof(CUtiBase) == kWord &&
              sizeof(CUtiMacInfo) == kWord && sizeof(CUtiNumber) == kWord && sizeof(CUtiIO) == kWord);
static_assert(sizeof(CUtiXmlElement) == 2 * kWord && sizeof(CUtiXmlNodeList) == kWord &&
              sizeof(CUtiXmlParser) == 2 * kWord + sizeof(CUtiXmlElement));
static_assert(sizeof(CUtiThread) == kWord + 2 * sizeof(HANDLE));
static_assert(sizeof(CUtiBlackList) > sizeof(CStringList) && sizeof(CStringList) % kWord == 0);
static_assert(sizeof(CUtiTurnTable) == 4 * kWord + 5 * sizeof(double) + 2 * kWord);  // one word of padding
static_assert(sizeof(SlotRange) == 2 * sizeof(double));
static_assert(sizeof(tag_KxTimeDWord) == 4);

static_assert(sizeof(CTextString) == 24);
static_assert(sizeof(CByteBuffer) == 4 * kWord && sizeof(CStreamReader) == sizeof(CByteBuffer));
static_assert(sizeof(ItemCount) == 8 && sizeof(ItemRecord) == 32 && sizeof(AccountExtra) == 16);
static_assert(sizeof(AccountRecord) % 8 == 0);  // 64-bit amounts keep their alignment in arrays

TEST(Layout, TheSizeStandsFourBytesInFrontAtTheStartOfTheBlock) {
  for (unsigned size : {0U, 1U, 1000U}) {
    unsigned char* payload = static_cast<unsigned char*>(SizedAlloc(size));
    ASSERT_NE(payload, nullptr);
    std::uint32_t stored = 0;
    std::memcpy(&stored, payload - sizeof stored, sizeof stored);
    EXPECT_EQ(stored, size);
    // The heap gives blocks at multiples of 8, so the payload begins 4 behind one.
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(payload) % 8, 4U);
    SizedFree(payload);
  }
}

}  // namespace
