// CString: the byte string used for text results and for texts passed by reference.
#pragma once

#include <cstdarg>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/FormatValue.h>

/// Holds bytes in code page 936 (GBK). All lengths and indexes count bytes. Copies own their bytes. Distinct
/// objects may be used on distinct threads; use one object from one thread at a time. A failed allocation
/// throws std::bad_alloc and leaves the object unchanged.
class ZVUTILIB_API CString {
 public:
  /// Creates an empty string.
  CString() = default;
  /// Copies a zero-terminated text; null gives an empty string.
  CString(const char* text);  // NOLINT(google-explicit-constructor): C strings convert, as users expect
  /// Copies the first `length` bytes of `text`; a null text or a length below 1 gives an empty string.
  CString(const char* text, int length);
  /// Repeats the byte `fill` `count` times; a count below 1 gives an empty string.
  explicit CString(char fill, int count = 1);
  /// Copies the bytes, including embedded zero bytes.
  explicit CString(std::string_view text) : text_(text) {}
  /// Takes over the bytes, including embedded zero bytes.
  explicit CString(std::string&& text) noexcept : text_(std::move(text)) {}

  /// Copies a zero-terminated text; null empties the string.
  CString& operator=(const char* text);

  /// Returns the length in bytes, without the terminator.
  int GetLength() const { return static_cast<int>(text_.size()); }
  /// Returns whether the length is 0.
  bool IsEmpty() const { return text_.empty(); }
  /// Sets the length to 0.
  void Empty() { text_.clear(); }

  /// Return the bytes, always zero-terminated; valid until the string changes.
  const char* GetString() const { return text_.c_str(); }
  operator const char*() const { return text_.c_str(); }  // NOLINT(google-explicit-constructor)

  /// Return the byte at `index`; the terminator reads as 0. REQUIRES: 0 <= index <= GetLength().
  char GetAt(int index) const { return text_.c_str()[index]; }
  char operator[](int index) const { return GetAt(index); }
  /// Replaces the byte at `index`. REQUIRES: 0 <= index < GetLength().
  void SetAt(int index, char value) { text_[static_cast<std::size_t>(index)] = value; }

  /// Returns the first `count` bytes; all bytes if there are fewer, none for a negative count.
  CString Left(int count) const;
  /// Returns the last `count` bytes, with the same limits.
  CString Right(int count) const;
  /// Return the bytes from `first` on, at most `count`; a negative `first` or `count` counts as 0.
  CString Mid(int first) const;
  CString Mid(int first, int count) const;

  /// Append a string, a text (null counts as "") or a byte.
  CString& operator+=(const CString& other);
  CString& operator+=(const char* text);
  CString& operator+=(char added);
  /// Appends `length` bytes; they may be part of this string.
  void Append(const char* text, int length);

  /// Return the byte index of the first occurrence of `word` or `wanted` at or after `start`, or -1. The
  /// search steps by characters from `start`: a match starts at the start of a character and compares bytes.
  /// Return -1 for a null word, a negative start or a start after the end.
  int Find(const char* word, int start = 0) const;
  int Find(char wanted, int start = 0) const;
  /// Returns the byte index of the last character equal to `wanted`, or -1.
  int ReverseFind(char wanted) const;

  /// Convert a to z to capitals, or A to Z to small letters. Double-byte characters and the length do not
  /// change.
  CString& MakeUpper();
  CString& MakeLower();

  /// Removes blanks and white-space control characters (9 to 13) at both ends.
  CString& Trim();
  /// Replaces each character equal to `oldByte`; returns the number of replacements.
  int Replace(char oldByte, char newByte);

  /// Replace the content with formatted text. The conversions are those of the platform's vsprintf, including
  /// %I64d and %lld. Arguments may point into this string.
  void Format(const char* format, ...);
  void FormatV(const char* format, va_list arguments);
  /// The same for calls with string objects among the values. "%s" prints a CString, a std::string or a
  /// CTextString up to its first zero byte; the object may be this string. An object of any other class does
  /// not compile.
  template <class... Values, std::enable_if_t<zvuti::kHasObjects<Values...>, int> = 0>
  void Format(const char* format, const Values&... values) {
    Format(format, zvuti::FormatValue(values)...);
  }
  /// Returns what "%s" prints for a string.
  friend const char* TextForFormat(const CString* text) { return text->GetString(); }

  /// Returns a value below, equal to or above 0, comparing bytes as unsigned; a null text counts as "".
  int Compare(const char* other) const;
  /// The same, treating a to z as A to Z.
  int CompareNoCase(const char* other) const;

  /// GetBuffer returns room for at least `length` bytes to write into; a negative length counts as 0.
  /// ReleaseBuffer ends the writing and sets the length. By default it ends the string at the first zero
  /// byte.
  char* GetBuffer(int length);
  void ReleaseBuffer(int length = -1);

  /// Concatenate the left and the right operand, appending as operator+= does.
  friend CString operator+(const CString& left, const CString& right) { return CString(left) += right; }
  friend CString operator+(const CString& left, const char* right) { return CString(left) += right; }
  friend CString operator+(const char* left, const CString& right) { return CString(left) += right; }
  friend CString operator+(const CString& left, char right) { return CString(left) += right; }

  /// Compare all bytes, as unsigned. A text ends at its zero byte; null counts as "".
  friend bool operator==(const CString& a, const CString& b) { return a.text_ == b.text_; }
  friend bool operator==(const CString& a, const char* b) { return a.Compare(b) == 0; }
  friend bool operator==(const char* a, const CString& b) { return b.Compare(a) == 0; }
  friend bool operator!=(const CString& a, const CString& b) { return !(a == b); }
  friend bool operator!=(const CString& a, const char* b) { return !(a == b); }
  friend bool operator!=(const char* a, const CString& b) { return !(a == b); }
  friend bool operator<(const CString& a, const CString& b) { return a.text_ < b.text_; }
  friend bool operator<(const CString& a, const char* b) { return a.Compare(b) < 0; }
  friend bool operator<(const char* a, const CString& b) { return b.Compare(a) > 0; }
  friend bool operator>(const CString& a, const CString& b) { return b < a; }
  friend bool operator>(const CString& a, const char* b) { return a.Compare(b) > 0; }
  friend bool operator>(const char* a, const CString& b) { return b.Compare(a) < 0; }
  friend bool operator<=(const CString& a, const CString& b) { return !(b < a); }
  friend bool operator<=(const CString& a, const char* b) { return a.Compare(b) <= 0; }
  friend bool operator<=(const char* a, const CString& b) { return b.Compare(a) >= 0; }
  friend bool operator>=(const CString& a, const CString& b) { return !(a < b); }
  friend bool operator>=(const CString& a, const char* b) { return a.Compare(b) >= 0; }
  friend bool operator>=(const char* a, const CString& b) { return b.Compare(a) <= 0; }

 private:
  std::string text_;
};
