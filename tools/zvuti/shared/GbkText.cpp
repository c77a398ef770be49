#include "shared/GbkText.h"

#include <iconv.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "shared/Terminal.h"

namespace tool {
namespace {

class Converter {
 public:
  Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
  ~Converter() {
    if (IsOpen()) iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  bool IsOpen() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

  /// Converts all of `in` and appends it to `out`. Returns false if `in` is invalid in its encoding.
  bool Convert(std::string_view in, std::string& out) {
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    char* from = const_cast<char*>(in.data());  // iconv takes char* but does not write to it
    std::size_t left = in.size();
    for (bool isEnding = false;;) {
      std::array<char, 4096> buffer;
      char* to = buffer.data();
      std::size_t room = buffer.size();
      const bool isDone =
          iconv(handle_, isEnding ? nullptr : &from, &left, &to, &room) != static_cast<std::size_t>(-1);
      out.append(buffer.data(), to);
      if (!isDone && errno != E2BIG) return false;
      if (isDone && isEnding) return true;
      isEnding = isDone;
    }
  }

 private:
  iconv_t handle_;
};

constexpr bool IsLead(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  return value >= 0x81 && value <= 0xFE;
}

// The length of the character at `at`. A lead byte and the next byte form one character, whatever that byte
// is, unless it is a zero byte or the text ends.
std::size_t LengthAt(std::string_view text, std::size_t at) {
  return IsLead(text[at]) && at + 1 < text.size() && text[at + 1] != '\0' ? 2 : 1;
}

// Both directions of the code page, taken from the system's converters. CP936 has no private-use characters;
// GB18030 has them but maps some other pairs differently. So a pair is looked up in CP936 first, and in
// GB18030 only if it is a private-use character there.
class Page {
 public:
  Page() : unicode_(0x10000), bytes_(0x10000) {
    Converter page("UTF-16LE", "CP936"), successor("UTF-16LE", "GB18030");
    if (!page.IsOpen() || !successor.IsOpen()) throw Failure("this system cannot convert GBK");
    Learn(page, successor, "\x80");
    for (int lead = 0x81; lead <= 0xFE; ++lead) {
      for (int trail = 0x40; trail <= 0xFE; ++trail) {
        Learn(page, successor, {static_cast<char>(lead), static_cast<char>(trail)});
      }
    }
  }

  /// The UTF-16 unit of a character of one or two bytes, 0 if there is none.
  char16_t Unicode(std::string_view character) const {
    const auto first = static_cast<unsigned char>(character[0]);
    if (character.size() == 1) return first < 0x80 ? first : unicode_[first];
    return unicode_[static_cast<unsigned>(first << 8 | static_cast<unsigned char>(character[1]))];
  }
  /// The bytes of a character above 0x7F as a number (0xB0A1 for B0 A1), 0 if there is none.
  std::uint16_t Bytes(char32_t character) const { return character < 0x10000 ? bytes_[character] : 0; }

 private:
  void Learn(Converter& page, Converter& successor, const std::string& character) {
    std::string unit;
    if (!page.Convert(character, unit)) {
      unit.clear();
      if (!successor.Convert(character, unit) || unit.size() != 2 || !IsPrivate(UnitOf(unit))) return;
    }
    const char16_t unicode = UnitOf(unit);
    unsigned code = 0;
    for (const char byte : character) code = code << 8 | static_cast<unsigned char>(byte);
    unicode_[code] = unicode;
    bytes_[unicode] = static_cast<std::uint16_t>(code);
  }
  static char16_t UnitOf(const std::string& unit) {
    return static_cast<char16_t>(static_cast<unsigned char>(unit[0]) | static_cast<unsigned char>(unit[1])
                                                                           << 8);
  }
  static bool IsPrivate(char16_t unit) { return unit >= 0xE000 && unit < 0xF900; }

