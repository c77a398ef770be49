// Records read and written field by field, straight over the stream: the measure for the wire engine.
//
// It shares the row lists with the engine and nothing else. Bytes that a record must have are checked
// by fixtures of their own.
#pragma once

#include <random>
#include <string>

#include "data/wire/RecordType.h"

namespace test {

using zvuti::wire::RecordType;

void ReadLiterally(const RecordType& type, CStreamReader& in, void* record);
void WriteLiterally(const RecordType& type, CStreamWriter& out, void* record);

/// Gives every field a random value, with a liking for edges.
void FillRandomly(const RecordType& type, void* record, std::mt19937& random);

/// The fields as text, to compare and to look at; of a very long sequence, both ends and samples.
std::string StateOf(const RecordType& type, void* record);

/// Holds the engine against literal reading and writing: on random records, on every truncation of
/// their bytes, on bytes changed at random, with default and with filled targets, on a full heap.
void ExpectLiteralResults(const RecordType& type, unsigned seed, int rounds);

}  // namespace test
