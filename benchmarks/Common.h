// Helpers shared by all benchmarks: heap usage, row names.
//
// A row is named Subject/who or Subject/who/size, where `who` is "library" for our own code.
// tools/bench/table.py puts the rows of one subject side by side.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

namespace bench {

/// Bytes that the process has allocated on the heap, by whichever function.
std::int64_t HeldBytes();

/// Runs `work` once and checks its result with `isRight`, then measures `work`. The row fails if the result
/// is wrong.
template <class Work, class IsRight>
void Measure(benchmark::State& state, Work work, IsRight isRight) {
  if (!isRight(work())) return state.SkipWithError("the result is wrong");
  for (auto _ : state) benchmark::DoNotOptimize(work());
}

/// The name of a row.
inline std::string Row(const std::string& subject, const std::string& who) { return subject + "/" + who; }
inline std::string Row(const std::string& subject, const std::string& who, std::size_t size) {
  return Row(subject, who) + "/" + std::to_string(size);
}

}  // namespace bench
