#include "platform/xml/XmlEncoding.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <string_view>

#include "gbk/Ascii.h"
#include "gbk/CodePage936.h"

namespace zvuti::xml {
namespace {

constexpr std::string_view kCodePage936[] = {
    "gb2312",   "gbk",        "gb_2312-80",      "gb2312-80", "gb231280",  "x-gbk", "cp936",
    "csgb2312", "csgb231280", "csiso58gb231280", "chinese",   "iso-ir-58", "cn-gb",
};
constexpr std::string_view kUtf8[] = {"utf-8", "utf8", "unicode-1-1-utf-8", "unicode-2-0-utf-8",
                                      "x-unicode-2-0-utf-8"};
constexpr std::string_view kUtf16[] = {"utf-16",          "utf-16le", "utf-16be",   "ucs-2",
                                       "iso-10646-ucs-2", "unicode",  "unicodefffe"};
constexpr std::string_view kLatin1[] = {"iso-8859-1", "iso_8859-1", "iso8859-1", "latin1", "l1"};
constexpr std::string_view kAscii[] = {"us-ascii", "ascii", "iso646-us", "iso-ir-6"};
// The page's name in another registry; the platform refuses it here.
constexpr std::string_view kRefused[] = {"windows-936"};

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

template <std::size_t kCount>
bool IsOneOf(std::string_view name, const std::string_view (&names)[kCount]) {
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

std::string_view SkipSpace(std::string_view text) {
  const auto end = std::find_if_not(text.begin(), text.end(), IsXmlSpace);
  return text.substr(static_cast<std::size_t>(end - text.begin()));
}

// The encoding that an XML declaration names, in small letters; "" where there is none. A declaration
// that is not well-formed may give anything: the parser refuses it later.
std::string DeclaredEncoding(std::string_view text) {
  constexpr std::string_view kWord = "encoding";
  if (text.substr(0, 5) != "<?xml" || text.size() < 6 || !IsXmlSpace(text[5])) return {};
  text = text.substr(0, text.find("?>"));
  const std::size_t at = text.find(kWord);
  if (at == text.npos) return {};
  text = SkipSpace(text.substr(at + kWord.size()));
  if (text.substr(0, 1) != "=") return {};
  text = SkipSpace(text.substr(1));
  if (text.empty() || (text[0] != '"' && text[0] != '\'')) return {};
  std::string name(text.substr(1, text.find(text[0], 1) - 1));
  gbk::FoldToLower(name.data(), name.size());
  return name;
}

bool FromUtf16(std::string& bytes, bool isBigEndian) {
  if (bytes.size() % 2 != 0) return false;
  std::u16string units(bytes.size() / 2, u'\0');
  const std::size_t high = isBigEndian ? 0 : 1;
  for (std::size_t i = 0; i < units.size(); ++i) {
    const auto byte = [&](std::size_t which) { return static_cast<unsigned char>(bytes[2 * i + which]); };
    units[i] = static_cast<char16_t>(byte(high) << 8 | byte(1 - high));
  }
  if (!IsWellFormedUtf16(units)) return false;
  bytes = gbk::Utf16ToUtf8(units);
  return true;
}

bool From936(std::string& bytes) {
  bool isWhole = false;
  bytes = gbk::ToUtf8(bytes, &isWhole);
  return isWhole;
}

void FromLatin1(std::string& bytes) {
  std::u16string units(bytes.size(), u'\0');
  std::transform(bytes.begin(), bytes.end(), units.begin(),
                 [](char byte) { return static_cast<char16_t>(static_cast<unsigned char>(byte)); });
  bytes = gbk::Utf16ToUtf8(units);
}

bool FromNamed(std::string& bytes, const std::string& name) {
  const iconv_t converter = iconv_open("UTF-8", name.c_str());
  if (converter == reinterpret_cast<iconv_t>(-1)) return false;
  struct Closer {
    iconv_t handle;
    ~Closer() { iconv_close(handle); }
  } const closer{converter};

  std::string out;
  char* in = bytes.data();
  std::size_t left = bytes.size();
  // A call without input ends the text: it writes what a stateful encoding still holds back.
  for (bool isEnding = false;;) {
    char buffer[4096];
    char* to = buffer;
    std::size_t room = sizeof buffer;
    const bool isDone =
        iconv(converter, isEnding ? nullptr : &in, &left, &to, &room) != static_cast<std::size_t>(-1);
    out.append(buffer, to);
    if (isDone && isEnding) break;
    if (isDone) isEnding = true;
    if (!isDone && to == buffer) return false;
    if (!isDone && errno != E2BIG) return false;
  }
  bytes = std::move(out);
  return true;
}

}  // namespace

bool IsWellFormedUtf16(std::u16string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if ((text[i] & 0xF800) != 0xD800) continue;
    const bool isPair = text[i] < 0xDC00 && i + 1 < text.size() && (text[i + 1] & 0xFC00) == 0xDC00;
    if (!isPair) return false;
    ++i;
  }
  return true;
}

std::optional<Encoding> CutToPlain(std::string_view& bytes) {
  if (bytes.substr(0, kUtf8Mark.size()) == kUtf8Mark) {
    bytes.remove_prefix(kUtf8Mark.size());
    return Encoding::kUtf8;
  }
  const std::string name = DeclaredEncoding(bytes);
  if (name.empty() || IsOneOf(name, kUtf8) || (IsOneOf(name, kAscii) && IsAscii(bytes)))
    return Encoding::kUtf8;
  return IsOneOf(name, kCodePage936) ? std::optional(Encoding::kGbk) : std::nullopt;
}

bool ToUtf8(std::string& bytes) {
  using namespace std::string_view_literals;
  const std::string_view start = std::string_view(bytes).substr(0, 4);
  if (start.substr(0, 3) == kUtf8Mark) return true;
  if (start.substr(0, 2) == "\xFE\xFF" || start.substr(0, 2) == "\xFF\xFE") {
    const bool isBigEndian = start[0] == '\xFE';
    bytes.erase(0, 2);
    return FromUtf16(bytes, isBigEndian);
  }
  // UTF-16 without a mark shows by the zero bytes in "<?"; it has to be declared.
  if (start == "\0<\0?"sv || start == "<\0?\0"sv) {
    return FromUtf16(bytes, start[0] == '\0') && IsOneOf(DeclaredEncoding(bytes), kUtf16);
  }
  const std::string name = DeclaredEncoding(bytes);
  if (name.empty() || IsOneOf(name, kUtf8)) return true;
  if (IsOneOf(name, kCodePage936)) return From936(bytes);
  if (IsOneOf(name, kUtf16) || IsOneOf(name, kRefused)) return false;
  if (IsOneOf(name, kAscii)) return IsAscii(bytes);
  if (!IsOneOf(name, kLatin1)) return FromNamed(bytes, name);
  FromLatin1(bytes);
  return true;
}

}  // namespace zvuti::xml
