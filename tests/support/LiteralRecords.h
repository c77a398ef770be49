// Records read and written field by field, straight over the stream: the measure for the wire engine.
//
// It shares the row lists with the engine and nothing else. Bytes that a record must have are checked
// by fixtures of their own.
#pragma once

#include <functional>
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

/// What there is to see of an operation on a stream: what it threw, and the stream afterwards.
struct Outcome {
  std::string thrown, bytes;
  std::string state;  ///< for the caller to fill in
  int capacity = 0;
  bool operator==(const Outcome&) const = default;
};

Outcome OutcomeOf(CStreamReader& stream, const std::function<void()>& operation);

}  // namespace test
