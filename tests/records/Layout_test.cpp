// Members stand in their structures in the order in which they are declared to callers, which is not
// everywhere the order on the wire.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

#include <ZvUtiLib/ZvUtiLib.h>

namespace {

template <class Record, class... Bases, class... Fields>
void ExpectOrder(Fields Bases::*... fields) {
  const Record record{};
  const std::vector<const void*> places{static_cast<const void*>(&(record.*fields))...};
  EXPECT_EQ(std::adjacent_find(places.begin(), places.end(), std::greater_equal<>()), places.end());
}

TEST(Layout, MembersStandAsDeclared) {
  using Account = AccountRecord;
  ExpectOrder<Account>(&Account::Byte2, &Account::Text4, &Account::Text7, &Account::LocalText,
                       &Account::ProfileByte1, &Account::ProfileText8, &Account::Byte3, &Account::Byte4,
                       &Account::Value6, &Account::Value7, &Account::TextList, &Account::Amount5,
                       &Account::State, &Account::Extra);
  using Player = PlayerRecord;
  ExpectOrder<Player>(&Player::Byte6, &Player::SlotA, &Player::SlotB, &Player::Sex, &Player::AccountFlags,
                      &Player::Value1, &Player::Value8, &Player::Purse2, &Player::Wide1, &Player::Wide2,
                      &Player::Purse8, &Player::Purse1, &Player::Purse4, &Player::Status, &Player::Text1,
                      &Player::Text2, &Player::Attributes, &Player::Value9, &Player::Value10);
  ExpectOrder<ItemRecord>(&ItemRecord::ItemId, &ItemRecord::Count, &ItemRecord::StartTime,
                          &ItemRecord::ValidDays, &ItemRecord::DailyValue, &ItemRecord::Tag,
                          &ItemRecord::ItemKey, &ItemRecord::TailByte);
  using State = CUtiDailyState;
  ExpectOrder<State>(&State::Table, &State::LastingFlags, &State::DailyFlags);
  using Bundles = CUtiBundleTable;
  ExpectOrder<Bundles>(&Bundles::Groups, &Bundles::Bundles, &Bundles::MarkedIds);
  using Rule = BonusRule;
  ExpectOrder<Rule>(&Rule::RuleId, &Rule::Percent, &Rule::Hundreds, &Rule::Extra, &Rule::MinBonus,
                    &Rule::RuleValue, &Rule::Entries);
  using Grant = BonusGrant;
  ExpectOrder<Grant>(&Grant::BonusAmount, &Grant::GrantedHundreds, &Grant::Amount3, &Grant::GrantedExtra,
                     &Grant::GrantedValue, &Grant::Value2, &Grant::Amount5, &Grant::Amount6, &Grant::Entries);
}

}  // namespace
