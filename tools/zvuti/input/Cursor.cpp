#include "input/Cursor.h"

#include <algorithm>
#include <cstdio>

#include "shared/Terminal.h"

namespace tool {
namespace {

constexpr std::size_t kShownWord = 20;

std::string Quoted(std::string_view word) {
  std::string text = "'";
  for (const char c : word.substr(0, kShownWord)) {
    char escape[8] = {c};
    if (c < ' ' || c > '~')
      std::snprintf(escape, sizeof escape, "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
    text += escape;
  }
  return text + (word.size() > kShownWord ? "..'" : "'");
}

}  // namespace

bool Cursor::Take(std::string_view start) {
  if (Rest().substr(0, start.size()) != start) return false;
  at_ += start.size();
  return true;
}

void Cursor::SkipAll(std::string_view set) { MoveTo(text_.find_first_not_of(set, at_)); }

void Cursor::SkipPast(std::string_view end) {
  const std::size_t found = text_.find(end, at_);
  MoveTo(found == text_.npos ? text_.size() : found + end.size());
}

std::string_view Cursor::Word(std::string_view ends) {
  const std::size_t start = at_;
  MoveTo(text_.find_first_of(ends, at_));
  return text_.substr(start, at_ - start);
}

void Cursor::Refuse(std::size_t at, std::string_view word, const std::string& problem) const {
  const std::string_view before = text_.substr(0, at);
  const auto line = 1 + std::count(before.begin(), before.end(), '\n');
  const std::size_t column = at - (before.rfind('\n') == before.npos ? 0 : before.rfind('\n') + 1) + 1;
  throw Failure(what_ + ", line " + std::to_string(line) + ", column " + std::to_string(column) + ": " +
                (word.empty() ? "the text ends here; it " : Quoted(word) + " ") + problem);
}

int DigitOf(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  const char small = static_cast<char>(c | 0x20);
  return small >= 'a' && small <= 'f' ? small - 'a' + 10 : -1;
}

}  // namespace tool
