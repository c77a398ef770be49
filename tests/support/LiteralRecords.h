// A reference implementation of the wire format: reads and writes records field by field on the stream.
//
// Tests compare the wire engine with it. The two share nothing but the lists of rows; the golden records
// check the lists themselves.
#pragma once

#include <functional>
#include <random>
#include <string>

#include "data/wire/RecordType.h"

namespace test {

using zvuti::wire::RecordType;

void ReadLiterally(const RecordType& type, CStreamReader& in, void* record);
void WriteLiterally(const RecordType& type, CStreamWriter& out, void* record);

/// Gives every field a random value, with edge cases more often than by chance.
void FillRandomly(const RecordType& type, void* record, std::mt19937& random);

/// The fields as text, for comparison and for messages. Of a very long sequence it has both ends and samples.
std::string StateOf(const RecordType& type, void* record);

/// The visible effects of an operation on a stream.
struct Outcome {
  std::string thrown;  ///< message of the exception, "" if there was none
  std::string bytes;   ///< on the stream afterwards
  std::string state;   ///< set by the caller
  int capacity = 0;
  bool operator==(const Outcome&) const = default;
};

Outcome OutcomeOf(CStreamReader& stream, const std::function<void()>& operation);

}  // namespace test
