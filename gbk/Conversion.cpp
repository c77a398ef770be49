#include <ZvUtiLib/gbk/Conversion.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <iterator>

#include "gbk/Ascii.h"
#include "gbk/CodePage936.h"
#include "gbk/CodePage936Table.h"

namespace zvuti {
namespace {

static_assert(std::endian::native == std::endian::little, "the first byte of a text must be the lowest one");

using gbk::table::kFirstLead;
using gbk::table::kFirstTrail;
using gbk::table::kTrails;

constexpr unsigned kLeads = 126;
constexpr char16_t kQuestion = u'?';
constexpr char16_t kReplacement = 0xFFFD;
constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// The first place that a conversion loses. Only slow paths touch it.
struct Loss {
  void Note(std::size_t sourceIndex, std::size_t textIndex, std::size_t length) {
    if (at != kNone) return;
    at = sourceIndex, standInAt = textIndex, standInLength = length;
  }
  template <class Text>
  Converted<Text> With(Text text) const {
    return {std::move(text), at, standInAt, standInLength};
  }

  std::size_t at = kNone, standInAt = 0, standInLength = 0;
};

constexpr bool IsHighSurrogate(char32_t c) { return c >= 0xD800 && c < 0xDC00; }
constexpr bool IsLowSurrogate(char32_t c) { return c >= 0xDC00 && c < 0xE000; }

constexpr unsigned Byte(char byte) { return static_cast<unsigned char>(byte); }
constexpr bool IsHigh(char byte) { return (byte & 0x80) != 0; }

// ---- UTF-8

// Length of the well-formed sequence at `text`, and its code point; 0 if it is malformed.
std::size_t TakeAnyUtf8(std::string_view text, char32_t& value) {
  const unsigned first = Byte(text[0]);
  std::size_t length = 0;
  char32_t least = 0;
  if (first < 0x80) {
    length = 1, value = first;
  } else if (first >= 0xC2 && first < 0xE0) {
    length = 2, value = first & 0x1F, least = 0x80;
  } else if (first >= 0xE0 && first < 0xF0) {
    length = 3, value = first & 0x0F, least = 0x800;
  } else if (first >= 0xF0 && first < 0xF5) {
    length = 4, value = first & 0x07, least = 0x10000;
  }
  if (length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((Byte(text[i]) & 0xC0) != 0x80) return 0;
    value = value << 6 | (Byte(text[i]) & 0x3F);
  }
  return value < least || value > 0x10FFFF || IsHighSurrogate(value) || IsLowSurrogate(value) ? 0 : length;
}

// True for a sequence of three bytes whose value needs no check because it starts with neither 0xE0 (may be
// overlong) nor 0xED (may be a surrogate). Nearly all Chinese characters are such. REQUIRES: three bytes.
bool IsPlainTriple(const char* text) {
  const unsigned first = Byte(text[0]);
  return (first & 0xF0) == 0xE0 && first != 0xE0 && first != 0xED &&
         ((Byte(text[1]) | Byte(text[2]) << 8) & 0xC0C0) == 0x8080;
}
char32_t PlainTriple(const char* text) {
  return (Byte(text[0]) & 0x0F) << 12 | (Byte(text[1]) & 0x3F) << 6 | (Byte(text[2]) & 0x3F);
}

// Writes the UTF-8 of a code point, up to 4 bytes, and returns its end.
char* PutUtf8(char* end, char32_t c) {
  const auto put = [&](char32_t byte) { *end++ = static_cast<char>(byte); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 | c >> 6), put(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    put(0xE0 | c >> 12), put(0x80 | (c >> 6 & 0x3F)), put(0x80 | (c & 0x3F));
  } else {
    put(0xF0 | c >> 18), put(0x80 | (c >> 12 & 0x3F)), put(0x80 | (c >> 6 & 0x3F)), put(0x80 | (c & 0x3F));
  }
  return end;
}

// The same from U+0800 to U+FFFF: three bytes. It also overwrites the byte after them.
char* PutPlainUtf8(char* end, char16_t c) {
  const std::uint32_t bytes = 0x8080E0u | static_cast<std::uint32_t>(c >> 12 | (c & 0xFC0) << 2) |
                              static_cast<std::uint32_t>(c & 0x3F) << 16;
  std::memcpy(end, &bytes, sizeof bytes);
  return end + 3;
}

// Copies the ASCII prefix of `text` to `out` and returns its length. Tests and copies eight bytes at once,
// since these runs are usually short, so it may write up to eight bytes after the prefix. REQUIRES: `out` has
// room for the whole text.
std::size_t CopyAscii(std::string_view text, char* out) {
  std::size_t length = 0;
  for (std::uint64_t word; length + sizeof word <= text.size(); length += sizeof word) {
    std::memcpy(&word, text.data() + length, sizeof word);
    std::memcpy(out + length, &word, sizeof word);
    if (const std::uint64_t high = word & 0x8080808080808080u) {
      return length + static_cast<std::size_t>(std::countr_zero(high)) / 8;
    }
  }
  for (; length < text.size() && !IsHigh(text[length]); ++length) out[length] = text[length];
  return length;
}

char Narrow(char16_t unit) { return static_cast<char>(unit); }

// ---- GBK

// The unit of a pair of bytes, a question mark if it is not a character.
char16_t UnitOfPair(char lead, char trail) {
  const unsigned row = Byte(lead) - unsigned{kFirstLead}, column = Byte(trail) - unsigned{kFirstTrail};
  return column < unsigned{kTrails} ? gbk::table::kDouble[row * kTrails + column] : kQuestion;
}

// Calls put(unit) for the pairs at `text`, at most `most`, up to the first one that is not plain, and returns
// how many there are. A plain pair is a character of U+0800 or above, as nearly all Chinese characters are.
template <class Put>
std::size_t PutPlainPairs(const char* text, std::size_t most, Put put) {
  for (std::size_t i = 0; i < most; ++i) {
    const unsigned row = Byte(text[2 * i]) - unsigned{kFirstLead};
    const unsigned column = Byte(text[2 * i + 1]) - unsigned{kFirstTrail};
    if (row >= kLeads || column >= unsigned{kTrails}) return i;
    const char16_t unit = gbk::table::kDouble[row * kTrails + column];
    if (unit < 0x800) return i;
    put(unit);
  }
  return most;
}

// The UTF-16 unit of the character of `length` bytes at `text`; a question mark if it has none. REQUIRES: the
// first byte is not ASCII.
char16_t UnitOf(const char* text, std::size_t length) {
  if (!gbk::IsLeadByte(*text)) return gbk::table::kSingle[Byte(*text)];
  return length == 2 ? UnitOfPair(text[0], text[1]) : kQuestion;
}

// The entry of kPages for a unit.
unsigned CodeOf(char32_t unit) {
  return gbk::table::kPages[gbk::table::kPageOf[unit >> 8] * 256u + (unit & 0xFF)];
}

constexpr unsigned kPair = 0x8000;  // set in the code of a pair that is the character itself

char* PutPair(char* end, unsigned code) {
  end[0] = static_cast<char>(code >> 8);
  end[1] = static_cast<char>(code);
  return end + 2;
}

// Writes the code of a unit from U+0080 on, and returns its end. Sets `isLost` if it is not the character
// itself.
char* PutCode(char* end, unsigned code, bool& isLost) {
  if (code >= kPair) return PutPair(end, code);
  if (code > 0xFF) {
    isLost = true;
    return PutPair(end, code | kPair);
  }
  isLost = isLost || code < 0x80;
  *end++ = static_cast<char>(code);
  return end;
}

// Writes a UTF-8 text as GBK, which never has more bytes, and returns the end.
char* PutUtf8AsGbk(char* const out, std::string_view text, Loss& loss) {
  char* end = out;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t run = CopyAscii(text.substr(at), end);
    end += run, at += run;
    while (at < text.size() && IsHigh(text[at])) {
      const char* here = text.data() + at;
      if (text.size() - at >= 3 && IsPlainTriple(here)) {
        if (const unsigned code = CodeOf(PlainTriple(here)); code >= kPair) {
          end = PutPair(end, code), at += 3;
          continue;
        }
      }
      char32_t c = kReplacement;
      const std::size_t length = TakeAnyUtf8(text.substr(at), c);
      char* const begin = end;
      bool isLost = length == 0;
      if (length == 4 || length == 0) {
        isLost = true;
        end = std::fill_n(end, length == 0 ? 1 : 2, '?');
      } else {
        end = PutCode(end, CodeOf(c), isLost);
      }
      if (isLost) loss.Note(at, static_cast<std::size_t>(begin - out), static_cast<std::size_t>(end - begin));
      at += std::max<std::size_t>(length, 1);
    }
  }
  return end;
}

// Collects bytes of UTF-8 before they are appended to a string.
class Utf8Block {
 public:
  static constexpr std::size_t kWhole = 84;  // a GBK text of this size always fits, with 3 bytes for each

