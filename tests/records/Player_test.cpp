#include <ZvUtiLib/records/Player.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <map>
#include <string>

#include "records/Units.h"
#include "tests/support/LiteralRecords.h"
#include "tests/support/WireBytes.h"

namespace {

TEST(PlayerRecord, ResetKeepsStatusTextsAndAttributes) {
  const auto object = test::FilledRecord(*zvuti::wire::FindRecord("PlayerRecord"));
  auto& record = *static_cast<PlayerRecord*>(object.get());
  PlayerRecord wanted;
  wanted.Status = record.Status;
  wanted.Text1 = record.Text1;
  wanted.Text2 = record.Text2;
  wanted.Attributes = record.Attributes;
  record.Reset();
  EXPECT_EQ(test::Written(record), test::Written(wanted));
}

TEST(PlayerRecord, TheAccountKindIsInTheLowFourBits) {
  const struct {
    std::uint32_t flags, sex;
    unsigned kind;
    bool isFemale;
  } cases[] = {{0, 1, 0, true}, {0x14, 2, 4, true}, {0x40, 0, 0, false}, {0xFFFFFFFA, 257, 10, false}};
  for (const auto& c : cases) {
    PlayerRecord record;
    record.AccountFlags = c.flags;
    record.Sex = c.sex;
    for (unsigned kind = 0; kind < 32; ++kind) {
      EXPECT_EQ(record.IsAccountKind(kind), kind == c.kind) << c.flags;
    }
    EXPECT_EQ(record.IsFemale(), c.isFemale) << c.flags;
  }
}

TEST(PlayerRecord, SlotAIsThereUnlessItIsMinusOne) {
  PlayerRecord record;
  for (const std::int16_t slot : std::initializer_list<std::int16_t>{-1, 0, 1, -2}) {
    record.SlotA = slot;
    EXPECT_EQ(record.HasSlotA(), slot != -1) << slot;
  }
}

TEST(PlayerRecord, ChargesNeverGoBelowZeroAndSumsWrap) {
  constexpr auto kLeast = std::numeric_limits<std::int64_t>::min();
  constexpr auto kMost = std::numeric_limits<std::int64_t>::max();
  const struct {
    int kind, result;
    std::int64_t held, amount, left;
  } cases[] = {
      {1, 1, 5, -5, 0},
      {1, 0, 4, -5, 4},
      {8, 1, -3, 2, -1},
      {4, 1, -3, 0, -3},
      {2, 0, -3, -1, -3},
      {2, 0, 3, -0x1'0000'0001, 3},
      {2, 1, 3, 0x1'0000'0001, 4},
      {2, 1, 0x7FFFFFFF, 1, -0x7FFFFFFF - 1},
      {1, 1, kMost, 1, kLeast},
      {1, 1, kMost, -kMost, 0},
      {1, 0, kMost, kLeast, kMost},
      {8, 0, kLeast, kLeast, kLeast},
      {3, 0, 0, 5, 0},
      {0, 0, 0, 5, 0},
  };
  for (const auto& c : cases) {
    PlayerRecord record;
    std::map<int, std::int64_t> left = {{1, 100}, {2, 200}, {3, 0}, {4, 400}, {8, 800}};
    record.Purse1 = c.kind == 1 ? c.held : 100;
    record.Purse2 = static_cast<std::int32_t>(c.kind == 2 ? c.held : 200);
    record.Purse4 = c.kind == 4 ? c.held : 400;
    record.Purse8 = c.kind == 8 ? c.held : 800;
    left[c.kind] = c.left;
    EXPECT_EQ(record.AddToPurse(c.amount, c.kind), c.result) << c.kind << " " << c.held << " " << c.amount;
    for (const auto& [kind, balance] : left) EXPECT_EQ(record.GetPurse(kind), balance) << c.kind;
  }
}

TEST(PlayerRecord, AttributesAreMergedFromAnyMapAndNotMadeByLookingThemUp) {
  PlayerRecord record;
  record.MergeAttributes({{1, 10}, {2, 0}});
  record.MergeAttributes(std::map<std::uint32_t, std::uint32_t>{{0xFFFFFFFF, 0xFFFFFFFE}, {1, 11}});
  record.MergeAttributes(record.Attributes);
  EXPECT_EQ(record.GetAttribute(-1), -2);
  EXPECT_TRUE(record.HasAttribute(2));
  EXPECT_EQ(record.GetAttribute(7), 0);
  EXPECT_FALSE(record.HasAttribute(7));
  EXPECT_EQ(record.Attributes, (PlayerRecord::AttributeMap{{-1, -2}, {1, 11}, {2, 0}}));
}

TEST(PlayerRecord, LabelsGoByKindBeforeMembership) {
  const struct {
    int kind, isMember;
    std::string label;
  } cases[] = {
      {3, 0, "\xD6\xC1\xD7\xF0\xBA\xC5"},           // 至尊号
      {4, 1, "\xC3\xC0\xC5\xAE\xBA\xC5"},           // 美女号
      {10, 1, "\xD4\xC6\xC7\xC5\xBF\xCD\xB7\xFE"},  // 云桥客服
      {0x13, -1, "\xBB\xE1\xD4\xB1"},               // 会员: the whole number counts here
      {0, 0, "\xC6\xD5\xCD\xA8\xCD\xE6\xBC\xD2"},   // 普通玩家
  };
  for (const auto& c : cases) EXPECT_EQ(GetAccountLabel(c.kind, c.isMember), c.label) << c.kind;
}

}  // namespace
