// The same conversions by ICU, with a converter that stays open.
#include <unicode/ucnv.h>

#include "benchmarks/text/Conversion.h"

namespace bench {
namespace {

UConverter* Gbk() {
  UErrorCode error = U_ZERO_ERROR;
  static UConverter* const converter = ucnv_open("windows-936", &error);
  return converter;
}

int SizeOf(std::size_t size) { return static_cast<int>(size); }

struct Icu {
  static std::string GbkToUtf8(std::string_view text) {
    std::string out(text.size() + text.size() / 2, '\0');
    UErrorCode error = U_ZERO_ERROR;
    const int size = ucnv_toAlgorithmic(UCNV_UTF8, Gbk(), out.data(), SizeOf(out.size()), text.data(),
                                        SizeOf(text.size()), &error);
    out.resize(static_cast<std::size_t>(size));
    return out;
  }
  static std::string Utf8ToGbk(std::string_view text) {
    std::string out(text.size(), '\0');
    UErrorCode error = U_ZERO_ERROR;
    const int size = ucnv_fromAlgorithmic(Gbk(), UCNV_UTF8, out.data(), SizeOf(out.size()), text.data(),
                                          SizeOf(text.size()), &error);
    out.resize(static_cast<std::size_t>(size));
    return out;
  }
  static std::u16string GbkToUtf16(std::string_view text) {
    std::u16string out(text.size(), u'\0');
    UErrorCode error = U_ZERO_ERROR;
    const int size =
        ucnv_toUChars(Gbk(), out.data(), SizeOf(out.size()), text.data(), SizeOf(text.size()), &error);
    out.resize(static_cast<std::size_t>(size));
    return out;
  }
  static std::string Utf16ToGbk(std::u16string_view text) {
    std::string out(text.size() * 2, '\0');
    UErrorCode error = U_ZERO_ERROR;
    const int size =
        ucnv_fromUChars(Gbk(), out.data(), SizeOf(out.size()), text.data(), SizeOf(text.size()), &error);
    out.resize(static_cast<std::size_t>(size));
    return out;
  }
};

const bool kRegistered = (AddConversions<Icu>("icu"), true);

}  // namespace
}  // namespace bench
