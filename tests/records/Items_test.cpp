#include <ZvUtiLib/records/Items.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <limits>
#include <map>
#include <string>

#include <ZvUtiLib/data/TimeValue.h>

#include "tests/support/DoorsGuard.h"
#include "tests/support/WireBytes.h"

namespace {

// An item up to its count, and what follows it.
std::string ItemBytes(std::uint32_t key, const std::string& tail) {
  std::string bytes = "\x5A";
  return bytes.append(test::Written(key)).append(16, '.').append(tail);
}

TEST(Items, TheKeyDecidesWhetherACountTravels) {
  const struct {
    std::uint32_t key;
    std::string tail;
    int count;
  } cases[] = {
      {999'999'999, "\x1A\x1B\x1C\x1D\x6A", 0x1D1C1B1A},
      {1'000'000'000, "\x6A", 1},
      {0xFFFFFFFF, "\x6A", 1},
  };
  for (const auto& c : cases) {
    const std::string bytes = ItemBytes(c.key, c.tail);
    CStreamReader stream(bytes);
    ItemRecord item;
    item.Count = 5;
    stream >> item;
    EXPECT_EQ(item.Count, c.count) << c.key;
    EXPECT_EQ(item.TailByte, 0x6A) << c.key;
    EXPECT_EQ(stream.Length(), 0) << c.key;
    EXPECT_EQ(test::Written(item), bytes) << c.key;
  }
}

TEST(Items, AnItemThatEndsEarlyKeepsItsCount) {
  ItemRecord item;
  item.Count = 7;
  CStreamReader counted(ItemBytes(0, "\x1A\x1B")), single(ItemBytes(1'000'000'000, ""));
  counted >> item;
  EXPECT_EQ(item.Count, 7);
  EXPECT_EQ(item.TailByte, 0x1A);  // a shorter field takes what the count could not
  EXPECT_EQ(test::Bytes(counted), "\x1B");
  single >> item;
  EXPECT_EQ(item.Count, 1);
}

TEST(Items, CountsWrap) {
  ItemCount item;
  item.SetCount(std::numeric_limits<int>::max());
  item.AddCount(1);
  EXPECT_EQ(item.GetCount(), std::numeric_limits<int>::min());
}

// An item that ends at 2024-06-11 10:20:30, by the clock of the test.
class ItemTimes : public testing::Test {
 protected:
  ItemTimes() {
    item_.StartTime = 24u << 26 | 6 << 22 | 1 << 17 | 10 << 12 | 20 << 6 | 30;
    item_.ValidDays = 10;
    end_ = CTimeValue(2024, 6, 1, 10, 20, 30, -1).GetTime() + 864'000;
    doors_->clockSeconds = [] { return now; };
  }
  void SetLeft(std::int64_t seconds) { now = end_ - seconds; }

  ItemRecord item_;
  std::int64_t end_ = 0;
  test::DoorsGuard doors_;
  static inline std::int64_t now = 0;
};

TEST_F(ItemTimes, RunOutAtTheVeryEnd) {
  EXPECT_EQ(item_.GetExpiryTime(), end_);
  SetLeft(1);
  EXPECT_FALSE(item_.IsExpired());
  SetLeft(0);
  EXPECT_TRUE(item_.IsExpired());
  EXPECT_EQ(item_.GetRemainingDays(0, 0, 0), 0);
  EXPECT_EQ(item_.GetRemainingDays(24, 0, 0), 1);
}

TEST_F(ItemTimes, ArePermanentWithoutAStartOrADuration) {
  SetLeft(-1);
  EXPECT_EQ(item_.GetExpiryText(), "2024-06-11 10:20:30");
  ItemRecord noStart = item_, noDays = item_;
  noStart.StartTime = 0;
  noDays.ValidDays = 0;
  for (const ItemRecord& item : {noStart, noDays}) {
    EXPECT_FALSE(item.HasExpiry());
    EXPECT_FALSE(item.IsExpired());
    EXPECT_EQ(item.GetExpiryText(), "\xD3\xC0\xBE\xC3");  // 永久
    EXPECT_EQ(item.GetRemainingDays(48, 0, 0), 0);
  }
}

TEST_F(ItemTimes, LeaveWholeDays) {
  constexpr std::int64_t kHour = 3600, kDay = 24 * kHour;
  const struct {
    std::int64_t left;
    int hours, minutes, seconds, days;
  } cases[] = {
      {36 * kHour, 0, 0, 0, 1},     {24 * kHour - 1, 0, 0, 0, 0},
      {24 * kHour - 1, 0, 0, 1, 1}, {23 * kHour, 0, 60, 0, 1},
      {-kHour, 48, 0, 0, 1},        {48 * kHour, -25, 0, 0, 0},
      {48 * kHour, -48, 0, 0, 0},   {100'000 * kDay, 0, 0, 0, 100'000},
  };
  for (const auto& c : cases) {
    SetLeft(c.left);
    EXPECT_EQ(item_.GetRemainingDays(c.hours, c.minutes, c.seconds), c.days) << c.left << " " << c.hours;
  }
}

TEST_F(ItemTimes, AreRefundedByWholeDays) {
  const struct {
    std::int64_t days;
    std::uint32_t dailyValue;
    std::int64_t refund;
  } cases[] = {
      {10, 25, 100},
      {1, 1, 0},
      {10, 0, 0},
      {0, 25, 0},
      {-3, 25, 0},
      {1, 0xFFFFFFFF, 1'717'986'918},
      {9999, 0xFFFFFFFF, 17'178'151'193'082},
  };
  for (const auto& c : cases) {
    SetLeft(c.days * 86'400 + 600);
    item_.DailyValue = c.dailyValue;
    EXPECT_EQ(item_.GetRefundValue(), c.refund) << c.days << " " << c.dailyValue;
  }
  EXPECT_EQ(item_.GetRefundOf(-5), -2);
  EXPECT_EQ(item_.GetRefundOf(1'000), 400);
  EXPECT_EQ(item_.GetRefundOf(std::numeric_limits<std::int64_t>::max()), 0);  // the product wraps to -40
}

TEST(ItemBands, CoverTheirIdsAndNoOthers) {
  const struct {
    int (*isIn)(int);
    std::map<int, int> ranges;  // the last of each by its first
  } bands[] = {
      {IsIdBand20, {{20, 29}}},
      {IsIdBand4101, {{4101, 4109}}},
      {IsIdBand20Or4101, {{20, 29}, {4101, 4109}}},
      {IsIdBand200Upper,
       {{250, 299}, {350, 399}, {450, 499}, {550, 599}, {650, 699}, {750, 799}, {850, 899}, {950, 999}}},
      {IsIdBand5001, {{5001, 5999}}},
      {IsIdBand7201, {{7201, 8999}}},
      {IsIdBand9000, {{9000, 9099}}},
      {IsIdBand100000, {{100000, 199999}}},
      {IsIdBand200001, {{7022, 7022}, {200001, 209999}}},
      {IsIdBand210001, {{210001, 210999}}},
      {IsIdBand211001, {{7117, 7117}, {211001, 211999}}},
  };
  for (std::size_t band = 0; band < std::size(bands); ++band) {
    for (int id = -1100; id < 213'000; ++id) {
      const auto behind = bands[band].ranges.upper_bound(id);
      const bool isIn = behind != bands[band].ranges.begin() && id <= std::prev(behind)->second;
      ASSERT_EQ(bands[band].isIn(id), isIn ? 1 : 0) << "band " << band << ", id " << id;
    }
  }
  EXPECT_EQ(ToBand20(4101), 20u);
  EXPECT_EQ(ToBand20(4109), 28u);
  EXPECT_EQ(ToBand20(0), 0xFFFFF00Fu);
}

}  // namespace
