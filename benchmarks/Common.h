// What all benchmarks share: chance that is the same everywhere, held memory, rows of one name scheme.
//
// A row is called Subject/who or Subject/who/size, with "library" for ours; tools/bench/table.py sets the
// rows of one subject side by side.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <string>

namespace bench {

/// A number of 0 to `bound` - 1; standard distributions differ between libraries, this does not.
inline unsigned Below(std::mt19937& random, unsigned bound) {
  return static_cast<unsigned>(random()) % bound;
}

/// `characters` common GBK characters, two bytes each.
std::string Hanzi(std::mt19937& random, unsigned characters);

/// Bytes that the process holds on the heap, however they were asked for.
std::int64_t HeldBytes();

/// A row that first checks what it computes: runs `work` once and looks at its result, then measures it.
template <class Work, class IsRight>
void Measure(benchmark::State& state, Work work, IsRight isRight) {
  if (!isRight(work())) return state.SkipWithError("the result is wrong");
  for (auto _ : state) benchmark::DoNotOptimize(work());
}

/// Names of rows.
inline std::string Row(const std::string& subject, const std::string& who) { return subject + "/" + who; }
inline std::string Row(const std::string& subject, const std::string& who, std::size_t size) {
  return Row(subject, who) + "/" + std::to_string(size);
}

}  // namespace bench
