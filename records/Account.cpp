#include <ZvUtiLib/records/Account.h>

#include "data/wire/Codec.h"
#include "records/ProfileRows.h"
#include "records/Units.h"

ZV_FOREIGN(CUtiDailyState)

namespace zvuti::wire {

ZV_ROWS(AccountExtra) {
  v.i8(ZV_ROW(Flag));
  v.i32(ZV_ROW(Value));
  v.i64(ZV_ROW(Amount));
}

ZV_ROWS(AccountRecord) {
  v.i32(ZV_ROW(Value1));
  v.i32(ZV_ROW(Value2));
  v.text(ZV_ROW(Text1));
  v.text(ZV_ROW(Text2));
  v.text(ZV_ROW(Text3));
  v.i8(ZV_ROW(Byte1));
  v.code(ZV_ROW(Code1));
  v.code(ZV_ROW(Code2));
  v.i32(ZV_ROW(Value3));
  v.i32(ZV_ROW(Value4));
  v.i32(ZV_ROW(Value5));
  v.i64(ZV_ROW(Amount1));
  v.i64(ZV_ROW(Amount2));
  v.i64(ZV_ROW(Amount3));
  v.i64(ZV_ROW(Amount4));
  v.i8(ZV_ROW(Byte2));
  v.text(ZV_ROW(Text5));
  v.text(ZV_ROW(Text6));
  v.text(ZV_ROW(Text7));
  ProfileRows(v, r);
  v.i8(ZV_ROW(Byte3));
  v.i8(ZV_ROW(Byte4));
  v.record(ZV_ROW(Extra));
  v.i32(ZV_ROW(Value7));
  v.list(ZV_ROW(TextList));
  v.i64(ZV_ROW(Amount5));
  v.viaOperators(ZV_ROW(State));
  v.text(ZV_ROW(Text4));
  v.i32(ZV_ROW(Value6));
}

}  // namespace zvuti::wire

ZV_RECORD(AccountExtra)
ZV_RECORD(AccountRecord)

namespace zvuti::wire {

RecordUnit AccountUnit() { return {&Codec<AccountRecord>::kType, &Codec<AccountExtra>::kType}; }

}  // namespace zvuti::wire
