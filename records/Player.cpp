#include <ZvUtiLib/records/Player.h>

#include "data/wire/Codec.h"
#include "records/ProfileRows.h"
#include "records/Units.h"
#include "records/WireTags.h"

ZV_FOREIGN(PlayerGameStats)
ZV_FOREIGN(ItemRecord)

namespace zvuti::wire {

ZV_ROWS(PlayerStatus) {
  v.tag(ZV_ROW(Kind));
  v.i16(ZV_ROW(Word1));
  v.i16(ZV_ROW(Word2));
}

ZV_ROWS(PlayerRecord) {
  v.text(ZV_ROW(Text1));
  v.text(ZV_ROW(Text2));
  v.i8(ZV_ROW(Byte1));
  v.i32(ZV_ROW(Value1));
  v.record(ZV_ROW(Status));
  v.i64(ZV_ROW(Purse1));
  v.i32(ZV_ROW(Value3));
  v.i8(ZV_ROW(Byte2));
  v.i8(ZV_ROW(Byte3));
  v.i8(ZV_ROW(Byte4));
  v.i16(ZV_ROW(SlotA));
  v.i16(ZV_ROW(SlotB));
  v.i8(ZV_ROW(Byte6));
  v.i32(ZV_ROW(Value6));
  v.i32(ZV_ROW(Value7));
  v.i8(ZV_ROW(Byte5));
  v.i32(ZV_ROW(Value2));
  v.code(ZV_ROW(Sex));
  v.code(ZV_ROW(AccountFlags));
  v.i32(ZV_ROW(Value4));
  v.i64(ZV_ROW(Purse4));
  v.i32(ZV_ROW(Value5));
  v.i32(ZV_ROW(Value8));
  v.i64(ZV_ROW(Wide1));
  v.i32(ZV_ROW(Purse2));
  v.i64(ZV_ROW(Wide2));
  v.i64(ZV_ROW(Purse8));
  v.map(ZV_ROW(Attributes));
  v.i32(ZV_ROW(Value9));
  v.i32(ZV_ROW(Value10));
}

ZV_ROWS(PlayerProfile) { ProfileRows(v, r); }

ZV_ROWS(PlayerSnapshot) {
  v.record(ZV_ROW(Player));
  v.record(ZV_ROW(Profile));
  v.record(ZV_ROW(Stats));
  v.list(ZV_ROW(Items));
}

}  // namespace zvuti::wire

ZV_RECORD(PlayerStatus)
ZV_RECORD(PlayerRecord)
ZV_RECORD(PlayerProfile)
ZV_RECORD(PlayerSnapshot)

namespace zvuti::wire {

RecordUnit PlayerUnit() {
  return {&Codec<PlayerRecord>::kType, &Codec<PlayerStatus>::kType, &Codec<PlayerProfile>::kType,
          &Codec<PlayerSnapshot>::kType};
}

}  // namespace zvuti::wire
