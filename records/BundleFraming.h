// The framing of CUtiBundleTable, which no row list can express: both counts precede all entries.
#pragma once

#include "data/wire/RecordType.h"

namespace zvuti::wire {

extern const RecordType kBundleTableType;

}  // namespace zvuti::wire
