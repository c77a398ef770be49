#include "decode/Layout.h"

#include <charconv>

#include "input/Cursor.h"
#include "shared/Shape.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

constexpr int kMostDepth = 16;
constexpr std::size_t kMostTimes = 1'000'000;
constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kEnds = " \t\r\n,*()";

class Parser {
 public:
  explicit Parser(const std::string& text) : cursor_(text, kNoSource) {}

  std::vector<Part> ParseAll() {
    std::vector<Part> parts = ParseParts(0);
    if (!cursor_.IsAtEnd()) Refuse("has no opening parenthesis");
    return parts;
  }

 private:
  std::vector<Part> ParseParts(int depth) {
    std::vector<Part> parts;
    do {
      cursor_.SkipAll(kBlanks);
      if (!parts.empty() && parts.back().isToEnd) Refuse("stands after *, which takes all bytes");
      parts.push_back(ParsePart(depth));
      cursor_.SkipAll(kBlanks);
    } while (cursor_.Take(","));
    if (!cursor_.IsAtEnd() && cursor_.Peek() != ')') Refuse("stands where a comma is needed");
    return parts;
  }

  Part ParsePart(int depth) {
    Part part;
    if (cursor_.Peek() == '(') {
      if (depth == kMostDepth) Refuse("opens too many groups in one another");
      cursor_.Skip();
      part.kind = Part::Kind::kGroup;
      part.group = ParseParts(depth + 1);
      if (!cursor_.Take(")")) Refuse("stands where ')' is needed");
      if (part.group.back().isToEnd) Refuse("ends a group that takes all bytes; repeat the group instead");
    } else {
      const std::size_t at = cursor_.At();
      part.name = cursor_.Word(kEnds);
      if (part.name.empty()) Refuse("stands where a record or an integer is needed");
      if (!ParseInteger(part)) {
        cursor_.MoveTo(at);
        RowsOf(part.name);  // throws if there is no such record
        cursor_.Skip(part.name.size());
      }
    }
    ParseTimes(part);
    return part;
  }

  static bool ParseInteger(Part& part) {
    std::string_view name = part.name;
    if (name.size() < 2 || (name[0] != 'u' && name[0] != 'i')) return false;
    part.isSigned = name[0] == 'i';
    part.isBigEndian = name.size() > 2 && name.substr(name.size() - 2) == "be";
    const std::string_view bits = name.substr(1, name.size() - (part.isBigEndian ? 3 : 1));
    part.bytes = bits == "8" ? 1 : bits == "16" ? 2 : bits == "32" ? 4 : bits == "64" ? 8 : 0;
    if (part.bytes == 0) return false;
    part.kind = Part::Kind::kInteger;
    return true;
  }

  void ParseTimes(Part& part) {
    cursor_.SkipAll(kBlanks);
    if (!cursor_.Take("*")) return;
    cursor_.SkipAll(kBlanks);
    const std::size_t at = cursor_.At();
    const std::string_view number = cursor_.Word(kEnds);
    part.isToEnd = number.empty();
    if (part.isToEnd) return;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), part.times);
    if (error == std::errc() && end == number.data() + number.size() && part.times > 0 &&
        part.times <= kMostTimes)
      return;
    cursor_.MoveTo(at);
    Refuse("is not a number of times, 1 to 1000000");
  }

  [[noreturn]] void Refuse(const std::string& problem) {
    const std::size_t at = cursor_.At();
    std::string word(cursor_.Word(kEnds).substr(0, 20));
    if (word.empty() && !cursor_.IsAtEnd()) word = cursor_.Peek();
    throw Failure("the layout, character " + std::to_string(at + 1) + ": " +
                  (word.empty() ? "its end " : std::string("'").append(word).append("' ")) + problem);
  }

  static inline const std::string kNoSource;
  Cursor cursor_;
};

}  // namespace

Layout ParseLayout(const std::string& text) {
  Layout layout;
  layout.parts = Parser(text).ParseAll();
  const Part& first = layout.parts[0];
  const bool isLone = layout.parts.size() == 1 && first.kind == Part::Kind::kRecord && first.times == 1 &&
                      !first.isToEnd && text.find('*') == text.npos;
  if (isLone) layout.lone = first.name;
  return layout;
}

}  // namespace tool
