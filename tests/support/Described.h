// Records shown and filled by name.
#pragma once

#include <string>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

namespace test {

using Values = std::vector<zvuti::NamedValue>;

inline zvuti::RecordDump Dumped(const std::string& record, const std::string& bytes) {
  zvuti::RecordDump dump;
  zvuti::DumpRecord(record, bytes.data(), bytes.size(), dump);
  return dump;
}

inline Values ValuesOf(const zvuti::RecordDump& dump) {
  Values values;
  for (const auto& row : dump.rows) values.push_back({row.path, row.value});
  return values;
}

/// The bytes that the values give, or else the problem.
inline std::string Filled(const std::string& record, const Values& values) {
  std::string bytes, problem;
  return zvuti::FillRecord(record, values, bytes, problem) ? bytes : problem;
}

}  // namespace test
