#include "shared/GbkText.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include <ZvUtiLib/gbk/Conversion.h>

#include "shared/Terminal.h"

namespace tool {
namespace {

// The first place of `text` that `convert` loses, or npos. Converts growing parts, in time proportional to
// the result. `longest` is the most bytes that a character has: the end of a part can cut one.
template <class Convert>
std::size_t FirstLost(std::string_view text, std::size_t longest, Convert convert) {
  for (std::size_t size = 64;; size *= 4) {
    const auto converted = convert(text.substr(0, size));
    const bool isCut = size < text.size() && !converted.IsWhole() && converted.lostAt + longest > size;
    if (!converted.IsWhole() && !isCut) return converted.lostAt;
    if (size >= text.size()) return std::string_view::npos;
  }
}

}  // namespace

std::string Shown(std::string_view gbk) {
  std::string out;
  while (!gbk.empty()) {
    const std::size_t broken = FindBroken(gbk);
    const std::string_view whole = gbk.substr(0, broken);
    out += zvuti::GbkToUtf8(whole).text;
    gbk.remove_prefix(whole.size());
    // The bytes that one question mark of the library stands for: one, or a pair.
    const std::size_t length = gbk.size() > 1 && zvuti::GbkToUtf8(gbk.substr(0, 2)).text.size() == 1 ? 2 : 1;
    for (const char byte : gbk.substr(0, length)) {
      char digits[8];
      std::snprintf(digits, sizeof digits, "\\x%02X",
                    static_cast<unsigned>(static_cast<unsigned char>(byte)));
      out += digits;
    }
    gbk.remove_prefix(std::min(length, gbk.size()));
  }
  return out;
}

std::size_t FindBroken(std::string_view gbk) { return FirstLost(gbk, 2, zvuti::GbkToUtf8); }

std::size_t FindForeign(std::string_view utf8) { return FirstLost(utf8, 4, zvuti::Utf8ToGbk); }

std::string ToGbk(std::string_view utf8, const std::string& what) {
  zvuti::Converted<std::string> gbk = zvuti::Utf8ToGbk(utf8);
  if (gbk.IsWhole()) return std::move(gbk.text);
  throw Failure(what + ": " + NameOfFirst(utf8.substr(gbk.lostAt)) + " cannot be converted to GBK");
}

std::string NameOfFirst(std::string_view utf8) {
  const zvuti::Converted<std::u16string> first = zvuti::Utf8ToUtf16(utf8.substr(0, 4));
  const std::u16string& units = first.text;
  char name[40];
  if (first.lostAt != 0) {
    const bool isPair = units[0] >= 0xD800 && units[0] < 0xDC00;
    const unsigned character =
        isPair ? 0x10000u + ((units[0] - 0xD800u) << 10) + (units[1] - 0xDC00u) : units[0];
    std::snprintf(name, sizeof name, "U+%04X", character);
  } else {
    std::snprintf(name, sizeof name, "the byte 0x%02X",
                  static_cast<unsigned>(static_cast<unsigned char>(utf8[0])));
  }
  return name;
}

}  // namespace tool
