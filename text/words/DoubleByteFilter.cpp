#include "text/words/DoubleByteFilter.h"

namespace zvuti {
namespace {

// With more words the filter names positions too often to be worth its time.
constexpr std::size_t kMostWords = std::size_t{1} << 15;

// 4 KB to 64 KB, 32 bytes of bit rows a word in between.
unsigned LogRowsFor(std::size_t words, std::size_t rowBytes) {
  unsigned log = 12;  // of the bytes
  while (log < 16 && std::size_t{1} << log < words * 32) ++log;
  for (; rowBytes > 1; rowBytes /= 2) --log;
  return log;
}

}  // namespace

DoubleByteFilter::DoubleByteFilter(std::size_t words)
    : isUseful_(words <= kMostWords), rows_(isUseful_ ? LogRowsFor(words, sizeof(Row)) : 1) {}

void DoubleByteFilter::Add(std::string_view word) {
  const char* bytes = word.data();
  if (!isUseful_ || !gbk::IsLeadByte(bytes[0])) return;
  const std::uint32_t first = ByteAt(bytes, 0);
  if (word.size() == 1) {  // half a character: any trail byte, and then any character
    rows_.AllowBeforeAnyKey(first);
    for (std::uint32_t trail = 1; trail < 256; ++trail) rows_.AllowAnyAfter(first | trail << 8);
    return;
  }
  if (word.size() == 2) {  // any character may follow
    rows_.AllowBeforeAnyKey(first);
    rows_.AllowAnyAfter(KeyAt(bytes));
    return;
  }
  rows_.AllowAfter(KeyAt(bytes), ByteAt(bytes, 2));
  if (!gbk::IsLeadByte(bytes[2])) return;
  if (word.size() == 3) {
    AllowBeforeLead(first, ByteAt(bytes, 2));
  } else {
    rows_.AllowBefore(KeyAt(bytes + 2), first);
  }
}

// Allows a byte before all characters with that lead byte. Bytes that share a bit are allowed together.
void DoubleByteFilter::AllowBeforeLead(std::uint32_t byte, std::uint32_t lead) {
  const std::uint32_t bit = 1u << byte % Rows::kHalf;
  if ((beforeLead_[lead] & bit) != 0) return;
  beforeLead_[lead] |= bit;
  for (std::uint32_t trail = 1; trail < 256; ++trail) rows_.AllowBefore(lead | trail << 8, byte);
}

}  // namespace zvuti
