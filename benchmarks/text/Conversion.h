// The texts of the conversion rows, and how a peer adds its rows.
#pragma once

#include <ZvUtiLib/gbk/Conversion.h>

#include <string>
#include <string_view>

#include "benchmarks/Common.h"
#include "benchmarks/Random.h"

namespace bench {

struct ConversionText {
  const char* name;
  std::string gbk;
};
/// 64 KB of Chinese, of ASCII and mixed, and 20 bytes mixed. All converters agree on these characters.
inline const ConversionText* ConversionTexts() {
  static const auto make = [](std::size_t bytes, unsigned latin, unsigned hanzi) {
    std::mt19937 random(1);
    std::string text;
    while (text.size() < bytes) {
      text += Hanzi(random, hanzi) + std::string("Lobby 17: hello, you").substr(0, latin);
    }
    return text.substr(0, bytes);
  };
  static const ConversionText texts[] = {{"Chinese", make(65'536, 0, 64)},
                                         {"Ascii", make(65'536, 16, 0)},
                                         {"Mixed", make(65'536, 8, 4)},
                                         {"Name20", make(20, 6, 7)},
                                         {nullptr, {}}};
  return texts;
}

/// Adds a row for each text. `convert` takes a view of the source and returns the result.
template <class Text, class Convert>
void AddConversion(const std::string& way, const char* who, const Text& source, const auto& expected,
                   Convert convert, const char* name) {
  benchmark::RegisterBenchmark(Row(way + name, who).c_str(), [=](auto& state) {
    Measure(
        state, [&] { return convert(source); }, [&](const auto& result) { return result == expected; });
  });
}

/// Adds all rows of a converter, which has the four functions.
template <class Converter>
void AddConversions(const char* who) {
  for (const ConversionText* text = ConversionTexts(); text->name; ++text) {
    const std::string utf8 = zvuti::GbkToUtf8(text->gbk).text;
    const std::u16string utf16 = zvuti::GbkToUtf16(text->gbk).text;
    AddConversion("GbkToUtf8", who, text->gbk, utf8, Converter::GbkToUtf8, text->name);
    AddConversion("Utf8ToGbk", who, utf8, text->gbk, Converter::Utf8ToGbk, text->name);
    AddConversion("GbkToUtf16", who, text->gbk, utf16, Converter::GbkToUtf16, text->name);
    AddConversion("Utf16ToGbk", who, utf16, text->gbk, Converter::Utf16ToGbk, text->name);
  }
}

}  // namespace bench
