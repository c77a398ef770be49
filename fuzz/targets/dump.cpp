// Records shown and filled by name. The first byte picks the record, and whether the others are bytes to
// show or lines of a path, an equals sign and a value.
#include <string>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

#include "fuzz/Check.h"

namespace {

// Groups and sequences may be given a size alone, and then have millions of default elements.
constexpr std::size_t kMostFilled = 20'000;

void FillBack(const std::string& record, const zvuti::RecordDump& dump, std::string_view bytes) {
  std::vector<zvuti::NamedValue> values;
  for (const auto& row : dump.rows) values.push_back({row.path, row.value});
  std::string again, problem;
  const bool isFilled = zvuti::FillRecord(record, values, again, problem);
  fuzz::Check(isFilled ? problem.empty() : again.empty() && !problem.empty(),
              "what cannot be filled is named");
  if (dump.isWhole) fuzz::Check(again == bytes.substr(0, dump.size), "a whole dump fills the same bytes");
}

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
  FillBack(record, dump, bytes);
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
    if (bytes.size() < kMostFilled) FillBack(record, dump, bytes);
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
