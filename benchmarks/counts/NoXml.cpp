#include "benchmarks/counts/Counts.h"

const std::span<const counts::Operation> counts::kXmlOperations;
