#include <ZvUtiLib/records/Stats.h>

#include "data/wire/Codec.h"
#include "records/Units.h"

namespace zvuti::wire {

ZV_ROWS(PlayerGameStats) {
  v.i32(ZV_ROW(Value1));
  v.i32(ZV_ROW(Value2));
  v.i32(ZV_ROW(WinCount));
  v.i32(ZV_ROW(LoseCount));
  v.i32(ZV_ROW(DrawCount));
  v.i32(ZV_ROW(FleeCount));
  v.i32(ZV_ROW(Value3));
  v.i32(ZV_ROW(Value4));
  v.i64(ZV_ROW(Amount1));
  v.i64(ZV_ROW(Limit));
  v.i64(ZV_ROW(Used));
  v.text(ZV_ROW(Text));
}

}  // namespace zvuti::wire

ZV_RECORD(PlayerGameStats)

namespace zvuti::wire {

RecordUnit StatsUnit() { return {&Codec<PlayerGameStats>::kType}; }

}  // namespace zvuti::wire
