// A record with a conditional row, whose width must be fixed. The tests of CMakeLists.txt set REFUSED: then
// there is a list under the condition, or a wider row in its place, or a field without a row, and nothing
// compiles.
#include <cstdint>
#include <string>
#include <vector>

#include "data/wire/Rows.h"

struct Sample {
  bool IsLong() const { return Kind > 1; }
  std::uint8_t Kind = 0;
  std::uint32_t Number = 0;
  std::int64_t Amount = 0;
  std::vector<std::string> Texts;
};

namespace zvuti::wire {

ZV_ROWS(Sample) {
  v.bits8(ZV_ROW(Kind));
  v.list(ZV_ROW(Texts));
  if (v.onlyIf({"Kind", RowComparison::kGreater, 1}, r, &Sample::IsLong)) {
    v.bits32(ZV_ROW(Number));
#if REFUSED == 1
    v.list(ZV_ROW(Texts));
#elif REFUSED == 2
  } else {
    v.bits64(ZV_ROW(Amount));
#endif
  }
#if REFUSED != 3
  v.local(ZV_ROW(Amount));
#endif
}

static_assert(kShape<Sample>.rowsBetween == 1 && kShape<Sample>.runs[0] == 1 && kShape<Sample>.runs[1] == 4);

}  // namespace zvuti::wire
