#include <ZvUtiLib/data/CByteBuffer.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "tests/support/HeapFaults.h"
#include "tests/support/WireBytes.h"

namespace {

using test::Bytes;

constexpr int kMax = std::numeric_limits<int>::max();

// What a buffer holds by its rules; `block` is the whole capacity, so that what a growing length
// exposes is checked as well.
struct Model {
  std::string block;
  std::size_t length = 0;

  void Grow(std::size_t needed, std::size_t target) {
    if (needed <= block.size()) return;
    block.resize(length);
    block.resize((std::max(needed, target) + 1023) / 1024 * 1024, '\0');
  }
  void Put(const std::string& bytes) {
    Grow(length + bytes.size(), 0);
    block.replace(length, bytes.size(), bytes);
    length += bytes.size();
  }
};

TEST(CByteBuffer, ThousandsOfRandomStepsMatchTheModel) {
  std::mt19937 random(6101);
  const auto below = [&](std::size_t bound) {
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
  };
  for (int run = 0; run < 60; ++run) {
    CByteBuffer buffer;
    Model model;
    for (int step = 0; step < 200; ++step) {
      const std::string bytes(below(8) == 0 ? below(3000) : below(40), static_cast<char>('a' + below(26)));
      const auto count = static_cast<unsigned>(bytes.size());
      const std::size_t kind = below(7);
      if (kind <= 1) {
        model.Put(bytes);
        const unsigned char* place = buffer.Append(bytes.data(), count);
        ASSERT_TRUE(!place || place + count == buffer.Data() + buffer.Length());
      } else if (kind == 2) {
        if (count > 0) model.Grow(model.length + count + 1, 2 * model.length);
        model.Put(bytes);
        buffer.AppendText(bytes.c_str());
      } else if (kind == 3 && model.length > 0) {  // from inside itself
        const std::size_t from = below(model.length), size = below(model.length - from + 1);
        model.Put(std::string(model.block, from, size));
        buffer.Append(buffer.Data() + from, static_cast<unsigned>(size));
      } else if (kind == 4) {
        const std::size_t length = below(6) == 0 ? below(9000) : below(model.length + 1);
        model.Grow(length, 0);
        model.length = length;
        buffer.SetLength(static_cast<int>(length));
      } else if (kind == 5) {
        model.Grow(model.length + count, 0);
        buffer.Append(nullptr, count);
      } else if (kind == 6) {
        const bool isDoubling = below(2) == 0;
        model.Grow(model.length + count, isDoubling ? 2 * model.length : 0);
        buffer.Reserve(static_cast<int>(count), isDoubling ? GrowDoubling : GrowRounded);
      }
      ASSERT_EQ(static_cast<std::size_t>(buffer.Capacity()), model.block.size());
      ASSERT_EQ(Bytes(buffer), model.block.substr(0, model.length));
      ASSERT_TRUE(buffer.Capacity() == 0 ||
                  std::memcmp(buffer.Data(), model.block.data(), model.block.size()) == 0);
    }
  }
}

TEST(CByteBuffer, TextInsideTheBufferSurvivesItsGrowth) {
  CByteBuffer buffer;
  buffer.Append(std::string(1034, 'a').c_str(), 1035);
  buffer.AppendText(reinterpret_cast<const char*>(buffer.Data()) + 21);
  EXPECT_EQ(Bytes(buffer), std::string(1034, 'a') + '\0' + std::string(1013, 'a'));
  EXPECT_EQ(buffer.Capacity(), 3072);  // 2,048 bytes, and room for a terminator
}

TEST(CByteBuffer, NothingIsAllocatedForNothing) {
  test::HeapFaults counter(0);
  CByteBuffer buffer;
  EXPECT_EQ(buffer.Append("", 0), nullptr);
  buffer.AppendText("");
  buffer.AppendText(nullptr);
  buffer.SetLength(-1);
  buffer.SetLength(0);
  EXPECT_EQ(buffer.Reserve(-5, GrowDoubling), nullptr);
  EXPECT_EQ(buffer.Reserve(std::numeric_limits<int>::min(), GrowRounded), nullptr);
  EXPECT_EQ(buffer.Data(), nullptr);
  EXPECT_EQ(counter.Tried(), 0);
}

TEST(CByteBuffer, RequestsBeyondTheSignedRangeFailLikeAFullHeap) {
  CByteBuffer buffer;
  buffer.Append("abc", 3);
  const unsigned char* data = buffer.Data();
  test::HeapFaults counter(0);
  for (const unsigned count : {0xFFFFFFFFu, 0x80000000u, 0x7FFFFFFFu, 0x7FFFFFFDu, 0x7FFFFC00u}) {
    EXPECT_EQ(buffer.Append("abc", count), nullptr) << count;
    EXPECT_EQ(buffer.Append(nullptr, count), nullptr) << count;
  }
  EXPECT_EQ(buffer.Reserve(kMax, GrowRounded), nullptr);
  EXPECT_EQ(buffer.Reserve(kMax - 3, GrowDoubling), nullptr);  // fits, but not once it is rounded up
  buffer.SetLength(kMax);
  EXPECT_EQ(counter.Tried(), 0);
  EXPECT_EQ(buffer.Data(), data);
  EXPECT_EQ(Bytes(buffer), "abc");
  EXPECT_EQ(buffer.Capacity(), 1024);
}

TEST(CByteBuffer, AFailedGrowthChangesNothing) {
  const std::string text(1030, 't');
  CByteBuffer buffer;
  buffer.Append(text.data(), 1000);
  const std::int64_t live = test::LiveBlocks();
  {
    test::HeapFaults full(1, true);
    EXPECT_EQ(buffer.Append(text.data(), 25), nullptr);
    EXPECT_NE(buffer.Append(text.data(), 20), nullptr);  // fits without growing
    buffer.SetLength(2000);
    buffer.AppendText(text.c_str());
    EXPECT_EQ(full.Tried(), 4);
  }
  EXPECT_EQ(Bytes(buffer), std::string(1020, 't'));
  {
    test::HeapFaults once(1);  // the doubled room is refused, the rounded one is not
    buffer.AppendText(text.c_str());
  }
  EXPECT_EQ(buffer.Length(), 2050);
  EXPECT_EQ(buffer.Capacity(), 3072);
  EXPECT_EQ(test::LiveBlocks(), live);
}

}  // namespace
