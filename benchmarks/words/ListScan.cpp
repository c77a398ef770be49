// The plain way: fold a copy of the line to upper case, then search it for each word of the list.
#include "benchmarks/words/Data.h"
#include "benchmarks/words/Measure.h"

namespace bench {
namespace {

bool IsMatchedByScan(const std::vector<std::string>& words, const std::string& line) {
  CString folded(line.c_str());
  folded.MakeUpper();
  for (const std::string& word : words) {
    if (folded.Find(word.c_str()) >= 0) return true;
  }
  return false;
}

void Scan(benchmark::State& state, std::size_t count) {
  const std::vector<std::string>& words = Words(count);
  const std::vector<std::string>& lines = CleanLines(count, 60);
  for (const std::string& line : LinesWithHit(count, 60).lines) {
    if (!IsMatchedByScan(words, line)) return state.SkipWithError("missed a word");
  }
  for (const std::string& line : lines) {
    if (IsMatchedByScan(words, line)) return state.SkipWithError("found a word in a clean line");
  }
  MeasureLines(state, lines, [&](const std::string& line) { return IsMatchedByScan(words, line); });
}

const bool kRegistered = [] {
  for (const std::size_t count : {100, 1000, 10000}) {
    benchmark::RegisterBenchmark(Row("CleanLine60", "scan", count).c_str(), Scan, count);
  }
  return true;
}();

}  // namespace
}  // namespace bench
