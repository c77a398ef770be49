// The library's word list.
#include <map>

#include "benchmarks/words/Data.h"
#include "benchmarks/words/Measure.h"

namespace bench {
namespace {

// The list shared by all rows with `count` words.
const CUtiBlackList& ListOf(std::size_t count) {
  static std::map<std::size_t, CUtiBlackList> lists;
  auto found = lists.find(count);
  if (found != lists.end()) return found->second;
  CUtiBlackList& list = lists[count];
  LoadWords(list, count);
  return list;
}

void MatchClean(benchmark::State& state, std::size_t count, unsigned bytes) {
  const CUtiBlackList& list = ListOf(count);
  const std::vector<std::string>& lines = CleanLines(count, bytes);
  for (const std::string& line : lines) {
    if (list.IsMatched(line.c_str()) != 0) return state.SkipWithError("found a word in a clean line");
  }
  MeasureLines(state, lines, [&](const std::string& line) { return list.IsMatched(line.c_str()); });
}

void MatchHit(benchmark::State& state, std::size_t count, unsigned bytes) {
  const CUtiBlackList& list = ListOf(count);
  const HitLines& hit = LinesWithHit(count, bytes);
  for (const std::string& line : hit.lines) {
    if (list.IsMatched(line.c_str()) != 1) return state.SkipWithError("missed a word");
  }
  MeasureLines(state, hit.lines, [&](const std::string& line) { return list.IsMatched(line.c_str()); });
}

void Mask(benchmark::State& state, std::size_t count, unsigned bytes) {
  const CUtiBlackList& list = ListOf(count);
  const HitLines& hit = LinesWithHit(count, bytes);
  CString result;
  for (std::size_t i = 0; i < hit.lines.size(); ++i) {
    list.ReplaceBlackWord(hit.lines[i].c_str(), result);
    if (hit.masked[i] != result.GetString()) return state.SkipWithError("masked a line wrongly");
  }
  MeasureLines(state, hit.lines,
               [&](const std::string& line) { return list.ReplaceBlackWord(line.c_str(), result); });
}

void MatchText(benchmark::State& state, std::size_t count, const std::string& text) {
  const CUtiBlackList& list = ListOf(count);
  if (list.IsMatched(text.c_str()) != 0) return state.SkipWithError("found a word in a clean text");
  for (auto _ : state) benchmark::DoNotOptimize(list.IsMatched(text.c_str()));
  state.counters["bytes"] = static_cast<double>(text.size());
}

void MaskText(benchmark::State& state, std::size_t count, unsigned bytes) {
  const HitLines& hit = LinesWithHit(count, 250);
  std::string text, masked;
  for (std::size_t i = 0; text.size() < bytes; ++i) {
    text += hit.lines[i % hit.lines.size()] + ",";
    masked += hit.masked[i % hit.lines.size()] + ",";
  }
  CString result;
  ListOf(count).ReplaceBlackWord(text.c_str(), result);
  if (masked != result.GetString()) return state.SkipWithError("masked the text wrongly");
  for (auto _ : state) benchmark::DoNotOptimize(ListOf(count).ReplaceBlackWord(text.c_str(), result));
  state.counters["bytes"] = static_cast<double>(text.size());
}

void Load(benchmark::State& state, std::size_t count) {
  WordFile(count);
  {
    const std::int64_t before = HeldBytes();
    CUtiBlackList list;
    LoadWords(list, count);
    state.counters["held"] = static_cast<double>(HeldBytes() - before);
    for (const std::string& word : Words(count)) {
      if (list.IsMatched(word.c_str()) != 1) return state.SkipWithError("a word of the list was not loaded");
    }
  }
  for (auto _ : state) {
    CUtiBlackList list;
    LoadWords(list, count);
    benchmark::DoNotOptimize(list.IsLoaded());
  }
}

const bool kRegistered = [] {
  for (const std::size_t count : kListSizes) {
    for (const unsigned bytes : kLineSizes) {
      const std::string line = "Line" + std::to_string(bytes);
      benchmark::RegisterBenchmark(Row("Clean" + line, "library", count).c_str(), MatchClean, count, bytes);
      benchmark::RegisterBenchmark(Row("Hit" + line, "library", count).c_str(), MatchHit, count, bytes);
      benchmark::RegisterBenchmark(Row("Mask" + line, "library", count).c_str(), Mask, count, bytes);
    }
    benchmark::RegisterBenchmark(Row("CleanText", "library", count).c_str(), [count](auto& state) {
      MatchText(state, count, CleanText(count, kTextSize));
    });
    benchmark::RegisterBenchmark(Row("NearMisses", "library", count).c_str(), [count](auto& state) {
      MatchText(state, count, NearMisses(count, kTextSize));
    });
    benchmark::RegisterBenchmark(Row("Load", "library", count).c_str(), Load, count)
        ->Repetitions(kLoadRepetitions);
  }
  // Rows that show how the cost grows with the text.
  for (const unsigned kilobytes : {1, 8, 64, 512}) {
    benchmark::RegisterBenchmark(Row("MaskText", "library", kilobytes).c_str(),
                                 [kilobytes](auto& state) { MaskText(state, 10000, kilobytes * 1024); });
    benchmark::RegisterBenchmark(Row("NearText", "library", kilobytes).c_str(), [kilobytes](auto& state) {
      MatchText(state, 10000, NearMisses(10000, kilobytes * 1024));
    });
  }
  return true;
}();

}  // namespace
}  // namespace bench
