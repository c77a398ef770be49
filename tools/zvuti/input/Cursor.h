// Reads a text word by word and reports an error at its line and column.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tool {

class Cursor {
 public:
  /// `what` names the source of the text in messages. `text` must outlive the object.
  Cursor(std::string_view text, const std::string& what) : text_(text), what_(what) {}

  bool IsAtEnd() const { return at_ >= text_.size(); }
  std::size_t At() const { return at_; }
  void MoveTo(std::size_t at) { at_ = at < text_.size() ? at : text_.size(); }
  std::string_view Rest() const { return text_.substr(at_); }
  /// Returns the character `ahead` of the current one, or a zero byte after the end.
  char Peek(std::size_t ahead = 0) const { return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0'; }
  void Skip(std::size_t count = 1) { MoveTo(at_ + count); }
  /// Moves past `start` and returns true, if the rest starts with it.
  bool Take(std::string_view start);
  /// Moves past the characters that are in `set`.
  void SkipAll(std::string_view set);
  /// Moves past the end of the first `end`, or to the end of the text.
  void SkipPast(std::string_view end);
  /// Returns the characters up to the first one that is in `ends`, and moves past them.
  std::string_view Word(std::string_view ends);

  /// Throws a Failure: "`what`, line 2, column 4: 'word' `problem`". The word starts at `at`; it is cut after
  /// 20 characters, and what is not printable ASCII is escaped.
  [[noreturn]] void Refuse(std::size_t at, std::string_view word, const std::string& problem) const;

 private:
  std::string_view text_;
  const std::string& what_;
  std::size_t at_ = 0;
};

/// Returns the value of a hexadecimal digit, or -1.
int DigitOf(char c);

}  // namespace tool
