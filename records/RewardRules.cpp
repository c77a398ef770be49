#include <ZvUtiLib/records/Rewards.h>

#include <algorithm>

namespace {

// Sums and products use unsigned arithmetic, so overflow wraps.
constexpr std::uint64_t Bits(std::int64_t value) { return static_cast<std::uint64_t>(value); }
constexpr std::int64_t Signed(std::uint64_t bits) { return static_cast<std::int64_t>(bits); }
constexpr std::uint32_t Bits32(std::int32_t value) { return static_cast<std::uint32_t>(value); }
constexpr std::int32_t Signed32(std::uint32_t bits) { return static_cast<std::int32_t>(bits); }

}  // namespace

std::int64_t BonusRule::GetBonus(std::int64_t amount) const {
  if (Percent <= 0) return MinBonus;
  return std::max(Signed(Bits(amount) * Bits(Percent)) / 100, MinBonus);
}

std::int64_t BonusRule::GetTotalValue(std::int64_t amount) const {
  const std::int64_t fixed = Signed32(Bits32(Hundreds) * 100u);
  return Signed(Bits(GetBonus(amount)) + Bits(fixed));
}

void BonusRule::FillGrant(std::int64_t amount, BonusGrant& grant) const {
  grant.GrantedHundreds = Hundreds;
  grant.GrantedExtra = Extra;
  grant.BonusAmount = GetBonus(amount);
  grant.GrantedValue = RuleValue;
  if (Entries.empty()) return;
  grant.Entries.resize(Entries.size());
  for (std::size_t i = 0; i < Entries.size(); ++i) {
    grant.Entries[i].Switch = Entries[i].Switch;
    grant.Entries[i].Value3 = Entries[i].Value3;
    grant.Entries[i].Value2 = Entries[i].Value2;
    grant.Entries[i].Value1 = Entries[i].Value1;
  }
}

bool BonusRule::IsUsable() const {
  if (RuleId < 1) return false;
  const std::int64_t fixed = Signed32(Bits32(Hundreds) + Bits32(Percent) + Bits32(Extra));
  return Signed(Bits(fixed) + Bits(MinBonus) + Entries.size()) > 0;
}

bool RewardRecord::IsEmpty() const {
  return Block.Amount2 == 0 && Block.Amount1 == 0 && Block.Amount3 == 0 && Block.Value3 == 0 &&
         Block.Amount4 == 0 && Block.Value4 == 0 && Block.Amount5 == 0 && Items.empty();
}

int RewardRecord::GetId7101Count() const {
  const auto found =
      std::find_if(Items.begin(), Items.end(), [](const ItemRecord& item) { return item.IsId7101(); });
  return found == Items.end() ? 0 : found->GetCount();
}
