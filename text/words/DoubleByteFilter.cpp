#include "text/words/DoubleByteFilter.h"

namespace zvuti {
namespace {

// With more words the filter names positions too often to be worth its time.
constexpr std::size_t kMostWords = std::size_t{1} << 15;

// 4 KB to 64 KB, four bit rows a word in between.
unsigned LogRowsFor(std::size_t words) {
  unsigned log = 9;
  while (log < 13 && std::size_t{1} << log < words * 4) ++log;
  return log;
}

}  // namespace

DoubleByteFilter::DoubleByteFilter(std::size_t words)
    : isUseful_(words <= kMostWords), rows_(isUseful_ ? LogRowsFor(words) : 1) {}

void DoubleByteFilter::Add(std::string_view word) {
  const char* bytes = word.data();
  if (!gbk::IsLeadByte(bytes[0])) return;
  if (word.size() == 2) {  // any character may follow
    rows_.AllowBeforeAnyKey(ByteAt(bytes, 0));
    rows_.AllowAnyAfter(KeyAt(bytes));
    return;
  }
  rows_.AllowAfter(KeyAt(bytes), ByteAt(bytes, 2));
  if (gbk::IsLeadByte(bytes[2])) rows_.AllowBefore(KeyAt(bytes + 2), ByteAt(bytes, 0));
}

}  // namespace zvuti
