// fmt::format_to, printing the same texts.
#include <fmt/format.h>

#include "benchmarks/Common.h"
#include "benchmarks/text/Time.h"

namespace bench {
namespace {

std::string Seconds() {
  char text[64];
  const Time t = Now();
  char* end = fmt::format_to(text, "{:04}-{:02}-{:02} {:02}:{:02}:{:02}", t.year, t.month, t.day, t.hour,
                             t.minute, t.second);
  return {text, end};
}

std::string Minutes() {
  char text[64];
  const Time t = Now();
  char* end = fmt::format_to(text, "{:04}-{:02}-{:02} {:02}:{:02}", t.year, t.month, t.day, t.hour, t.minute);
  return {text, end};
}

const bool kRegistered = [] {
  benchmark::RegisterBenchmark("FormatSeconds/fmt", [](auto& state) {
    Measure(state, Seconds, [](const std::string& text) { return text == kSecondsText; });
  });
  benchmark::RegisterBenchmark("FormatMinutes/fmt", [](auto& state) {
    Measure(state, Minutes, [](const std::string& text) { return text == kMinutesText; });
  });
  return true;
}();

}  // namespace
}  // namespace bench
