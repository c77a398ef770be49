#include <ZvUtiLib/records/Items.h>

#include "data/wire/Codec.h"
#include "records/Units.h"

namespace zvuti::wire {

ZV_ROWS(ItemRecord) {
  v.i8(ZV_ROW(Tag));
  v.i32(ZV_ROW(ItemKey));
  v.i32(ZV_ROW(ItemId));
  v.i32(ZV_ROW(StartTime));
  v.i32(ZV_ROW(ValidDays));
  v.i32(ZV_ROW(DailyValue));
  if (v.onlyIf("ItemKey < 1000000000", r, &ItemRecord::HasCountOnWire)) {
    v.i32(ZV_ROW(Count));
  } else if constexpr (V::kReads) {
    r.SetCount(1);
  }
  v.i8(ZV_ROW(TailByte));
}

ZV_ROWS(PricedItem) {
  v.base(BaseOf<ItemRecord>(r));
  v.i32(ZV_ROW(ExtraValue));
  v.i64(ZV_ROW(ExtraAmount));
}

}  // namespace zvuti::wire

ZV_RECORD(ItemRecord)
ZV_RECORD(PricedItem)

namespace zvuti::wire {

RecordUnit ItemUnit() { return {&Codec<ItemRecord>::kType, &Codec<PricedItem>::kType}; }

}  // namespace zvuti::wire
