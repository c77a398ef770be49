// Records shown by name, and filled with what was shown. The first byte picks the record; the others are its
// bytes.
#include "fuzz/FillBack.h"
#include "fuzz/HostileCount.h"
#include "records/Units.h"

namespace {

// The text of longer records takes milliseconds; some of them will do.
constexpr std::size_t kMostBytes = 600;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string& record = fuzz::PickedRecord(data[0]);
  const std::string_view bytes = fuzz::BytesOf(data + 1, size - 1);
  if (bytes.size() > kMostBytes && !fuzz::IsChosen(bytes, 8)) return 0;
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
  if (!fuzz::IsPassedOver(*zvuti::wire::FindRecord(record), bytes)) fuzz::FillBack(record, dump, bytes);
  return 0;
}
