#include "shared/Encoding.h"

#include <strings.h>

#include <algorithm>
#include <array>

#include <ZvUtiLib/gbk/Conversion.h>

namespace tool {
namespace {

constexpr std::string_view kLittleMark = "\xFF\xFE", kBigMark = "\xFE\xFF";

bool StartsWith(std::string_view bytes, std::string_view mark) {
  return bytes.substr(0, mark.size()) == mark;
}
unsigned ByteAt(std::string_view bytes, std::size_t at) { return static_cast<unsigned char>(bytes[at]); }

// "utf-16le" or "utf-16be" if all zero bytes are halves of units, and every line end has one. Text in GBK has
// no zero bytes.
std::string Utf16WithoutMark(std::string_view bytes) {
  std::array<std::size_t, 2> zeros{}, lineEnds{};  // at even and odd places
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    zeros[i % 2] += bytes[i] == '\0' ? 1 : 0;
    lineEnds[i % 2] += bytes[i] == '\n' ? 1 : 0;
  }
  for (const std::size_t high : {0u, 1u}) {
    if (zeros[high] > 0 && zeros[high] >= lineEnds[1 - high] && zeros[1 - high] == 0)
      return high == 1 ? "utf-16le" : "utf-16be";
  }
  return {};
}

// Common characters have lead bytes A4 to C6 in Big5, and four of ten have a trail byte below 7F. In GBK such
// trail bytes belong to rare characters.
bool LooksLikeBig5(std::string_view bytes) {
  std::size_t characters = 0, common = 0, lowTrails = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (ByteAt(bytes, i) < 0x80) continue;
    if (i + 1 == bytes.size()) return false;
    const unsigned lead = ByteAt(bytes, i), trail = ByteAt(bytes, ++i);
    const bool isLow = trail >= 0x40 && trail < 0x7F;
    if (lead < 0xA1 || lead > 0xF9 || (!isLow && (trail < 0xA1 || trail > 0xFE))) return false;
    ++characters;
    common += lead >= 0xA4 && lead <= 0xC6 ? 1 : 0;
    lowTrails += isLow ? 1 : 0;
  }
  return characters >= 8 && common * 10 >= characters * 8 && lowTrails * 5 >= characters;
}

std::string FromUtf16(std::string_view bytes, std::size_t highByte, bool& isWhole) {
  std::u16string units;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    units += static_cast<char16_t>(ByteAt(bytes, i + highByte) << 8 | ByteAt(bytes, i + 1 - highByte));
  }
  auto converted = zvuti::Utf16ToUtf8(units);
  isWhole = converted.IsWhole() && bytes.size() % 2 == 0;
  return std::move(converted.text);
}

}  // namespace

bool HasUtf8Mark(std::string_view bytes) { return StartsWith(bytes, kUtf8Mark); }

bool LooksLikeUtf8(std::string_view bytes) {
  const auto isLong = [](char byte) { return static_cast<unsigned char>(byte) >= 0xE0; };
  if (HasUtf8Mark(bytes)) bytes.remove_prefix(kUtf8Mark.size());
  return std::any_of(bytes.begin(), bytes.end(), isLong) && zvuti::IsValidUtf8(bytes);
}

std::string EncodingOf(std::string_view bytes) {
  if (StartsWith(bytes, kLittleMark)) return "utf-16le";
  if (StartsWith(bytes, kBigMark)) return "utf-16be";
  if (LooksLikeUtf8(bytes) || (HasUtf8Mark(bytes) && zvuti::IsValidUtf8(bytes))) return "utf-8";
  std::string utf16 = Utf16WithoutMark(bytes);
  if (!utf16.empty()) return utf16;
  return LooksLikeBig5(bytes) ? "big5" : "gbk";
}

std::string ForeignEncoding(std::string_view bytes) {
  const std::string encoding = EncodingOf(bytes);
  if (encoding == "gbk" || (encoding == "utf-8" && !LooksLikeUtf8(bytes))) return {};
  const bool isMarked = HasUtf8Mark(bytes) || StartsWith(bytes, kLittleMark) || StartsWith(bytes, kBigMark);
  const std::string name = encoding == "big5" ? "probably Big5" : encoding == "utf-8" ? "UTF-8" : "UTF-16";
  return "is " + name + (isMarked ? " with a byte order mark" : "") +
         ", but the client reads GBK; zvuti convert makes it so";
}

bool FromNamed(const std::string& encoding, std::string_view bytes, std::string& utf8) {
  const auto isNamed = [&](const char* name) { return strcasecmp(encoding.c_str(), name) == 0; };
  utf8.clear();
  bool isWhole = true;
  if (isNamed("utf-8")) {
    utf8 = bytes.substr(HasUtf8Mark(bytes) ? kUtf8Mark.size() : 0);
    return zvuti::IsValidUtf8(utf8);
  }
  if (isNamed("utf-16") || isNamed("utf-16le") || isNamed("utf-16be")) {
    const bool isMarked = StartsWith(bytes, kLittleMark) || StartsWith(bytes, kBigMark);
    const bool isBig = isMarked ? StartsWith(bytes, kBigMark) : isNamed("utf-16be");
    utf8 = FromUtf16(bytes.substr(isMarked ? 2 : 0), isBig ? 0 : 1, isWhole);
    return isWhole;
  }
  return FromForeign(encoding, bytes, utf8);
}

}  // namespace tool
