// Every record's reader. The first byte picks the record (its lower seven bits) and whether the target is
// a default record or a filled one; the others are the bytes to read.
#include <algorithm>
#include <functional>
#include <string>

#include <ZvUtiLib/records/Describe.h>

#include "fuzz/Check.h"
#include "records/Units.h"
#include "tests/support/LiteralRecords.h"

namespace {

using test::Outcome;
using zvuti::wire::RecordType;

// A wild count gives tens of thousands of elements; comparing all of them would only cost time.
constexpr std::size_t kMostCompared = 20'000;

// A count without the bytes for it costs a thousand times what other inputs do: a few of these will do.
bool IsPassedOver(const RecordType& type, const std::string& bytes) {
  zvuti::RecordDump dump;
  zvuti::DumpRecord(type.name, bytes.data(), bytes.size(), dump);
  const auto isWild = [](const zvuti::DumpRow& row) {
    return row.form.rfind("sequence", 0) == 0 && row.value.size() >= 4;
  };
  return !dump.isWhole && std::any_of(dump.rows.begin(), dump.rows.end(), isWild) &&
         std::hash<std::string>()(bytes) % 64 != 0;
}

RecordType::Object Target(const RecordType& type, bool isFilled) {
  return isFilled ? test::FilledRecord(type) : type.make();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto& types = zvuti::wire::AllRecords();
  const RecordType& type = *types[(data[0] & 0x7F) % types.size()];
  const bool hasRows = type.walk != nullptr;
  const bool isFilled = data[0] >= 0x80 && hasRows;
  const std::string bytes(fuzz::BytesOf(data + 1, size - 1));

  if (IsPassedOver(type, bytes)) return 0;

  const auto record = Target(type, isFilled);
  CStreamReader stream(bytes);
  Outcome read = test::OutcomeOf(stream, [&] { type.read(stream, record.get()); });
  fuzz::Check(bytes.substr(bytes.size() - read.bytes.size()) == read.bytes, "a reader leaves the rest");

  const std::string written = test::StateOf(type, record.get());
  if (hasRows && written.size() < kMostCompared) {
    read.state = written;
    const auto literalRecord = Target(type, isFilled);
    CStreamReader literalStream(bytes);
    Outcome literal = test::OutcomeOf(literalStream,
                                      [&] { test::ReadLiterally(type, literalStream, literalRecord.get()); });
    literal.state = test::StateOf(type, literalRecord.get());
    fuzz::Check(read == literal, "a record is read as field by field");

    const auto again = type.make();
    CStreamReader back(written);
    test::ReadLiterally(type, back, again.get());
    fuzz::Check(back.Length() == 0 && test::StateOf(type, again.get()) == written,
                "a record is written as it is read field by field");
  }

  const auto again = type.make();
  CStreamReader back(written);
  const Outcome readBack = test::OutcomeOf(back, [&] { type.read(back, again.get()); });
  fuzz::Check(readBack.thrown.empty() && readBack.bytes.empty(), "what was written is read back whole");
  fuzz::Check(test::StateOf(type, again.get()) == written, "what was read back is written alike");
  return 0;
}
