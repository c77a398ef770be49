#include "gbk/CodePage936.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <iterator>

#include "gbk/Ascii.h"
#include "gbk/CodePage936Table.h"

namespace zvuti::gbk {
namespace {

static_assert(std::endian::native == std::endian::little, "the first byte of a text must be the lowest one");

constexpr char16_t kQuestion = u'?';
constexpr char16_t kReplacement = 0xFFFD;
constexpr char16_t kHalfOfPair = 0xD800;  // any half of a surrogate pair; GBK has no such characters

char16_t DecodeDouble(char lead, char trail) {
  const int row = static_cast<unsigned char>(lead) - table::kFirstLead;
  const int column = static_cast<unsigned char>(trail) - table::kFirstTrail;
  if (column < 0 || column >= table::kTrails) return kQuestion;
  return table::kDouble[row * table::kTrails + column];
}

constexpr bool IsHighSurrogate(char32_t c) { return c >= 0xD800 && c < 0xDC00; }
constexpr bool IsLowSurrogate(char32_t c) { return c >= 0xDC00 && c < 0xE000; }

// TakeUtf8 for sequences of any length.
char32_t TakeAnyUtf8(std::string_view& text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned first = byte(0);
  std::size_t length = 1;
  char32_t value = kReplacement;
  char32_t least = 0;
  if (first >= 0xC2 && first < 0xE0) {
    length = 2, value = first & 0x1F, least = 0x80;
  } else if (first >= 0xE0 && first < 0xF0) {
    length = 3, value = first & 0x0F, least = 0x800;
  } else if (first >= 0xF0 && first < 0xF5) {
    length = 4, value = first & 0x07, least = 0x10000;
  }
  bool whole = length <= text.size();
  for (std::size_t i = 1; whole && i < length; ++i) {
    whole = (byte(i) & 0xC0) == 0x80;
    value = value << 6 | (byte(i) & 0x3F);
  }
  if (!whole || value < least || value > 0x10FFFF || IsHighSurrogate(value) || IsLowSurrogate(value)) {
    length = 1, value = kReplacement;
  }
  text.remove_prefix(length);
  return value;
}

// TakeUtf8 with an inline fast path for the usual case: a three-byte sequence whose value needs no check
// because it starts with neither 0xE0 (may be overlong) nor 0xED (may be a surrogate).
inline char32_t TakeUtf8Inline(std::string_view& text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned first = byte(0);
  if ((first & 0xF0) != 0xE0 || first == 0xE0 || first == 0xED || text.size() < 3 ||
      (byte(1) & 0xC0) != 0x80 || (byte(2) & 0xC0) != 0x80) {
    return TakeAnyUtf8(text);
  }
  const char32_t value = (first & 0x0F) << 12 | (byte(1) & 0x3Fu) << 6 | (byte(2) & 0x3Fu);
  text.remove_prefix(3);
  return value;
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
  for (; length < text.size() && (text[length] & 0x80) == 0; ++length) out[length] = text[length];
  return length;
}

char Narrow(char16_t unit) { return static_cast<char>(unit); }

// The UTF-16 unit of the character of `length` bytes at `text`. If the bytes are not a character, returns a
// question mark and sets `isWhole` to false.
char16_t Decode(const char* text, std::size_t length, bool& isWhole) {
  if (!IsLeadByte(*text)) return table::kSingle[static_cast<unsigned char>(*text)];
  const char16_t unit = length == 2 ? DecodeDouble(text[0], text[1]) : kQuestion;
  isWhole = isWhole && unit != kQuestion;
  return unit;
}

// Writes the GBK bytes of a UTF-16 unit, 1 or 2, and returns their end.
char* PutGbk(char* end, char16_t unit) {
  const std::uint16_t bytes = table::kPages[table::kPageOf[unit >> 8] * 256 + (unit & 0xFF)];
  if (bytes > 0xFF) *end++ = static_cast<char>(bytes >> 8);
  *end++ = static_cast<char>(bytes & 0xFF);
  return end;
}

// Writes a UTF-8 text as GBK, which never has more bytes, and returns the end.
char* PutUtf8AsGbk(char* end, std::string_view text) {
  while (!text.empty()) {
    const std::size_t run = CopyAscii(text, end);
    end += run;
    text.remove_prefix(run);
    while (!text.empty() && (text.front() & 0x80) != 0) {
      const char32_t c = TakeUtf8Inline(text);
      end = PutGbk(end, c < 0x10000 ? static_cast<char16_t>(c) : kHalfOfPair);
      if (c >= 0x10000) end = PutGbk(end, kHalfOfPair);
    }
  }
  return end;
}

template <char (*kFoldByte)(char)>
void Fold(char* text, std::size_t length) {
  const std::string_view view(text, length);
  for (std::size_t i = 0; i < length; i += CharLength(view, i)) text[i] = kFoldByte(text[i]);
}

}  // namespace

std::string_view CutWhole(std::string_view text, std::size_t limit) {
  if (text.size() <= limit) return text;
  std::size_t end = 0;
  for (std::size_t step; end + (step = CharLength(text, end)) <= limit;) end += step;
  return text.substr(0, end);
}

std::size_t Find(std::string_view text, std::string_view word, std::size_t start) {
  for (std::size_t i = start; i <= text.size() && text.size() - i >= word.size();) {
    if (word.empty() || std::memcmp(text.data() + i, word.data(), word.size()) == 0) return i;
    i += CharLength(text, i);
  }
  return std::string_view::npos;
}

void FoldToUpper(char* text, std::size_t length) { Fold<ToUpper>(text, length); }
void FoldToLower(char* text, std::size_t length) { Fold<ToLower>(text, length); }

std::u16string ToUtf16(std::string_view text) {
  std::u16string out(text.size(), u'\0');
  out.resize(ToUtf16(text, out.data()));
  return out;
}

std::size_t ToUtf16(std::string_view text, char16_t* out) {
  char16_t* end = out;
  bool isWhole = true;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t run = AsciiRun(text.substr(i));
    end = std::copy_n(text.data() + i, run, end);
    i += run;
    for (std::size_t length; i < text.size() && (text[i] & 0x80) != 0; i += length) {
      length = CharLength(text, i);
      *end++ = Decode(text.data() + i, length, isWhole);
    }
  }
  return static_cast<std::size_t>(end - out);
}

