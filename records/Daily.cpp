#include <ZvUtiLib/records/Daily.h>

#include "data/wire/Codec.h"
#include "records/Units.h"

namespace zvuti::wire {

ZV_ROWS(CUtiCounterTable) { v.map(ZV_ROW(Counters)); }

ZV_ROWS(CUtiDailyState) {
  v.record(ZV_ROW(Table));
  v.map(ZV_ROW(DailyFlags));
  v.map(ZV_ROW(LastingFlags));
}

}  // namespace zvuti::wire

ZV_CODEC(CUtiCounterTable)
ZV_CODEC(CUtiDailyState)

void CUtiCounterTable::Write(CStreamWriter& out) const { zvuti::wire::WriteRecord(out, *this); }
void CUtiCounterTable::Read(CStreamReader& in) { zvuti::wire::ReadRecord(in, *this); }

void CUtiDailyState::Write(CStreamWriter& out) const { zvuti::wire::WriteRecord(out, *this); }
void CUtiDailyState::Read(CStreamReader& in) { zvuti::wire::ReadRecord(in, *this); }

CStreamWriter& operator<<(CStreamWriter& out, const CUtiCounterTable& table) {
  table.Write(out);
  return out;
}
CStreamReader& operator>>(CStreamReader& in, CUtiCounterTable& table) {
  table.Read(in);
  return in;
}

CStreamWriter& operator<<(CStreamWriter& out, const CUtiDailyState& state) {
  state.Write(out);
  return out;
}
CStreamReader& operator>>(CStreamReader& in, CUtiDailyState& state) {
  state.Read(in);
  return in;
}

namespace zvuti::wire {

RecordList DailyUnit() { return {&Codec<CUtiCounterTable>::kType, &Codec<CUtiDailyState>::kType}; }

}  // namespace zvuti::wire
