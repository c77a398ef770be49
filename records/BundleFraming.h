// The framing of CUtiBundleTable, which no row list expresses: both counts stand in front of all entries.
#pragma once

#include "data/wire/RecordType.h"

namespace zvuti::wire {

extern const RecordType kBundleTableType;

}  // namespace zvuti::wire
