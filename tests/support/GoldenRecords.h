// Golden bytes of records, made without the library by tests/records/make_golden.py.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace test {

struct GoldenRow {
  std::string bytes, path, value;
};

struct Golden {
  std::string record;
  std::string kind;  ///< "default" or "filled"
  std::vector<GoldenRow> rows;

  std::string Bytes() const {
    std::string all;
    for (const GoldenRow& row : rows) all += row.bytes;
    return all;
  }

  /// For the names of tests; otherwise all bytes are printed, unused ones too.
  friend std::ostream& operator<<(std::ostream& out, const Golden& golden) {
    return out << golden.record << ' ' << golden.kind;
  }
};

const std::vector<Golden>& GoldenRecords();

}  // namespace test
