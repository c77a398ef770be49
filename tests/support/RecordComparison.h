// The wire engine held against literal reading and writing.
#pragma once

#include "tests/support/LiteralRecords.h"

namespace test {

/// Holds the engine against literal reading and writing: on random records, on every truncation of
/// their bytes, on bytes changed at random, with default and with filled targets, on a full heap.
void ExpectLiteralResults(const RecordType& type, unsigned seed, int rounds);

}  // namespace test
