// The conversions by iconv of the C library, whose converters stay open.
#include <iconv.h>

#include "benchmarks/text/Conversion.h"

namespace bench {
namespace {

struct Iconv {
  template <class Out, class In>
  static Out Convert(iconv_t converter, In text, std::size_t most) {
    Out out(most, 0);
    char* from = reinterpret_cast<char*>(const_cast<typename In::value_type*>(text.data()));
    char* to = reinterpret_cast<char*>(out.data());
    std::size_t left = text.size() * sizeof text[0], room = most * sizeof out[0];
    iconv(converter, &from, &left, &to, &room);
    out.resize(most - room / sizeof out[0]);
    return out;
  }
  static std::string GbkToUtf8(std::string_view text) {
    static const iconv_t converter = iconv_open("UTF-8", "GBK");
    return Convert<std::string>(converter, text, text.size() + text.size() / 2);
  }
  static std::string Utf8ToGbk(std::string_view text) {
    static const iconv_t converter = iconv_open("GBK", "UTF-8");
    return Convert<std::string>(converter, text, text.size());
  }
  static std::u16string GbkToUtf16(std::string_view text) {
    static const iconv_t converter = iconv_open("UTF-16LE", "GBK");
    return Convert<std::u16string>(converter, text, text.size());
  }
  static std::string Utf16ToGbk(std::u16string_view text) {
    static const iconv_t converter = iconv_open("GBK", "UTF-16LE");
    return Convert<std::string>(converter, text, text.size() * 2);
  }
};

const bool kRegistered = (AddConversions<Iconv>("iconv"), true);

}  // namespace
}  // namespace bench
