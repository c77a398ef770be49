#include "text/words/PrefixFilter.h"

#include "gbk/CodePage936.h"

namespace zvuti {
namespace {

constexpr std::size_t kPairs = std::size_t{1} << 16;
constexpr std::size_t kLongestShort = 3;

// There is plenty of room for each word, so that false alarms are rare, as long as the rows stay in the
// nearest cache (2 to the power of 18 bits), and less beyond.
unsigned LogBitsFor(std::size_t words) {
  unsigned log = 16;
  while (log < 18 && std::size_t{1} << log < words * 256) ++log;
  while (log < 21 && std::size_t{1} << log < words * 64) ++log;
  return log;
}

}  // namespace

PrefixFilter::PrefixFilter(std::size_t words) : characters_(words) {
  const unsigned logRows = LogBitsFor(words) - 5;
  rows_.resize(std::size_t{1} << logRows);
  shift_ = 32 - logRows;
}

void PrefixFilter::Add(std::string_view word) {
  characters_.Add(word);
  if (word.size() <= kLongestShort) return AddPairs(word);
  rows_[RowOf(word.data())] |= kBitBefore[ByteAt(word.data(), 0)];
  const char bytes[] = {0, word[0], word[1], word[2]};
  rows_[RowOf(bytes)] |= kBitBehind[ByteAt(word.data(), 3)];
}

void PrefixFilter::AddPairs(std::string_view word) {
  if (pairs_.empty()) pairs_.resize(kPairs);
  for (int second = 0; second < 256; ++second) {
    const char bytes[] = {word[0], static_cast<char>(second)};
    const char wanted = word.size() == 1 ? bytes[1] : word[1];
    if ((ByteAt(&wanted, 0) | kCaseBit) != (ByteAt(bytes, 1) | kCaseBit)) continue;
    pairs_[PairOf(bytes)] = 1;
    pairs_[PairOf(bytes) ^ kCaseBit] = 1;
  }
}

// Behind a byte that is no lead byte a character always begins; in a run of lead bytes each takes the next
// one along.
bool IsCharacterStart(std::string_view text, std::size_t known, std::size_t index) {
  std::size_t run = index;
  while (run - known >= gbk::kRegister && gbk::AreLeadBytes(text.data() + run - gbk::kRegister)) {
    run -= gbk::kRegister;
  }
  while (run > known && gbk::IsLeadByte(text[run - 1])) --run;
  return (index - run) % 2 == 0;
}

}  // namespace zvuti
