// Records filled by name. The first byte picks the record; the others are lines of a path, an equals sign and
// a value.
#include "fuzz/FillBack.h"
#include "fuzz/Input.h"

namespace {

// Groups and sequences may be given a size alone, and then have millions of default elements. A few of these
// will do.
constexpr std::size_t kMostShown = 2'000;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string& record = fuzz::PickedRecord(data[0]);
  const std::string_view all = fuzz::BytesOf(data + 1, size - 1);
  std::string_view lines = all;
  std::vector<zvuti::NamedValue> values;
  while (!lines.empty() && values.size() < 20) {
    std::string_view line = fuzz::TakeUntil(lines, '\n');
    const std::string path(fuzz::TakeUntil(line, '='));
    values.push_back({path, std::string(line)});
  }
  std::string bytes, problem;
  if (zvuti::FillRecord(record, values, bytes, problem)) {
    if (bytes.size() > kMostShown && !fuzz::IsChosen(all, 512)) return 0;
    zvuti::RecordDump dump;
    zvuti::DumpRecord(record, bytes.data(), bytes.size(), dump);
    fuzz::Check(dump.isWhole && dump.size == bytes.size(), "what was filled is shown whole");
    fuzz::FillBack(record, dump, bytes);
  } else {
    fuzz::Check(!problem.empty(), "what cannot be filled is named");
  }
  return 0;
}