  // Converts `gbk` from `at` on, until it ends or the block is nearly full, and moves `at`. `before` is the
  // length of the result before the block.
  std::string_view Fill(std::string_view gbk, std::size_t& at, std::size_t before, Loss& loss) {
    char* end = bytes_;
    while (at < gbk.size() && end - bytes_ < kHalf) {
      const std::size_t run = CopyAscii(gbk.substr(at, kHalf), end);
      at += run, end += run;
      while (at < gbk.size() && IsHigh(gbk[at]) && end < Limit()) {
        const std::size_t most = std::min((gbk.size() - at) / 2, static_cast<std::size_t>(Limit() - end) / 3);
        at += 2 * PutPlainPairs(gbk.data() + at, most, [&](char16_t unit) { end = PutPlainUtf8(end, unit); });
        if (at == gbk.size() || !IsHigh(gbk[at]) || end >= Limit()) break;
        const std::size_t length = gbk::CharLength(gbk, at);
        const char16_t unit = UnitOf(gbk.data() + at, length);
        if (unit == kQuestion) loss.Note(at, before + static_cast<std::size_t>(end - bytes_), 1);
        end = PutUtf8(end, unit);
        at += length;
      }
    }
    return {bytes_, static_cast<std::size_t>(end - bytes_)};
  }

