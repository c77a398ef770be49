// How long a search takes for a line.
#pragma once

#include <string>
#include <vector>

#include "benchmarks/Common.h"

namespace bench {

/// Measures `call`, applied to one line after another; the time of the row is that of one line.
template <class Call>
void MeasureLines(benchmark::State& state, const std::vector<std::string>& lines, Call call) {
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(call(lines[next]));
    next = next + 1 < lines.size() ? next + 1 : 0;
  }
}

}  // namespace bench
