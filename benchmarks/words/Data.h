// Lists of forbidden words, and the texts that are searched for them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <ZvUtiLib/CUtiBlackList.h>

namespace bench {

inline constexpr std::size_t kListSizes[] = {100, 1000, 10000, 100000};
inline constexpr unsigned kLineSizes[] = {20, 60, 250};  // bytes
inline constexpr unsigned kTextSize = 64 * 1024;
/// Repetitions of rows that load a list, which take seconds.
inline constexpr int kLoadRepetitions = 5;

/// `count` different words of two to six Chinese characters; every twentieth is a Latin word in capitals.
const std::vector<std::string>& Words(std::size_t count);

/// Number of places where a word of the list occurs in `text`, overlapping ones included.
std::size_t CountHits(const std::vector<std::string>& words, std::string_view text);

/// 64 lines of `bytes` bytes each that contain no word of Words(count).
const std::vector<std::string>& CleanLines(std::size_t count, unsigned bytes);

/// The same lines with one word written over each, and the lines as they look when masked.
struct HitLines {
  std::vector<std::string> lines, masked;
};
const HitLines& LinesWithHit(std::size_t count, unsigned bytes);

/// Clean lines joined with commas.
std::string CleanText(std::size_t count, unsigned bytes);
/// A text made only of words without their last character, with no hit. It is the worst case for a search.
const std::string& NearMisses(std::size_t count, unsigned bytes);

/// Loads Words(count) into `list` from a file, as a client does.
void LoadWords(CUtiBlackList& list, std::size_t count);
/// Path of a file with Words(count); it is removed when the program ends.
const std::string& WordFile(std::size_t count);

}  // namespace bench
