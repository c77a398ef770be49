// Records shown and filled by name. The first byte picks the record, and whether the others are bytes to
// show or lines of a path, an equals sign and a value.
#include <string>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

#include "fuzz/Check.h"

namespace {

void ShowAndFill(const std::string& record, std::string_view bytes) {
  zvuti::RecordDump dump;
  fuzz::Check(zvuti::DumpRecord(record, bytes.data(), bytes.size(), dump), "every record can be shown");
  fuzz::Check(dump.size <= bytes.size(), "a dump stays within the bytes");
  fuzz::Check(dump.isWhole == dump.problem.empty(), "a dump that is not whole says why");
  std::size_t end = 0;
  for (const auto& row : dump.rows) {
    fuzz::Check(row.offset == end, "the rows of a dump lie side by side");
    end += row.size;
  }
  fuzz::Check(end == dump.size, "the rows of a dump are its size");
}

void Fill(const std::string& record, std::string_view lines) {
  std::vector<zvuti::NamedValue> values;
  while (!lines.empty() && values.size() < 20) {
    std::string_view line = fuzz::TakeUntil(lines, '\n');
    const std::string path(fuzz::TakeUntil(line, '='));
    values.push_back({path, std::string(line)});
  }
  std::string bytes, problem;
  if (zvuti::FillRecord(record, values, bytes, problem)) {
    zvuti::RecordDump dump;
    zvuti::DumpRecord(record, bytes.data(), bytes.size(), dump);
    fuzz::Check(dump.isWhole && dump.size == bytes.size(), "what was filled is shown whole");
  } else {
    fuzz::Check(!problem.empty(), "what cannot be filled is named");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  static const std::vector<std::string> names = zvuti::RecordNames();
  const std::string& record = names[(data[0] & 0x7F) % names.size()];
  const std::string_view rest = fuzz::BytesOf(data + 1, size - 1);
  data[0] < 0x80 ? ShowAndFill(record, rest) : Fill(record, rest);
  return 0;
}