 private:
  static constexpr std::ptrdiff_t kHalf = 256;
  char* Limit() {
    return std::end(bytes_) - 4;
  }  // room for one more character, and a byte that it overwrites

  char bytes_[2 * kHalf];
};

std::size_t PutGbkAsUtf16(char16_t* const out, std::string_view text, Loss& loss) {
  char16_t* end = out;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t run = AsciiRun(text.substr(i));
    end = std::copy_n(text.data() + i, run, end);
    i += run;
    for (std::size_t length; i < text.size() && IsHigh(text[i]); i += length) {
      i += 2 * PutPlainPairs(text.data() + i, (text.size() - i) / 2, [&](char16_t unit) { *end++ = unit; });
      if (i == text.size() || !IsHigh(text[i])) break;
      length = gbk::CharLength(text, i);
      const char16_t unit = UnitOf(text.data() + i, length);
      if (unit == kQuestion) loss.Note(i, static_cast<std::size_t>(end - out), 1);
      *end++ = unit;
    }
  }
  return static_cast<std::size_t>(end - out);
}

std::size_t PutUtf8AsUtf16(char16_t* const out, std::string_view text, Loss& loss) {
  char16_t* end = out;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t run = AsciiRun(text.substr(at));
    end = std::copy_n(text.data() + at, run, end);
    at += run;
    while (at < text.size() && IsHigh(text[at])) {
      if (text.size() - at >= 3 && IsPlainTriple(text.data() + at)) {
        *end++ = static_cast<char16_t>(PlainTriple(text.data() + at)), at += 3;
        continue;
      }
      char32_t c = kReplacement;
      const std::size_t length = TakeAnyUtf8(text.substr(at), c);
      if (length == 0) {
        loss.Note(at, static_cast<std::size_t>(end - out), 1);
        *end++ = kReplacement;
      } else if (c < 0x10000) {
        *end++ = static_cast<char16_t>(c);
      } else {
        *end++ = static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
        *end++ = static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
      }
      at += std::max<std::size_t>(length, 1);
    }
  }
  return static_cast<std::size_t>(end - out);
}

}  // namespace

Converted<std::string> GbkToUtf8(std::string_view gbk) {
  Loss loss;
  Utf8Block block;
  std::size_t at = 0;
  if (gbk.size() <= Utf8Block::kWhole) {  // the usual name or value: one allocation of the exact size
    const std::string_view all = block.Fill(gbk, at, 0, loss);
    return loss.With(std::string(all));
  }
  at = AsciiRun(gbk);
  std::string out;
  out.reserve(gbk.size() + (gbk.size() - at) / 2);
  out.append(gbk.substr(0, at));
  while (at < gbk.size()) out.append(block.Fill(gbk, at, out.size(), loss));
  return loss.With(std::move(out));
}

Converted<std::u16string> GbkToUtf16(std::string_view gbk) {
  Loss loss;
  std::u16string out(gbk.size(), u'\0');
  out.resize(PutGbkAsUtf16(out.data(), gbk, loss));
  return loss.With(std::move(out));
}

Converted<std::string> Utf8ToGbk(std::string_view utf8) {
  Loss loss;
  if (IsAscii(utf8)) return loss.With(std::string(utf8));
  char small[64];  // enough for most names and values, so that one allocation of the exact size is made
  if (utf8.size() <= sizeof small) {
    return loss.With(std::string(small, PutUtf8AsGbk(small, utf8, loss)));
  }
  std::string out(utf8.size(), '\0');
  out.resize(static_cast<std::size_t>(PutUtf8AsGbk(out.data(), utf8, loss) - out.data()));
  return loss.With(std::move(out));
}

