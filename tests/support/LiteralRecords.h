// A reference implementation of the wire format: reads records field by field from the stream.
//
// Tests compare the wire engine with it. The two share nothing but the lists of rows; the golden records
// check the lists themselves.
#pragma once

#include <functional>
#include <string>

#include "data/wire/RecordType.h"

namespace test {

using zvuti::wire::RecordType;

void ReadLiterally(const RecordType& type, CStreamReader& in, void* record);

/// Returns a record that has been read from its golden bytes, with a value of its own in each field; a
/// default one if there are none.
RecordType::Object FilledRecord(const RecordType& type);

/// The record's bytes on the wire, for comparison.
std::string StateOf(const RecordType& type, const void* record);

/// The visible effects of an operation on a stream.
struct Outcome {
  std::string thrown;  ///< message of the exception, "" if there was none
  std::string bytes;   ///< on the stream afterwards
  std::string state;   ///< set by the caller
  bool operator==(const Outcome&) const = default;
};

Outcome OutcomeOf(CStreamReader& stream, const std::function<void()>& operation);

}  // namespace test
