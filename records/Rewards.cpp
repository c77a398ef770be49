#include <ZvUtiLib/records/Rewards.h>

#include "data/wire/Codec.h"
#include "records/Units.h"

ZV_EXTERN_RECORD(ItemRecord)

namespace zvuti::wire {

ZV_BLOCK_ROWS(GrantEntry, 16) {
  v.bits32(ZV_ROW(Value1));
  v.bits32(ZV_ROW(Value2));
  v.bits32(ZV_ROW(Value3));
  v.bits8(ZV_ROW(Switch));
  v.reserved(ZV_ROW(Reserved));
}

ZV_BLOCK_ROWS(RuleEntry, 24) {
  v.bits32(ZV_ROW(Value1));
  v.bits32(ZV_ROW(Value2));
  v.bits32(ZV_ROW(Value3));
  v.bits8(ZV_ROW(Switch));
  v.reserved(ZV_ROW(Reserved));
  v.bits64(ZV_ROW(Amount));
}

ZV_ROWS(BonusRule) {
  v.bits32(ZV_ROW(RuleId));
  v.bits32(ZV_ROW(Percent));
  v.bits32(ZV_ROW(Hundreds));
  v.bits32(ZV_ROW(Extra));
  v.bits64(ZV_ROW(MinBonus));
  v.list(ZV_ROW(Entries));
  v.bits32(ZV_ROW(RuleValue));  // after the sequence
}

ZV_ROWS(ExtendedBonusRule) {
  v.base(BaseOf<BonusRule>(r));
  v.bits16(ZV_ROW(RuleWord));
  v.bits32(ZV_ROW(RuleTail));
}

// On the wire, the first two amounts are swapped, and so are the next two.
ZV_ROWS(BonusGrant) {
  v.bits64(ZV_ROW(GrantedHundreds));
  v.bits64(ZV_ROW(BonusAmount));
  v.bits64(ZV_ROW(GrantedExtra));
  v.bits64(ZV_ROW(Amount3));
  v.bits32(ZV_ROW(GrantedValue));
  v.bits32(ZV_ROW(Value2));
  v.bits64(ZV_ROW(Amount5));
  v.bits64(ZV_ROW(Amount6));
  v.list(ZV_ROW(Entries));
}

ZV_BLOCK_ROWS(RewardBlock, 64) {
  v.bits64(ZV_ROW(Amount1));
  v.bits64(ZV_ROW(Amount2));
  v.bits64(ZV_ROW(Amount3));
  v.bits32(ZV_ROW(Value3));
  v.reserved(ZV_ROW(Reserved1));
  v.bits64(ZV_ROW(Amount4));
  v.bits32(ZV_ROW(Value4));
  v.reserved(ZV_ROW(Reserved2));
  v.bits64(ZV_ROW(Amount5));
  v.reserved(ZV_ROW(Reserved3));
}

ZV_ROWS(RewardRecord) {
  v.block64(ZV_ROW(Block));
  v.list(ZV_ROW(Items));
}

}  // namespace zvuti::wire

// All records of this unit. A record comes before the records that contain it.
#define REWARD_RECORDS(RECORD) \
  RECORD(GrantEntry)           \
  RECORD(RuleEntry)            \
  RECORD(BonusRule)            \
  RECORD(ExtendedBonusRule)    \
  RECORD(BonusGrant)           \
  RECORD(RewardBlock)          \
  RECORD(RewardRecord)

ZV_UNIT(RewardUnit, REWARD_RECORDS)
