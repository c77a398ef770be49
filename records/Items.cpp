#include <ZvUtiLib/records/Items.h>

#include "data/wire/Codec.h"
#include "records/Units.h"

namespace zvuti::wire {

ZV_ROWS(ItemRecord) {
  v.bits8(ZV_ROW(Tag));
  v.bits32(ZV_ROW(ItemKey));
  v.bits32(ZV_ROW(ItemId));
  v.packedTime(ZV_ROW(StartTime));
  v.bits32(ZV_ROW(ValidDays));
  v.bits32(ZV_ROW(DailyValue));
  if (v.onlyIf({"ItemKey", RowComparison::kLess, 1'000'000'000}, r, &ItemRecord::HasCountOnWire)) {
    v.bits32(ZV_ROW(Count));
  } else if constexpr (V::kReads) {
    r.SetCount(1);
  }
  v.bits8(ZV_ROW(TailByte));
}

ZV_ROWS(PricedItem) {
  v.base(BaseOf<ItemRecord>(r));
  v.bits32(ZV_ROW(ExtraValue));
  v.bits64(ZV_ROW(ExtraAmount));
}

}  // namespace zvuti::wire

// All records of this unit. A record comes before the records that contain it.
#define ITEM_RECORDS(RECORD) \
  RECORD(ItemRecord)         \
  RECORD(PricedItem)

ZV_UNIT(ItemUnit, ITEM_RECORDS)
