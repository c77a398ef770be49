// Records: what is read from random bytes, shown, and written again.
#include <ZvUtiLib/data/CStream.h>
#include <ZvUtiLib/records/Describe.h>

#include "fuzz/answers/Properties.h"
#include "records/Units.h"

namespace answers {

void AskRecords(Random& random, Report& report) {
  const auto& types = zvuti::wire::AllRecords();
  const auto* const type = types[random.Below(static_cast<unsigned>(types.size()))];
  std::string bytes = random.Bytes(300);
  // Small counts let more than the first rows be read.
  for (std::size_t i = 1; i < bytes.size(); i += 2) {
    if (random.Below(2) == 0) bytes[i] = '\0';
  }
  report << type->name << bytes;

  zvuti::RecordDump dump;
  report << zvuti::DumpRecord(type->name, bytes.data(), bytes.size(), dump) << dump.size << dump.isWhole
         << dump.problem;
  for (const zvuti::DumpRow& row : dump.rows)
    report << row.offset << row.path << zvuti::FormText(row.type) << row.value;

  CStreamReader in(bytes), out;
  const auto record = type->make();
  std::string_view ending = "read";
  try {
    type->read(in, record.get());
  } catch (const std::exception&) {
    ending = "refused";
  }
  type->write(out, record.get());
  report << ending << in.Length()
         << std::string_view(reinterpret_cast<const char*>(out.Data()),
                             static_cast<std::size_t>(out.Length()));
}

}  // namespace answers
