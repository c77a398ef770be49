#include <ZvUtiLib/records/Bundles.h>

#include <array>
#include <bit>

#include "data/wire/Codec.h"
#include "records/BundleFraming.h"
#include "records/Units.h"

namespace {

constexpr auto kImage = std::bit_cast<BundleEntry>(std::array<std::int32_t, 4>{1, 2, 3, 4});
static_assert(kImage.ItemId == 1 && kImage.Count == 2 && kImage.Value1 == 3 && kImage.Value2 == 4);

}  // namespace

namespace zvuti::wire {

ZV_BLOCK_ROWS(BundleEntry, 16) {
  v.bits32(ZV_ROW(ItemId));
  v.bits32(ZV_ROW(Count));
  v.bits32(ZV_ROW(Value1));
  v.bits32(ZV_ROW(Value2));
}

ZV_ROWS(BundleRecord) {
  v.bits64(ZV_ROW(Amount1));
  v.bits64(ZV_ROW(Amount2));
  v.bits32(ZV_ROW(Value));
  v.list(ZV_ROW(Entries));
}

}  // namespace zvuti::wire

ZV_RECORD(BundleEntry)
ZV_RECORD(BundleRecord)

namespace zvuti::wire {

RecordList BundleUnit() {
  return {&Codec<BundleEntry>::kType, &Codec<BundleRecord>::kType, &kBundleTableType};
}

}  // namespace zvuti::wire
