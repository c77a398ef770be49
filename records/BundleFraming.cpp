#include "records/BundleFraming.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include <ZvUtiLib/data/Cursor.h>
#include <ZvUtiLib/records/Bundles.h>

#include "data/wire/Codec.h"

ZV_EXTERN_RECORD(BundleRecord)

namespace zvuti::wire {
namespace {

using Members = std::vector<std::uint32_t>;

template <class Sink>
void Put32(Sink& sink, std::size_t value) {
  const auto word = static_cast<std::uint32_t>(value);
  sink.Put(&word, sizeof word);
}

// group count 32, bundle count 32; for each group: key 32, member count 32 and the members, 32 each; for
// each bundle: key 32 and the record.
template <class Sink>
Sink PutTable(Sink sink, const CUtiBundleTable& table) {
  Put32(sink, table.Groups.size());
  Put32(sink, table.Bundles.size());
  for (const auto& [key, members] : table.Groups) {
    Put32(sink, key);
    Put32(sink, members.size());
    for (const std::uint32_t member : members) sink.Put(&member, sizeof member);
  }
  for (const auto& [key, bundle] : table.Bundles) {
    Put32(sink, key);
    sink = Codec<BundleRecord>::Put(sink, bundle);
  }
  return sink;
}

// Returns false if the bytes end before the group's last member.
bool TakeGroup(Cursor& cursor, CUtiBundleTable& table) {
  std::uint32_t key = 0;
  std::uint32_t count = 0;
  if (!cursor.Take(&key, sizeof key) || !cursor.Take(&count, sizeof count)) return false;
  const std::size_t present = std::min<std::size_t>(count, cursor.Left() / sizeof count);
  if (present > 0) {
    Members& members = table.Groups[key];
    const std::size_t first = members.size();
    members.resize(first + present);
    cursor.Take(members.data() + first, present * sizeof(std::uint32_t));
  }
  return present == count;
}

bool TakeBundle(Cursor& cursor, CUtiBundleTable& table) {
  std::uint32_t key = 0;
  BundleRecord bundle;
  std::uint16_t count = 0;
  if (!cursor.Take(&key, sizeof key) || !cursor.Take(&bundle.Amount1, sizeof bundle.Amount1) ||
      !cursor.Take(&bundle.Amount2, sizeof bundle.Amount2) ||
      !cursor.Take(&bundle.Value, sizeof bundle.Value) || !cursor.Take(&count, sizeof count)) {
    return false;
  }
  const std::size_t present = std::min<std::size_t>(count, cursor.Left() / sizeof(BundleEntry));
  bundle.Entries.resize(present);
  cursor.Take(bundle.Entries.data(), present * sizeof(BundleEntry));
  if (present < count) return false;
  table.Bundles.insert_or_assign(table.Bundles.end(), key, std::move(bundle));
  return true;
}

void TakeTable(Cursor& cursor, CUtiBundleTable& table) {
  std::int32_t groups = 0;
  std::int32_t bundles = 0;
  if (!cursor.Take(&groups, sizeof groups) || !cursor.Take(&bundles, sizeof bundles)) return;
  for (std::int32_t i = 0; i < groups; ++i) {
    if (!TakeGroup(cursor, table)) return;
  }
  for (std::int32_t i = 0; i < bundles; ++i) {
    if (!TakeBundle(cursor, table)) return;
  }
}

}  // namespace
}  // namespace zvuti::wire

void CUtiBundleTable::Write(CStreamWriter& out) const {
  zvuti::wire::WriteMeasured(out, [this](auto sink) { return zvuti::wire::PutTable(sink, *this); });
}

void CUtiBundleTable::Read(CStreamReader& in) {
  Clear();
  zvuti::wire::Cursor cursor(in);
  zvuti::wire::TakeTable(cursor, *this);
}
