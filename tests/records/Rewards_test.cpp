#include <ZvUtiLib/records/Rewards.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "tests/support/WireBytes.h"

namespace {

constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();

BonusRule Rule(int percent, std::int64_t minBonus) {
  BonusRule rule;
  rule.RuleId = 1;
  rule.Percent = percent;
  rule.MinBonus = minBonus;
  return rule;
}

TEST(BonusRule, BonusIsAPercentageWithAMinimum) {
  const struct {
    int percent;
    std::int64_t minBonus, amount, bonus;
  } cases[] = {
      {10, 0, 1000, 100},       {10, 0, 9, 0},           {10, 500, 1000, 500},
      {10, 500, 10000, 1000},   {0, 7, 1000, 7},         {0, 7, -1000, 7},
      {0, -7, 1000, -7},        {0, -7, -1000, -7},      {10, 0, -1000, 0},
      {-5, -3, 1000, -3},       {10, -500, -1009, -100}, {1, kLeast, kLeast, kLeast / 100},
      {100, kLeast, kMost, -1},  // the product wraps to -100
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Rule(c.percent, c.minBonus).GetBonus(c.amount), c.bonus) << c.percent << " " << c.amount;
  }
}

TEST(BonusRule, TotalAddsHundredsThatWrapAt32Bits) {
  BonusRule rule = Rule(0, 50);
  rule.Hundreds = 3;
  EXPECT_EQ(rule.GetTotalValue(0), 350);
  rule.Hundreds = 0x7FFFFFFF;  // times 100 leaves -100 in 32 bits
  EXPECT_EQ(rule.GetTotalValue(0), -50);
  rule.Hundreds = 1;
  rule.MinBonus = kMost;
  EXPECT_EQ(rule.GetTotalValue(0), kLeast + 99);
}

TEST(BonusRule, IsUsableWithAnIdAndSomethingToGive) {
  BonusRule rule = Rule(0, 0);
  EXPECT_FALSE(rule.IsUsable());
  rule.Entries.resize(1);
  EXPECT_TRUE(rule.IsUsable());
  rule.RuleId = 0;
  EXPECT_FALSE(rule.IsUsable());
  EXPECT_FALSE(Rule(-5, 0).IsUsable());
  EXPECT_TRUE(Rule(-5, 6).IsUsable());
  EXPECT_FALSE(Rule(1, kMost).IsUsable());  // the sum wraps below zero
  rule = Rule(0x7FFFFFFF, 0);
  rule.Extra = 1;  // wraps in 32 bits
  EXPECT_FALSE(rule.IsUsable());
}

TEST(BonusRule, GrantTakesFourFieldsOfEachEntryAndLeavesTheRest) {
  BonusRule rule = Rule(10, 0);
  rule.Hundreds = -2;
  rule.Extra = -3;
  rule.RuleValue = 4;
  rule.Entries.resize(2);
  rule.Entries[1] = {11, 12, 13, 0, {1, 2, 3}, 99};

  BonusGrant grant = {
      .Amount3 = 31, .Value2 = 32, .Amount5 = 33, .Amount6 = 34, .Entries = {{}, {9, 9, 9, 9, {7}}, {}}};
  rule.FillGrant(1000, grant);
  const BonusGrant wanted = {100, -2, 31, -3, 4, 32, 33, 34, {{}, {11, 12, 13, 0, {7}}}};
  EXPECT_EQ(test::Written(grant), test::Written(wanted));

  rule.Entries.clear();
  rule.FillGrant(0, grant);
  EXPECT_EQ(grant.Entries.size(), 2u);
}

TEST(RewardRecord, EmptyMeansNothingThatCounts) {
  EXPECT_TRUE(RewardRecord().IsEmpty());
  RewardRecord reserved;
  reserved.Block.Reserved1[0] = reserved.Block.Reserved2[3] = reserved.Block.Reserved3[0] = 1;
  EXPECT_TRUE(reserved.IsEmpty());
  for (int field = 0; field < 8; ++field) {
    RewardRecord reward;
    RewardBlock& b = reward.Block;
    std::int64_t* const amounts[] = {&b.Amount1, &b.Amount2, &b.Amount3, &b.Amount4, &b.Amount5};
    if (field < 5) *amounts[field] = -1;
    if (field == 5) b.Value3 = 1;
    if (field == 6) b.Value4 = 1;
    if (field == 7) reward.Items.resize(1);
    EXPECT_FALSE(reward.IsEmpty()) << field;
  }
}

TEST(RewardRecord, CountsTheFirstItem7101Alone) {
  RewardRecord reward;
  EXPECT_EQ(reward.GetId7101Count(), 0);
  reward.Items.resize(3);
  reward.Items[1].SetId(7101);
  reward.Items[2].SetId(7101);
  reward.Items[2].SetCount(5);
  EXPECT_EQ(reward.GetId7101Count(), 0);
  reward.Items[1].SetCount(3);
  EXPECT_EQ(reward.GetId7101Count(), 3);
}

}  // namespace
