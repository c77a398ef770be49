// Conversion between GBK and UTF-8 or UTF-16. Each result is a new string.
#include "benchmarks/text/Conversion.h"

namespace bench {
namespace {

struct Library {
  static std::string GbkToUtf8(std::string_view text) { return zvuti::GbkToUtf8(text).text; }
  static std::string Utf8ToGbk(std::string_view text) { return zvuti::Utf8ToGbk(text).text; }
  static std::u16string GbkToUtf16(std::string_view text) { return zvuti::GbkToUtf16(text).text; }
  static std::string Utf16ToGbk(std::u16string_view text) { return zvuti::Utf16ToGbk(text).text; }
};

const bool kRegistered = (AddConversions<Library>("library"), true);

}  // namespace
}  // namespace bench