  std::vector<char16_t> unicode_;
  std::vector<std::uint16_t> bytes_;
};

const Page& ThePage() {
  static const Page page;
  return page;
}

void AppendUtf8(std::string& out, char16_t c) {
  const auto put = [&](unsigned byte) { out += static_cast<char>(byte); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0u | c >> 6), put(0x80u | (c & 0x3F));
  } else {
    put(0xE0u | c >> 12), put(0x80u | (c >> 6 & 0x3F)), put(0x80u | (c & 0x3F));
  }
}

constexpr char32_t kNone = 0xFFFFFFFF;

// Removes the first character from `text` and returns it. Removes one byte and returns kNone if it is not
// valid UTF-8.
char32_t TakeUtf8(std::string_view& text) {
  const auto first = static_cast<unsigned char>(text[0]);
  const std::size_t length = first < 0x80   ? 1
                             : first < 0xC2 ? 0
                             : first < 0xE0 ? 2
                             : first < 0xF0 ? 3
                             : first < 0xF5 ? 4
                                            : 0;
  char32_t value = length == 1 ? first : first & (0x7Fu >> length);
  bool isWhole = length > 0 && length <= text.size();
  for (std::size_t i = 1; isWhole && i < length; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    isWhole = (byte & 0xC0) == 0x80;
    value = value << 6 | (byte & 0x3F);
  }
  constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  isWhole = isWhole && value >= kLeast[length] && value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
  text.remove_prefix(isWhole ? length : 1);
  return isWhole ? value : kNone;
}

}  // namespace

std::string Shown(std::string_view gbk) {
  std::string out;
  for (std::size_t at = 0, length; at < gbk.size(); at += length) {
    length = LengthAt(gbk, at);
    const std::string_view character = gbk.substr(at, length);
    const char16_t unicode = ThePage().Unicode(character);
    if (unicode != 0 || character[0] == '\0') {
      AppendUtf8(out, unicode);
      continue;
    }
    for (const char byte : character) {
      char digits[8];
      std::snprintf(digits, sizeof digits, "\\x%02X",
                    static_cast<unsigned>(static_cast<unsigned char>(byte)));
      out += digits;
    }
  }
  return out;
}

std::size_t FindBroken(std::string_view gbk) {
  for (std::size_t at = 0, length; at < gbk.size(); at += length) {
    length = LengthAt(gbk, at);
    if (gbk[at] != '\0' && ThePage().Unicode(gbk.substr(at, length)) == 0) return at;
  }
  return std::string_view::npos;
}

std::size_t FindForeign(std::string_view utf8) {
  for (std::string_view rest = utf8; !rest.empty();) {
    const std::size_t at = utf8.size() - rest.size();
    const char32_t character = TakeUtf8(rest);
    if (character >= 0x80 && (character == kNone || ThePage().Bytes(character) == 0)) return at;
  }
  return std::string_view::npos;
}

std::string ToGbk(std::string_view utf8, const std::string& what) {
  std::string out;
  while (!utf8.empty()) {
    const std::string_view here = utf8;
    const char32_t character = TakeUtf8(utf8);
    if (character < 0x80) {
      out += static_cast<char>(character);
      continue;
    }
    const std::uint16_t bytes = character == kNone ? std::uint16_t{0} : ThePage().Bytes(character);
    if (bytes == 0) throw Failure(what + ": " + NameOfFirst(here) + " cannot be converted to GBK");
    if (bytes > 0xFF) out += static_cast<char>(bytes >> 8);
    out += static_cast<char>(bytes & 0xFF);
  }
  return out;
}

bool IsUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    if (TakeUtf8(bytes) == kNone) return false;
  }
  return true;
}

bool LooksLikeUtf8(std::string_view bytes) {
  bool isAnyLong = false;
  while (!bytes.empty()) {
    const char32_t character = TakeUtf8(bytes);
    if (character == kNone) return false;
    isAnyLong = isAnyLong || character >= 0x800;
  }
  return isAnyLong;
}

bool HasUtf8Mark(std::string_view bytes) { return bytes.substr(0, kUtf8Mark.size()) == kUtf8Mark; }

std::string NameOfFirst(std::string_view utf8) {
  std::string_view rest = utf8;
  const char32_t character = TakeUtf8(rest);
  char name[40];
  if (character == kNone) {
    std::snprintf(name, sizeof name, "the byte 0x%02X",
                  static_cast<unsigned>(static_cast<unsigned char>(utf8[0])));
  } else {
    std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(character));
  }
  return name;
}

bool FromNamed(const std::string& encoding, std::string_view bytes, std::string& utf8) {
  Converter converter("UTF-8", encoding.c_str());
  utf8.clear();
  return converter.IsOpen() && converter.Convert(bytes, utf8);
}

}  // namespace tool
