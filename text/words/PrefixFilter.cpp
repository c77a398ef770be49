#include "text/words/PrefixFilter.h"

namespace zvuti {
namespace {

// Up to 8 bit rows a word, so that false alarms are rare, while they fit the first-level cache (32 KB);
// beyond that only 2, and no more than 256 KB.
unsigned LogRowsFor(std::size_t words) {
  unsigned log = 11;
  while (log < 13 && std::size_t{1} << log < words * 8) ++log;
  while (log < 16 && std::size_t{1} << log < words * 2) ++log;
  return log;
}

}  // namespace

PrefixFilter::PrefixFilter(std::size_t words) : rows_(LogRowsFor(words)) {}

void PrefixFilter::Add(std::string_view word) {
  const char* bytes = word.data();
  if (word.size() < 4) return AddShort(word);
  rows_.AllowBefore(KeyAt(bytes), ByteAt(bytes, 0));
  const char before[] = {0, bytes[0], bytes[1], bytes[2]};  // the first byte is not part of the key
  rows_.AllowAfter(KeyAt(before), ByteAt(bytes, 3));
}

void PrefixFilter::AddShort(std::string_view word) {
  pairs_.resize(std::size_t{1} << 16);
  for (unsigned second = 0; second < 256; ++second) {
    if (word.size() > 1 && (second | kCaseBit) != (ByteAt(word.data(), 1) | kCaseBit)) continue;
    const char bytes[] = {word[0], static_cast<char>(second)};
    pairs_[PairAt(bytes)] = 1;
    pairs_[PairAt(bytes) ^ kCaseBit] = 1;
  }
}

}  // namespace zvuti
