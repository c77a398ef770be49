#include "input/SourceText.h"

#include <charconv>

#include "input/Cursor.h"

namespace tool {
namespace {

constexpr std::string_view kSpace = " \t\r\n\f\v";

// Moves past white space, comments, and backslashes at the end of a line.
void SkipSpace(Cursor& cursor) {
  for (;;) {
    cursor.SkipAll(kSpace);
    if (cursor.Take("/*")) {
      cursor.SkipPast("*/");
    } else if (cursor.Take("//")) {
      cursor.SkipPast("\n");
    } else if (!cursor.Take("\\\n") && !cursor.Take("\\\r\n")) {
      return;
    }
  }
}

bool IsWordCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

// Moves to the first brace, bracket or quote that opens the bytes. Returns false if there is none, or if what
// stands before it can only be digits of bytes.
bool FindStart(Cursor& cursor) {
  if (cursor.Rest().find_first_of("{[\"'") == std::string_view::npos) return false;
  bool isDeclared = false;
  char last = '\0';
  for (SkipSpace(cursor); !cursor.IsAtEnd(); SkipSpace(cursor)) {
    const char c = cursor.Peek();
    const bool isDeclarator = c == '[' && (IsWordCharacter(last) || cursor.Peek(1) == ']');
    const bool isStart = c == '{' || c == '"' || c == '\'' || (c == '[' && !isDeclarator);
    if (isStart) return isDeclared || last == '\0' || ((last | 0x20) == 'b' && cursor.At() == 1);
    isDeclared =
        isDeclared || c == '=' || c == '(' || c == '[' || (IsWordCharacter(c) && DigitOf(c) < 0 && c != 'x');
    last = c;
    cursor.Skip();
  }
  return false;
}

// Reads one character of a text or of a character constant. Returns nothing for a backslash at a line's end.
std::string TakeCharacter(Cursor& cursor) {
  const std::size_t at = cursor.At();
  const char c = cursor.Peek();
  cursor.Skip();
  if (c == '\n') cursor.Refuse(at, "\n", "before the closing quote");
  if (c != '\\') return {c};
  const char kind = cursor.Peek();
  const auto refuse = [&](const char* problem) { cursor.Refuse(at, cursor.Rest().substr(0, 0), problem); };
  if (cursor.IsAtEnd()) refuse("needs a closing quote");
  cursor.Skip();
  if (kind == 'x') {
    const int high = DigitOf(cursor.Peek()), low = high < 0 ? -1 : DigitOf(cursor.Peek(1));
    if (low < 0) cursor.Refuse(at, "\\x", "needs two hexadecimal digits");
    cursor.Skip(2);
    return {static_cast<char>(high << 4 | low)};
  }
  if (kind >= '0' && kind <= '7') {
    int value = kind - '0';
    for (int digits = 1; digits < 3 && cursor.Peek() >= '0' && cursor.Peek() <= '7'; ++digits) {
      value = value * 8 + cursor.Peek() - '0';
      cursor.Skip();
    }
    if (value > 255) cursor.Refuse(at, "\\", "starts an octal number above 255");
    return {static_cast<char>(value)};
  }
  if (kind == '\n' || (kind == '\r' && cursor.Take("\n"))) return {};
  constexpr std::string_view kNames = "abfnrtv\\'\"?", kMeant = "\a\b\f\n\r\t\v\\'\"?";
  const std::size_t found = kNames.find(kind);
  if (found == kNames.npos) cursor.Refuse(at, std::string("\\") + kind, "is not an escape");
  return {kMeant[found]};
}

std::string TakeQuoted(Cursor& cursor) {
  std::string bytes;
  const std::size_t start = cursor.At();
  const char quote = cursor.Peek();
  cursor.Skip();
  while (cursor.Peek() != quote || cursor.IsAtEnd()) {
    if (cursor.IsAtEnd()) cursor.Refuse(start, {&quote, 1}, "has no closing quote");
    bytes += TakeCharacter(cursor);
  }
  cursor.Skip();
  return bytes;
}

// Reads a number of an array, from -128 to 255.
char TakeNumber(Cursor& cursor) {
  const std::size_t at = cursor.At();
  const std::string_view word = cursor.Word(", \t\r\n\f\v{}[]\"'/");
  std::string_view digits = word;
  const bool isNegative = digits.substr(0, 1) == "-";
  if (isNegative) digits.remove_prefix(1);
  const bool isHex = digits.substr(0, 2) == "0x" || digits.substr(0, 2) == "0X";
  if (isHex) digits.remove_prefix(2);
  while (digits.size() > 1 && std::string_view("uUlL").find(digits.back()) != std::string_view::npos)
    digits.remove_suffix(1);
  unsigned value = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), value, isHex ? 16 : 10);
  const bool isNumber = !digits.empty() && error == std::errc() && end == digits.data() + digits.size();
  const bool isOctal = !isHex && digits.size() > 1 && digits[0] == '0';
  if (!isNumber || isOctal || value > (isNegative ? 128u : 255u)) {
    if (word.empty()) cursor.Refuse(at, cursor.Rest().substr(0, 1), "has no place in an array of bytes");
    cursor.Refuse(at, word,
                  isOctal ? "starts with 0; write it as 0x.. or in decimal"
                          : "is not a byte of an array: 0x00 to 0xFF, or -128 to 255");
  }
  return static_cast<char>(isNegative ? 256 - value : value);
}

std::string TakeArray(Cursor& cursor) {
  std::string bytes;
  const std::size_t start = cursor.At();
  const char open = cursor.Peek(), close = open == '{' ? '}' : ']';
  cursor.Skip();
  for (SkipSpace(cursor); cursor.Peek() != close; SkipSpace(cursor)) {
    if (cursor.IsAtEnd()) cursor.Refuse(start, {&open, 1}, "has no closing brace");
    if (cursor.Peek() == '\'') {
      const std::size_t at = cursor.At();
      const std::string character = TakeQuoted(cursor);
      if (character.size() != 1) cursor.Refuse(at, "'", "does not enclose one byte");
      bytes += character;
    } else {
      bytes += TakeNumber(cursor);
    }
    SkipSpace(cursor);
    if (cursor.Peek() != close && !cursor.Take(",")) {
      const std::size_t at = cursor.At();
      cursor.Refuse(at, cursor.Word(kSpace), "stands where a comma or the closing brace is needed");
    }
  }
  cursor.Skip();
  return bytes;
}

}  // namespace

bool IsSourceText(std::string_view text) {
  Cursor cursor(text, "");
  return FindStart(cursor);
}

std::string FromSourceText(std::string_view text, const std::string& what) {
  Cursor cursor(text, what);
  FindStart(cursor);
  std::string bytes;
  const bool isArray = cursor.Peek() == '{' || cursor.Peek() == '[';
  if (isArray) {
    bytes = TakeArray(cursor);
    SkipSpace(cursor);
  } else {
    for (; cursor.Peek() == '"' || cursor.Peek() == '\''; SkipSpace(cursor)) bytes += TakeQuoted(cursor);
  }
  std::size_t at = cursor.At();
  if (!cursor.IsAtEnd() && std::string_view(";),").find(cursor.Peek()) == std::string_view::npos)
    cursor.Refuse(at, cursor.Word(kSpace), "stands after the end of the bytes");
  if (FindStart(cursor)) {
    at = cursor.At();
    cursor.Refuse(at, cursor.Word(kSpace), "starts more bytes; one array or text is read");
  }
  return bytes;
}

}  // namespace tool