std::string FromUtf16(std::u16string_view text) {
  const std::size_t run = AsciiRun(text);
  std::string out(run + (text.size() - run) * 2, '\0');
  char* end = std::transform(text.begin(), text.begin() + run, out.data(), Narrow);
  for (const char16_t unit : text.substr(run)) end = PutGbk(end, unit);
  out.resize(static_cast<std::size_t>(end - out.data()));
  return out;
}

char32_t TakeUtf8(std::string_view& text) { return TakeUtf8Inline(text); }

std::string Utf16ToUtf8(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const std::size_t run = AsciiRun(text);
    const std::size_t length = out.size();
    out.resize(length + run);
    std::transform(text.begin(), text.begin() + run, out.data() + length, Narrow);
    text.remove_prefix(run);
    std::size_t i = 0;
    for (; i < text.size() && text[i] >= 0x80; ++i) {
      char32_t c = text[i];
      if (IsHighSurrogate(c) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
        c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00u);
      } else if (IsHighSurrogate(c) || IsLowSurrogate(c)) {
        c = kReplacement;
      }
      char bytes[4];
      out.append(bytes, PutUtf8(bytes, c));
    }
    text.remove_prefix(i);
  }
  return out;
}

std::size_t Utf8ToUtf16(std::string_view text, char16_t* out) {
  char16_t* end = out;
  while (!text.empty()) {
    const std::size_t run = AsciiRun(text);
    end = std::copy_n(text.begin(), run, end);
    text.remove_prefix(run);
    while (!text.empty() && (text.front() & 0x80) != 0) {
      const char32_t c = TakeUtf8Inline(text);
      if (c < 0x10000) {
        *end++ = static_cast<char16_t>(c);
      } else {
        *end++ = static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10));
        *end++ = static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
      }
    }
  }
  return static_cast<std::size_t>(end - out);
}

std::u16string Utf8ToUtf16(std::string_view text) {
  std::u16string out(text.size(), u'\0');
  out.resize(Utf8ToUtf16(text, out.data()));
  return out;
}

std::string ToUtf8(std::string_view text, bool* isWhole) {
  constexpr std::ptrdiff_t kHalf = 256;  // of the block that collects bytes before they are appended
  constexpr std::ptrdiff_t kMaxBytes = 3;
  bool isAllWhole = true;
  const std::size_t prefix = AsciiRun(text);  // often the whole text: names and numbers
  std::string out;
  out.reserve(text.size() + (text.size() - prefix) / 2);
  out.append(text.substr(0, prefix));
  char block[2 * kHalf];
  char* const blockEnd = std::end(block);
  for (std::size_t i = prefix; i < text.size();) {
    char* end = block;
    while (i < text.size() && end - block < kHalf) {
      const std::size_t run = CopyAscii(text.substr(i, kHalf), end);
      i += run, end += run;
      for (std::size_t length; i < text.size() && (text[i] & 0x80) != 0 && blockEnd - end >= kMaxBytes;
           i += length) {
        length = CharLength(text, i);
        end = PutUtf8(end, Decode(text.data() + i, length, isAllWhole));
      }
    }
    out.append(block, end);
  }
  if (isWhole) *isWhole = isAllWhole;
  return out;
}

std::string FromUtf8(std::string_view text) {
  if (IsAscii(text)) return std::string(text);
  char small[64];  // enough for most names and values, so that one allocation of the exact size is made
  if (text.size() <= sizeof small) return std::string(small, PutUtf8AsGbk(small, text));
  std::string out(text.size(), '\0');
  out.resize(static_cast<std::size_t>(PutUtf8AsGbk(out.data(), text) - out.data()));
  return out;
}

}  // namespace zvuti::gbk
