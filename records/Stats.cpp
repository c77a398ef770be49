#include <ZvUtiLib/records/Stats.h>

#include "data/wire/Codec.h"
#include "records/Units.h"

namespace zvuti::wire {

ZV_ROWS(PlayerGameStats) {
  v.bits32(ZV_ROW(Value1));
  v.bits32(ZV_ROW(Value2));
  v.bits32(ZV_ROW(WinCount));
  v.bits32(ZV_ROW(LoseCount));
  v.bits32(ZV_ROW(DrawCount));
  v.bits32(ZV_ROW(FleeCount));
  v.bits32(ZV_ROW(Value3));
  v.bits32(ZV_ROW(Value4));
  v.bits64(ZV_ROW(Amount1));
  v.bits64(ZV_ROW(Limit));
  v.bits64(ZV_ROW(Used));
  v.text(ZV_ROW(Text));
}

}  // namespace zvuti::wire

// All records of this unit. A record comes before the records that contain it.
#define STATS_RECORDS(RECORD) RECORD(PlayerGameStats)

ZV_UNIT(StatsUnit, STATS_RECORDS)