Converted<std::string> Utf16ToGbk(std::u16string_view utf16) {
  Loss loss;
  const std::size_t run = AsciiRun(utf16);
  std::string out(run + (utf16.size() - run) * 2, '\0');
  char* end = std::transform(utf16.begin(), utf16.begin() + run, out.data(), Narrow);
  for (std::size_t i = run; i < utf16.size(); ++i) {
    const char16_t unit = utf16[i];
    if (unit < 0x80) {
      *end++ = Narrow(unit);
      continue;
    }
    const unsigned code = CodeOf(unit);
    if (code >= kPair) {
      end = PutPair(end, code);
      continue;
    }
    char* const begin = end;
    bool isLost = false;
    end = PutCode(end, code, isLost);
    const bool isPair = IsHighSurrogate(unit) && i + 1 < utf16.size() && IsLowSurrogate(utf16[i + 1]);
    if (isPair) *end++ = '?', ++i;
    const std::size_t length = static_cast<std::size_t>(end - begin);
    if (isLost) loss.Note(i - (isPair ? 1 : 0), static_cast<std::size_t>(begin - out.data()), length);
  }
  out.resize(static_cast<std::size_t>(end - out.data()));
  return loss.With(std::move(out));
}

Converted<std::u16string> Utf8ToUtf16(std::string_view utf8) {
  Loss loss;
  std::u16string out(utf8.size(), u'\0');
  out.resize(PutUtf8AsUtf16(out.data(), utf8, loss));
  return loss.With(std::move(out));
}

Converted<std::string> Utf16ToUtf8(std::u16string_view utf16) {
  Loss loss;
  std::string out;
  out.reserve(utf16.size());
  for (std::size_t i = 0; i < utf16.size();) {
    const std::size_t run = AsciiRun(utf16.substr(i));
    const std::size_t length = out.size();
    out.resize(length + run);
    std::transform(utf16.begin() + i, utf16.begin() + i + run, out.data() + length, Narrow);
    i += run;
    for (; i < utf16.size() && utf16[i] >= 0x80; ++i) {
      char32_t c = utf16[i];
      if (IsHighSurrogate(c) && i + 1 < utf16.size() && IsLowSurrogate(utf16[i + 1])) {
        c = 0x10000 + ((c - 0xD800) << 10) + (utf16[++i] - 0xDC00u);
      } else if (IsHighSurrogate(c) || IsLowSurrogate(c)) {
        c = kReplacement;
        loss.Note(i, out.size(), 3);
      }
      char bytes[4];
      out.append(bytes, PutUtf8(bytes, c));
    }
  }
  return loss.With(std::move(out));
}

bool IsValidGbk(std::string_view bytes) {
  for (std::size_t i = 0; (i += AsciiRun(bytes.substr(i))) < bytes.size();) {
    const std::size_t length = gbk::CharLength(bytes, i);
    if (UnitOf(bytes.data() + i, length) == kQuestion) return false;
    i += length;
  }
  return true;
}

bool IsValidUtf8(std::string_view bytes) {
  for (std::size_t i = 0; (i += AsciiRun(bytes.substr(i))) < bytes.size();) {
    char32_t c = 0;
    const std::size_t length = TakeAnyUtf8(bytes.substr(i), c);
    if (length == 0) return false;
    i += length;
  }
  return true;
}

namespace gbk {

std::u16string ToUtf16(std::string_view text) { return GbkToUtf16(text).text; }
std::size_t ToUtf16(std::string_view text, char16_t* out) {
  Loss ignored;
  return PutGbkAsUtf16(out, text, ignored);
}
std::string FromUtf16(std::u16string_view text) { return Utf16ToGbk(text).text; }

std::string ToUtf8(std::string_view text, bool* isWhole) {
  Converted<std::string> converted = GbkToUtf8(text);
  if (isWhole) *isWhole = converted.IsWhole();
  return std::move(converted.text);
}
std::string FromUtf8(std::string_view text) { return Utf8ToGbk(text).text; }

char32_t TakeUtf8(std::string_view& text) {
  char32_t value = kReplacement;
  std::size_t length = 3;
  if (text.size() >= 3 && IsPlainTriple(text.data())) {
    value = PlainTriple(text.data());
  } else if (length = TakeAnyUtf8(text, value); length == 0) {
    value = kReplacement, length = 1;
  }
  text.remove_prefix(length);
  return value;
}

std::string Utf16ToUtf8(std::u16string_view text) { return zvuti::Utf16ToUtf8(text).text; }
std::u16string Utf8ToUtf16(std::string_view text) { return zvuti::Utf8ToUtf16(text).text; }
std::size_t Utf8ToUtf16(std::string_view text, char16_t* out) {
  Loss ignored;
  return PutUtf8AsUtf16(out, text, ignored);
}

}  // namespace gbk
}  // namespace zvuti
