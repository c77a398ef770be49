#include <ZvUtiLib/records/Player.h>

#include "data/wire/Codec.h"
#include "records/ProfileRows.h"
#include "records/Units.h"
#include "records/WireTags.h"

ZV_EXTERN_RECORD(PlayerGameStats)
ZV_EXTERN_RECORD(ItemRecord)

namespace zvuti::wire {

ZV_ROWS(PlayerStatus) {
  v.tag(ZV_ROW(Kind));
  v.bits16(ZV_ROW(Word1));
  v.bits16(ZV_ROW(Word2));
}

ZV_ROWS(PlayerRecord) {
  v.text(ZV_ROW(Text1));
  v.text(ZV_ROW(Text2));
  v.bits8(ZV_ROW(Byte1));
  v.bits32(ZV_ROW(Value1));
  v.record(ZV_ROW(Status));
  v.bits64(ZV_ROW(Purse1));
  v.bits32(ZV_ROW(Value3));
  v.bits8(ZV_ROW(Byte2));
  v.bits8(ZV_ROW(Byte3));
  v.bits8(ZV_ROW(Byte4));
  v.bits16(ZV_ROW(SlotA));
  v.bits16(ZV_ROW(SlotB));
  v.bits8(ZV_ROW(Byte6));
  v.bits32(ZV_ROW(Value6));
  v.bits32(ZV_ROW(Value7));
  v.bits8(ZV_ROW(Byte5));
  v.bits32(ZV_ROW(Value2));
  v.code(ZV_ROW(Sex));
  v.code(ZV_ROW(AccountFlags));
  v.bits32(ZV_ROW(Value4));
  v.bits64(ZV_ROW(Purse4));
  v.bits32(ZV_ROW(Value5));
  v.bits32(ZV_ROW(Value8));
  v.bits64(ZV_ROW(Wide1));
  v.bits32(ZV_ROW(Purse2));
  v.bits64(ZV_ROW(Wide2));
  v.bits64(ZV_ROW(Purse8));
  v.map(ZV_ROW(Attributes));
  v.bits32(ZV_ROW(Value9));
  v.bits32(ZV_ROW(Value10));
}

ZV_ROWS(PlayerProfile) { ProfileRows(v, r); }

ZV_ROWS(PlayerSnapshot) {
  v.record(ZV_ROW(Player));
  v.record(ZV_ROW(Profile));
  v.record(ZV_ROW(Stats));
  v.list(ZV_ROW(Items));
}

}  // namespace zvuti::wire

// All records of this unit. A record comes before the records that contain it.
#define PLAYER_RECORDS(RECORD) \
  RECORD(PlayerStatus)         \
  RECORD(PlayerRecord)         \
  RECORD(PlayerProfile)        \
  RECORD(PlayerSnapshot)

ZV_UNIT(PlayerUnit, PLAYER_RECORDS)
