// The record units: each source file lists its record types here, so that all of them are in one place.
#pragma once

#include <string_view>

#include "data/wire/RecordType.h"

namespace zvuti::wire {

RecordList AccountUnit();
RecordList PlayerUnit();
RecordList StatsUnit();
RecordList DailyUnit();
RecordList ItemUnit();
RecordList BundleUnit();
RecordList RewardUnit();
RecordList SmallUnit();

/// All record types, unit by unit.
const RecordList& AllRecords();
/// Returns the type with this name, or null.
const RecordType* FindRecord(std::string_view name);

}  // namespace zvuti::wire
