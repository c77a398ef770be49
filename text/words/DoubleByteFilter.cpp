#include "text/words/DoubleByteFilter.h"

namespace zvuti {
namespace {

// Rows, 4 to 64 KB.
constexpr unsigned kLeastLog = 9;
constexpr unsigned kMostLog = 13;
// With many more words than rows a look finds something too often to be worth its time.
constexpr std::size_t kMostWords = std::size_t{1} << 15;

}  // namespace

DoubleByteFilter::DoubleByteFilter(std::size_t words) {
  if (words > kMostWords) return;
  unsigned log = kLeastLog;
  while (log < kMostLog && std::size_t{1} << log < words * 4) ++log;
  rows_.resize(std::size_t{1} << log);
  shift_ = 32 - log;
}

void DoubleByteFilter::Add(std::string_view word) {
  if (rows_.empty() || !gbk::IsLeadByte(word[0])) return;
  const char* bytes = word.data();
  const Row before = kBitBefore[ByteAt(bytes, 0)];
  Row& first = rows_[RowOf(bytes)];
  if (word.size() == 2) {
    first |= kBehind;
    for (Row& row : rows_) row |= before;
    return;
  }
  first |= kBitBehind[ByteAt(bytes, 2)];
  if (gbk::IsLeadByte(word[2])) rows_[RowOf(bytes + 2)] |= before;
}

}  // namespace zvuti
