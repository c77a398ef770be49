// CTextString::Format with integer formats that the library itself uses, and packed time converted to text.
#include <ZvUtiLib/CKxTime.h>
#include <ZvUtiLib/data/CTextString.h>

#include <cinttypes>
#include <cstdio>
#include <string_view>

#include "benchmarks/Common.h"
#include "benchmarks/text/Time.h"

namespace bench {
namespace {

#define SECONDS_OF(t) \
  "%.4d-%.2d-%.2d %.2d:%.2d:%.2d", (t).year, (t).month, (t).day, (t).hour, (t).minute, (t).second
#define MINUTES_OF(t) "%.4d-%.2d-%.2d %.2d:%.2d", (t).year, (t).month, (t).day, (t).hour, (t).minute

constexpr unsigned long kWord = 26ul << 26 | 11ul << 22 | 23ul << 17 | 8ul << 12 | 5ul << 6 | 9ul;
volatile unsigned long word = kWord;

constexpr std::string_view kValueText = "4938271605493827160";
volatile std::int64_t value = 4938271605493827160;

template <class Print>
void Add(const char* subject, const char* who, std::string_view expected, Print print) {
  benchmark::RegisterBenchmark(Row(subject, who).c_str(), [=](auto& state) {
    Measure(state, print, [&](const auto& text) { return std::string_view(text) == expected; });
  });
}

const bool kRegistered = [] {
  Add("FormatSeconds", "library", kSecondsText, []() -> const CTextString& {
    static CTextString text;
    const Time t = Now();
    text.Format(SECONDS_OF(t));
    return text;
  });
  Add("FormatMinutes", "library", kMinutesText, []() -> const CTextString& {
    static CTextString text;
    const Time t = Now();
    text.Format(MINUTES_OF(t));
    return text;
  });
  Add("FormatSeconds", "snprintf", kSecondsText, [] {
    static char text[64];
    const Time t = Now();
    std::snprintf(text, sizeof text, SECONDS_OF(t));
    return text;
  });
  Add("FormatMinutes", "snprintf", kMinutesText, [] {
    static char text[64];
    const Time t = Now();
    std::snprintf(text, sizeof text, MINUTES_OF(t));
    return text;
  });
  Add("FormatValue", "library", kValueText, []() -> const CTextString& {
    static CTextString text;
    text.Format("%I64d", value);
    return text;
  });
  Add("FormatValue", "snprintf", kValueText, [] {
    static char text[64];
    std::snprintf(text, sizeof text, "%" PRId64, value);
    return text;
  });
  Add("PackedTime", "library", kSecondsText,
      [] { return std::string(CKxTime::DWord2String(word).GetString()); });
  Add("PackedTime", "snprintf", kSecondsText, [] {
    const unsigned long w = word;
    const auto field = [w](unsigned shift, unsigned mask) { return static_cast<int>(w >> shift & mask); };
    char text[64];
    std::snprintf(text, sizeof text, "%.4d-%.2d-%.2d %.2d:%.2d:%.2d", 2000 + field(26, 63), field(22, 15),
                  field(17, 31), field(12, 31), field(6, 63), field(0, 63));
    return std::string(text);
  });
  return true;
}();

}  // namespace
}  // namespace bench
