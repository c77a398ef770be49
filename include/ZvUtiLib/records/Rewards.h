// Rewards: what a player receives in addition to an amount, and the rules that determine it.
//
// Amounts are signed 64-bit whole numbers. Sums and products beyond their width wrap.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/records/Items.h>
#include <ZvUtiLib/records/RecordOperators.h>

/// An entry of a grant. Written as a block of 16 bytes.
struct GrantEntry {
  std::uint32_t Value1 = 0;
  std::uint32_t Value2 = 0;
  std::uint32_t Value3 = 0;
  std::uint8_t Switch = 1;
  std::uint8_t Reserved[3] = {};
};
static_assert(sizeof(GrantEntry) == 16 && offsetof(GrantEntry, Value2) == 4 &&
              offsetof(GrantEntry, Value3) == 8 && offsetof(GrantEntry, Switch) == 12);

/// An entry of a rule: the layout of GrantEntry, followed by an amount. Written as a block of 24 bytes.
struct RuleEntry {
  std::uint32_t Value1 = 0;
  std::uint32_t Value2 = 0;
  std::uint32_t Value3 = 0;
  std::uint8_t Switch = 1;
  std::uint8_t Reserved[3] = {};
  std::int64_t Amount = 0;
};
static_assert(sizeof(RuleEntry) == 24 && offsetof(RuleEntry, Value2) == 4 &&
              offsetof(RuleEntry, Value3) == 8 && offsetof(RuleEntry, Switch) == 12 &&
              offsetof(RuleEntry, Amount) == 16);

/// What a BonusRule grants for an amount.
struct BonusGrant {
  std::int64_t BonusAmount = 0;
  std::int64_t GrantedHundreds = 0;
  std::int64_t Amount3 = 0;
  std::int64_t GrantedExtra = 0;
  std::uint32_t GrantedValue = 0;
  std::uint32_t Value2 = 0;
  std::int64_t Amount5 = 0;
  std::int64_t Amount6 = 0;
  std::vector<GrantEntry> Entries;
};

/// Determines the bonus for an amount paid in.
struct ZVUTILIB_API BonusRule {
  std::int32_t RuleId = 0;    ///< a rule is in use only when this is above 0
  std::int32_t Percent = 0;   ///< of the amount, in whole percent
  std::int32_t Hundreds = 0;  ///< a fixed value, in units of 100 of the amount
  std::int32_t Extra = 0;     ///< a second fixed value
  std::int64_t MinBonus = 0;  ///< the bonus is never below this
  std::uint32_t RuleValue = 0;
  std::vector<RuleEntry> Entries;

  /// Returns Percent of `amount`, truncated toward zero, or MinBonus if that is more. Returns MinBonus if
  /// Percent is not above 0.
  std::int64_t GetBonus(std::int64_t amount) const;
  /// Returns GetBonus plus 100 times Hundreds.
  std::int64_t GetTotalValue(std::int64_t amount) const;
  /// Stores in `grant` what the rule grants for `amount`. Amount3, Value2, Amount5 and Amount6 of the grant
  /// stay. If the rule has entries, the grant gets as many, and fields of its entries that the rule does not
  /// have stay. Otherwise the grant's entries stay.
  void FillGrant(std::int64_t amount, BonusGrant& grant) const;
  /// True if RuleId is above 0 and the sum of what the rule grants is above 0.
  bool IsUsable() const;
};

/// A rule with two more numbers.
struct ExtendedBonusRule : BonusRule {
  std::uint16_t RuleWord = 0;
  std::uint32_t RuleTail = 0;
};

/// The amounts of a reward package. Written as a block of 64 bytes.
struct RewardBlock {
  std::int64_t Amount1 = 0;
  std::int64_t Amount2 = 0;
  std::int64_t Amount3 = 0;
  std::uint32_t Value3 = 0;
  std::uint8_t Reserved1[4] = {};
  std::int64_t Amount4 = 0;
  std::uint32_t Value4 = 0;
  std::uint8_t Reserved2[4] = {};
  std::int64_t Amount5 = 0;
  std::uint8_t Reserved3[8] = {};
};
static_assert(sizeof(RewardBlock) == 64 && offsetof(RewardBlock, Amount2) == 8 &&
              offsetof(RewardBlock, Amount3) == 16 && offsetof(RewardBlock, Value3) == 24 &&
              offsetof(RewardBlock, Amount4) == 32 && offsetof(RewardBlock, Value4) == 40 &&
              offsetof(RewardBlock, Amount5) == 48 && offsetof(RewardBlock, Reserved3) == 56);

/// A package of amounts and items.
struct ZVUTILIB_API RewardRecord {
  RewardBlock Block;
  std::vector<ItemRecord> Items;

  /// True if all amounts and values of the block are zero and there are no items. Reserved bytes are
  /// ignored.
  bool IsEmpty() const;
  /// Returns the Count of the first item with the id 7101, or 0 if there is none.
  int GetId7101Count() const;
};

ZVUTILIB_RECORD(GrantEntry)
ZVUTILIB_RECORD(RuleEntry)
ZVUTILIB_RECORD(BonusGrant)
ZVUTILIB_RECORD(BonusRule)
ZVUTILIB_RECORD(ExtendedBonusRule)
ZVUTILIB_RECORD(RewardBlock)
ZVUTILIB_RECORD(RewardRecord)
