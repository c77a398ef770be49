#include <ZvUtiLib/records/Account.h>

#include "data/wire/Codec.h"
#include "records/ProfileRows.h"
#include "records/Units.h"

ZV_EXTERN_RECORD(CUtiDailyState)

namespace zvuti::wire {

ZV_ROWS(AccountExtra) {
  v.bits8(ZV_ROW(Flag));
  v.bits32(ZV_ROW(Value));
  v.bits64(ZV_ROW(Amount));
}

ZV_ROWS(AccountRecord) {
  v.bits32(ZV_ROW(Value1));
  v.bits32(ZV_ROW(Value2));
  v.text(ZV_ROW(Text1));
  v.text(ZV_ROW(Text2));
  v.text(ZV_ROW(Text3));
  v.bits8(ZV_ROW(Byte1));
  v.code(ZV_ROW(Code1));
  v.code(ZV_ROW(Code2));
  v.bits32(ZV_ROW(Value3));
  v.bits32(ZV_ROW(Value4));
  v.bits32(ZV_ROW(Value5));
  v.bits64(ZV_ROW(Amount1));
  v.bits64(ZV_ROW(Amount2));
  v.bits64(ZV_ROW(Amount3));
  v.bits64(ZV_ROW(Amount4));
  v.bits8(ZV_ROW(Byte2));
  v.text(ZV_ROW(Text5));
  v.text(ZV_ROW(Text6));
  v.text(ZV_ROW(Text7));
  ProfileRows(v, r);
  v.bits8(ZV_ROW(Byte3));
  v.bits8(ZV_ROW(Byte4));
  v.record(ZV_ROW(Extra));
  v.bits32(ZV_ROW(Value7));
  v.list(ZV_ROW(TextList));
  v.bits64(ZV_ROW(Amount5));
  v.virtualPart(ZV_ROW(State));
  v.text(ZV_ROW(Text4));
  v.bits32(ZV_ROW(Value6));
  v.local(ZV_ROW(LocalText));
}

}  // namespace zvuti::wire

// All records of this unit. A record comes before the records that contain it.
#define ACCOUNT_RECORDS(RECORD) \
  RECORD(AccountExtra)          \
  RECORD(AccountRecord)

ZV_UNIT(AccountUnit, ACCOUNT_RECORDS)
