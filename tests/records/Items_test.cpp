#include <ZvUtiLib/records/Items.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <ZvUtiLib/data/TimeValue.h>

#include "tests/support/DoorsGuard.h"
#include "tests/support/WireBytes.h"

namespace {

TEST(Items, TheKeyDecidesWhetherACountTravels) {
  const struct {
    std::uint32_t key;
    std::string tail;  // the bytes from the count on
    int count;
    std::uint8_t tailByte;
    std::string rest;
  } cases[] = {
      {999'999'999, "\x1A\x1B\x1C\x1D\x6A", 0x1D1C1B1A, 0x6A, ""},
      {1'000'000'000, "\x6A", 1, 0x6A, ""},
      {0xFFFFFFFF, "\x6A", 1, 0x6A, ""},
      {0xFFFFFFFF, "", 1, 0, ""},
      {0, "\x1A\x1B", 5, 0x1A, "\x1B"},  // a shorter field takes what the count could not
  };
  for (const auto& c : cases) {
    std::string bytes = "T";
    bytes.append(test::Written(c.key)).append(16, '.').append(c.tail);
    CStreamReader stream(bytes);
    ItemRecord item;
    item.Count = 5;
    stream >> item;
    EXPECT_EQ(item.Count, c.count) << c.key;
    EXPECT_EQ(item.TailByte, c.tailByte) << c.key;
    EXPECT_EQ(test::Bytes(stream), c.rest) << c.key;
  }
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
  EXPECT_EQ(item_.GetExpiryText(), "2024-06-11 10:20:30");
  SetLeft(1);
  EXPECT_FALSE(item_.IsExpired());
  SetLeft(0);
  EXPECT_TRUE(item_.IsExpired());
}

TEST_F(ItemTimes, ArePermanentWithoutAStartOrADuration) {
  SetLeft(-1);
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
      {0, 0, 0, 0, 0},
      {0, 24, 0, 0, 1},
      {36 * kHour, 0, 0, 0, 1},
      {kDay - 1, 0, 0, 0, 0},
      {kDay - 1, 0, 0, 1, 1},
      {23 * kHour, 0, 60, 0, 1},
      {-kHour, 48, 0, 0, 1},
      {48 * kHour, -25, 0, 0, 0},
      {48 * kHour, -48, 0, 0, 0},
      {100'000 * kDay, 0, 0, 0, 100'000},
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

struct IdRange {
  int first, last;
};

TEST(ItemBands, CoverTheirIdsAndNoOthers) {
  const struct {
    const char* name;
    int (*isIn)(int);
    std::vector<IdRange> ranges;
  } bands[] = {
      {"20", IsIdBand20, {{20, 29}}},
      {"4101", IsIdBand4101, {{4101, 4109}}},
      {"20 or 4101", IsIdBand20Or4101, {{20, 29}, {4101, 4109}}},
      {"200 upper",
       IsIdBand200Upper,
       {{250, 299}, {350, 399}, {450, 499}, {550, 599}, {650, 699}, {750, 799}, {850, 899}, {950, 999}}},
      {"5001", IsIdBand5001, {{5001, 5999}}},
      {"7201", IsIdBand7201, {{7201, 8999}}},
      {"9000", IsIdBand9000, {{9000, 9099}}},
      {"100000", IsIdBand100000, {{100'000, 199'999}}},
      {"200001", IsIdBand200001, {{7022, 7022}, {200'001, 209'999}}},
      {"210001", IsIdBand210001, {{210'001, 210'999}}},
      {"211001", IsIdBand211001, {{7117, 7117}, {211'001, 211'999}}},
  };
  for (const auto& band : bands) {
    for (int id = -1100; id < 213'000; ++id) {
      const bool isIn =
          std::ranges::any_of(band.ranges, [id](auto r) { return r.first <= id && id <= r.last; });
      ASSERT_EQ(band.isIn(id), isIn ? 1 : 0) << "band " << band.name << ", id " << id;
    }
  }
  EXPECT_EQ(ToBand20(4101), 20u);
  EXPECT_EQ(ToBand20(4109), 28u);
  EXPECT_EQ(ToBand20(0), 0xFFFFF00Fu);
}

}  // namespace
