// The record units: each source lists its record types here, and the whole of them is in one place.
#pragma once

#include <string_view>
#include <vector>

#include "data/wire/RecordType.h"

namespace zvuti::wire {

using RecordUnit = std::vector<const RecordType*>;

RecordUnit AccountUnit();
RecordUnit PlayerUnit();
RecordUnit StatsUnit();
RecordUnit DailyUnit();
RecordUnit ItemUnit();
RecordUnit BundleUnit();
RecordUnit RewardUnit();
RecordUnit SmallUnit();

/// All record types, unit by unit.
const RecordUnit& AllRecords();
/// The type with a name, or null.
const RecordType* FindRecord(std::string_view name);

}  // namespace zvuti::wire
