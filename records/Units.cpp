#include "records/Units.h"

#include <algorithm>

namespace zvuti::wire {

const RecordList& AllRecords() {
  static const RecordList all = [] {
    RecordList types;
    for (const auto unit :
         {AccountUnit, PlayerUnit, StatsUnit, DailyUnit, ItemUnit, BundleUnit, RewardUnit, SmallUnit}) {
      const RecordList listed = unit();
      types.insert(types.end(), listed.begin(), listed.end());
    }
    return types;
  }();
  return all;
}

const RecordType* FindRecord(std::string_view name) {
  const RecordList& all = AllRecords();
  const auto found =
      std::find_if(all.begin(), all.end(), [&](const RecordType* type) { return type->name == name; });
  return found == all.end() ? nullptr : *found;
}

}  // namespace zvuti::wire
