// Builds the bytes of a record from what a dump of them shows.
#pragma once

#include <string>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

#include "fuzz/Check.h"

namespace fuzz {

/// Checks that a whole dump of `bytes` gives the same bytes, and any other is taken or refused with a reason.
inline void FillBack(const std::string& record, const zvuti::RecordDump& dump, std::string_view bytes) {
  std::vector<zvuti::NamedValue> values;
  for (const auto& row : dump.rows) values.push_back({row.path, row.value});
  std::string again, problem;
  const bool isFilled = zvuti::FillRecord(record, values, again, problem);
  Check(isFilled ? problem.empty() : again.empty() && !problem.empty(), "what cannot be filled is named");
  if (dump.isWhole) Check(again == bytes.substr(0, dump.size), "a whole dump fills the same bytes");
}

/// The name of the record that the first byte of an input picks.
inline const std::string& PickedRecord(std::uint8_t byte) {
  static const std::vector<std::string> names = zvuti::RecordNames();
  return names[(byte & 0x7F) % names.size()];
}

}  // namespace fuzz
