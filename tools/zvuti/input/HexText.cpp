#include "input/HexText.h"

#include "input/Cursor.h"
#include "input/HexDump.h"
#include "input/SourceText.h"
#include "shared/Encoding.h"

namespace tool {
namespace {

constexpr std::string_view kBetween = " \t\r\n\f\v,;:-";
constexpr std::size_t kShownStart = 16;

// Reads a word without separators: escapes, or pairs of digits, with "0x" before any of them. "0x5" is one
// byte.
class WordReader {
 public:
  WordReader(const Cursor& cursor, std::size_t at, std::string_view word)
      : cursor_(cursor), at_(at), word_(word), rest_(word) {}

  void AppendTo(std::string& bytes) {
    bytes.reserve(bytes.size() + word_.size() / 2);
    while (!rest_.empty()) {
      if (rest_[0] == '\\') {
        TakeEscape(bytes);
      } else {
        TakeDigits(bytes);
      }
    }
  }

 private:
  void TakeEscape(std::string& bytes) {
    if (rest_.size() < 4 || rest_[1] != 'x' || DigitOf(rest_[2]) < 0 || DigitOf(rest_[3]) < 0)
      Refuse("is not an escape with two hexadecimal digits: \\x0A");
    Push(bytes, rest_[2], rest_[3]);
    rest_.remove_prefix(4);
    if (!rest_.empty() && rest_[0] != '\\') Refuse("is text after an escape; put all of it in quotes");
  }

  void TakeDigits(std::string& bytes) {
    const bool isMarked = IsMark(rest_);
    if (isMarked) rest_.remove_prefix(2);
    std::size_t count = 0;
    while (count < rest_.size() && DigitOf(rest_[count]) >= 0 && !IsMark(rest_.substr(count))) ++count;
    if (isMarked && count == 1) {
      Push(bytes, '0', rest_[0]);
    } else {
      if (count == 0 || count % 2 != 0) {
        Refuse(word_.size() == 7 && count == 7
                   ? "is not pairs of hexadecimal digits; if this is a dump of words, use hexdump -C"
                   : "is not pairs of hexadecimal digits");
      }
      for (std::size_t i = 0; i < count; i += 2) Push(bytes, rest_[i], rest_[i + 1]);
    }
    rest_.remove_prefix(count);
  }

  static bool IsMark(std::string_view text) {
    return text.size() >= 2 && text[0] == '0' && (text[1] | 0x20) == 'x';
  }
  static void Push(std::string& bytes, char high, char low) {
    bytes += static_cast<char>(DigitOf(high) << 4 | DigitOf(low));
  }
  [[noreturn]] void Refuse(const char* problem) {
    // The start of a long word would not show what is wrong with it.
    const std::size_t done = word_.size() - rest_.size();
    const bool isLate = done > kShownStart && !rest_.empty();
    cursor_.Refuse(isLate ? at_ + done : at_, isLate ? rest_ : word_, problem);
  }

  const Cursor& cursor_;
  std::size_t at_;
  std::string_view word_, rest_;
};

}  // namespace

std::string FromHex(std::string_view text, const std::string& what) {
  if (HasUtf8Mark(text)) text.remove_prefix(kUtf8Mark.size());
  if (IsHexDump(text)) return FromHexDump(text, what);
  if (IsSourceText(text)) return FromSourceText(text, what);
  std::string bytes;
  Cursor cursor(text, what);
  for (cursor.SkipAll(kBetween); !cursor.IsAtEnd(); cursor.SkipAll(kBetween)) {
    const std::size_t at = cursor.At();
    WordReader(cursor, at, cursor.Word(kBetween)).AppendTo(bytes);
  }
  return bytes;
}

}  // namespace tool
