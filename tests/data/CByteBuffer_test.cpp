#include <ZvUtiLib/data/CByteBuffer.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/support/HeapFaults.h"
#include "tests/support/WireBytes.h"

namespace {

using test::Bytes;

constexpr int kMax = std::numeric_limits<int>::max();

TEST(CByteBuffer, TextInsideTheBufferSurvivesItsGrowth) {
  CByteBuffer buffer;
  buffer.Append(std::string(1034, 'a').c_str(), 1035);
  buffer.AppendText(reinterpret_cast<const char*>(buffer.Data()) + 21);
  EXPECT_EQ(Bytes(buffer), std::string(1034, 'a') + '\0' + std::string(1013, 'a'));
  EXPECT_EQ(buffer.Capacity(), 3072);  // 2,048 bytes, and room for a terminator
}

TEST(CByteBuffer, RequestsForNothingMakeNoBlock) {
  CByteBuffer buffer;
  EXPECT_EQ(buffer.Append("", 0), nullptr);
  buffer.AppendText("");
  buffer.AppendText(nullptr);
  buffer.SetLength(-1);
  buffer.SetLength(0);
  EXPECT_EQ(buffer.Reserve(-5, GrowDoubling), nullptr);
  EXPECT_EQ(buffer.Reserve(std::numeric_limits<int>::min(), GrowRounded), nullptr);
  EXPECT_EQ(buffer.Data(), nullptr);
}

TEST(CByteBuffer, RequestsBeyondTheSignedRangeFailLikeAFullHeap) {
  CByteBuffer buffer;
  buffer.Append("abc", 3);
  test::HeapFaults counter(0);
  for (const unsigned count : {0xFFFFFFFFu, 0x80000000u, 0x7FFFFFFFu, 0x7FFFFFFDu, 0x7FFFFC00u}) {
    EXPECT_EQ(buffer.Append("abc", count), nullptr) << count;
    EXPECT_EQ(buffer.Append(nullptr, count), nullptr) << count;
  }
  EXPECT_EQ(buffer.Reserve(kMax, GrowRounded), nullptr);
  EXPECT_EQ(buffer.Reserve(kMax - 3, GrowDoubling), nullptr);  // fits, but not once it is rounded up
  buffer.SetLength(kMax);
  EXPECT_EQ(counter.Tried(), 0);
  EXPECT_EQ(Bytes(buffer), "abc");
  EXPECT_EQ(buffer.Capacity(), 1024);
}

TEST(CByteBuffer, ATextThatCannotDoubleTheCapacityTakesWhatItNeeds) {
  CByteBuffer buffer;
  buffer.Append(std::string(3070, 't').c_str(), 3070);
  test::HeapFaults once(1);
  buffer.AppendText("a text");
  EXPECT_EQ(Bytes(buffer), std::string(3070, 't') + "a text");
  EXPECT_EQ(buffer.Capacity(), 4096);
}

}  // namespace
