#include <ZvUtiLib/records/Rewards.h>

#include "data/wire/Codec.h"
#include "records/Units.h"

ZV_FOREIGN(ItemRecord)

namespace zvuti::wire {

ZV_ROWS(GrantEntry) {
  v.i32(ZV_ROW(Value1));
  v.i32(ZV_ROW(Value2));
  v.i32(ZV_ROW(Value3));
  v.i8(ZV_ROW(Switch));
  v.reserved(ZV_ROW(Reserved));
}

ZV_ROWS(RuleEntry) {
  v.i32(ZV_ROW(Value1));
  v.i32(ZV_ROW(Value2));
  v.i32(ZV_ROW(Value3));
  v.i8(ZV_ROW(Switch));
  v.reserved(ZV_ROW(Reserved));
  v.i64(ZV_ROW(Amount));
}

ZV_ROWS(BonusRule) {
  v.i32(ZV_ROW(RuleId));
  v.i32(ZV_ROW(Percent));
  v.i32(ZV_ROW(Hundreds));
  v.i32(ZV_ROW(Extra));
  v.i64(ZV_ROW(MinBonus));
  v.list(ZV_ROW(Entries));
  v.i32(ZV_ROW(RuleValue));  // behind the sequence
}

ZV_ROWS(ExtendedBonusRule) {
  v.base(BaseOf<BonusRule>(r));
  v.i16(ZV_ROW(RuleWord));
  v.i32(ZV_ROW(RuleTail));
}

// The first two and the next two amounts change places on the wire.
ZV_ROWS(BonusGrant) {
  v.i64(ZV_ROW(GrantedHundreds));
  v.i64(ZV_ROW(BonusAmount));
  v.i64(ZV_ROW(GrantedExtra));
  v.i64(ZV_ROW(Amount3));
  v.i32(ZV_ROW(GrantedValue));
  v.i32(ZV_ROW(Value2));
  v.i64(ZV_ROW(Amount5));
  v.i64(ZV_ROW(Amount6));
  v.list(ZV_ROW(Entries));
}

ZV_ROWS(RewardBlock) {
  v.i64(ZV_ROW(Amount1));
  v.i64(ZV_ROW(Amount2));
  v.i64(ZV_ROW(Amount3));
  v.i32(ZV_ROW(Value3));
  v.reserved(ZV_ROW(Reserved1));
  v.i64(ZV_ROW(Amount4));
  v.i32(ZV_ROW(Value4));
  v.reserved(ZV_ROW(Reserved2));
  v.i64(ZV_ROW(Amount5));
  v.reserved(ZV_ROW(Reserved3));
}

ZV_ROWS(RewardRecord) {
  v.block64(ZV_ROW(Block));
  v.list(ZV_ROW(Items));
}

}  // namespace zvuti::wire

ZV_BLOCK(GrantEntry, 16)
ZV_BLOCK(RuleEntry, 24)
ZV_RECORD(BonusRule)
ZV_RECORD(ExtendedBonusRule)
ZV_RECORD(BonusGrant)
ZV_BLOCK(RewardBlock, 64)
ZV_RECORD(RewardRecord)

namespace zvuti::wire {

RecordUnit RewardUnit() {
  return {&Codec<GrantEntry>::kType,        &Codec<RuleEntry>::kType,  &Codec<BonusRule>::kType,
          &Codec<ExtendedBonusRule>::kType, &Codec<BonusGrant>::kType, &Codec<RewardBlock>::kType,
          &Codec<RewardRecord>::kType};
}

}  // namespace zvuti::wire
