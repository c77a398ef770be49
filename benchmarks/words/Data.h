// Lists of forbidden words, and the texts that they are looked for in.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <ZvUtiLib/CUtiBlackList.h>

#include "benchmarks/Common.h"

namespace bench {

inline constexpr std::size_t kListSizes[] = {100, 1000, 10000, 100000};
inline constexpr unsigned kLineSizes[] = {20, 60, 250};  // bytes
inline constexpr unsigned kTextSize = 64 * 1024;
/// Of rows that load a list: they take seconds.
inline constexpr int kLoadRepetitions = 5;

/// Different words of two to six Chinese characters, every twentieth Latin in capitals.
const std::vector<std::string>& Words(std::size_t count);

/// How often words of the list stand in the text, wherever in it and overlapping or not.
std::size_t CountHits(const std::vector<std::string>& words, std::string_view text);

/// 64 lines of `bytes` bytes without a word of the list of `count`.
const std::vector<std::string>& CleanLines(std::size_t count, unsigned bytes);

/// The same lines, each with one word of the list in the place of as many bytes, and how they are masked.
struct HitLines {
  std::vector<std::string> lines, masked;
};
const HitLines& LinesWithHit(std::size_t count, unsigned bytes);

/// Clean lines, one behind the other, parted by commas.
std::string CleanText(std::size_t count, unsigned bytes);
/// A text of nothing but words that lack their last character, and has no hit: the worst there is.
const std::string& NearMisses(std::size_t count, unsigned bytes);

/// The library's list of these words, loaded from a file as a client loads it.
void LoadWords(CUtiBlackList& list, std::size_t count);
/// The file of the list, which ends with the program.
const std::string& WordFile(std::size_t count);

/// Measures one call a line over all lines; the time is that of a line.
template <class Call>
void MeasureLines(benchmark::State& state, const std::vector<std::string>& lines, Call call) {
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(call(lines[next]));
    next = next + 1 < lines.size() ? next + 1 : 0;
  }
}

}  // namespace bench
