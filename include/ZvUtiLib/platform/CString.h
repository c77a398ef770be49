// CString: the byte string of text results and of texts handed in by reference.
#pragma once

#include <cstdarg>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include <ZvUtiLib/Export.h>
#include <ZvUtiLib/platform/FormatValue.h>

/// Holds bytes in code page 936 (GBK); all lengths and indexes count bytes. A copy owns its bytes.
/// Distinct objects may be used on distinct threads; one object serves one thread at a time.
/// A heap that refuses memory shows as std::bad_alloc, with the object unchanged.
class ZVUTILIB_API CString {
 public:
  /// Empty.
  CString() = default;
  /// Copies a zero-terminated text; null gives an empty string.
  CString(const char* text);  // NOLINT(google-explicit-constructor): texts convert, as users expect
  /// Copies the first `length` bytes of `text`; a null text or a length below 1 gives an empty string.
  CString(const char* text, int length);
  /// `count` times the byte `fill`; a count below 1 gives an empty string.
  explicit CString(char fill, int count = 1);
  /// Copies bytes, embedded zero bytes included.
  explicit CString(std::string_view text) : text_(text) {}
  /// Takes over the bytes, embedded zero bytes included.
  explicit CString(std::string&& text) noexcept : text_(std::move(text)) {}

  /// Copies a zero-terminated text; null empties the string.
  CString& operator=(const char* text);

  /// Length in bytes, without the terminator.
  int GetLength() const { return static_cast<int>(text_.size()); }
  /// Whether the length is 0.
  bool IsEmpty() const { return text_.empty(); }
  /// Sets the length to 0.
  void Empty() { text_.clear(); }

  /// The bytes, always zero-terminated; good until the string changes.
  const char* GetString() const { return text_.c_str(); }
  operator const char*() const { return text_.c_str(); }  // NOLINT(google-explicit-constructor)

  /// The byte at `index`. REQUIRES: 0 <= index <= GetLength(); the terminator reads as 0.
  char GetAt(int index) const { return text_.c_str()[index]; }
  char operator[](int index) const { return GetAt(index); }
  /// Replaces the byte at `index`. REQUIRES: 0 <= index < GetLength().
  void SetAt(int index, char value) { text_[static_cast<std::size_t>(index)] = value; }

  /// The first `count` bytes; all of them where there are fewer, none for a negative count.
  CString Left(int count) const;
  /// The last `count` bytes, with the same limits.
  CString Right(int count) const;
  /// The bytes from `first` on, `count` at most; a negative `first` or `count` counts as 0.
  CString Mid(int first) const;
  CString Mid(int first, int count) const;

  /// Appends a string, a text (null counts as "") or a byte.
  CString& operator+=(const CString& other);
  CString& operator+=(const char* text);
  CString& operator+=(char added);
  /// Appends `length` bytes, which may lie inside this string.
  void Append(const char* text, int length);

  /// Byte index of the first occurrence of `word` at or after `start`, or -1. Goes by characters:
  /// a match begins where a character begins, counted from `start`, and compares byte by byte.
  /// A null word, a negative start and a start behind the end give -1.
  int Find(const char* word, int start = 0) const;
  int Find(char wanted, int start = 0) const;
  /// Byte index of the last character that is `wanted`, or -1.
  int ReverseFind(char wanted) const;

  /// Folds a to z to capitals, or A to Z to small letters; double-byte characters stay as they are,
  /// and so does the length.
  CString& MakeUpper();
  CString& MakeLower();

  /// Removes blanks and control white space (9 to 13) at both ends.
  CString& Trim();
  /// Replaces each character equal to `oldByte`; returns how many there were.
  int Replace(char oldByte, char newByte);

  /// Replaces the content by formatted text, with the conversions of the platform's vsprintf,
  /// %I64d and %lld among them. Arguments may be taken from this string itself.
  void Format(const char* format, ...);
  void FormatV(const char* format, va_list arguments);
  /// The same with texts among the values: "%s" prints a CString, a std::string or a CTextString as far as
  /// its first zero byte, this string itself included. An object of any other class does not compile.
  template <class... Values, std::enable_if_t<zvuti::kHasObjects<Values...>, int> = 0>
  void Format(const char* format, const Values&... values) {
    Format(format, zvuti::FormatValue(values)...);
  }
  /// What "%s" prints of a string.
  friend const char* TextForFormat(const CString* text) { return text->GetString(); }

  /// Below, at or above 0, comparing bytes as unsigned; a null text counts as "".
  int Compare(const char* other) const;
  /// The same, taking a to z as A to Z.
  int CompareNoCase(const char* other) const;

  /// Room for at least `length` bytes to write into; ReleaseBuffer ends the writing and sets the
  /// length, up to the first zero byte where none is given. A negative length counts as 0.
  char* GetBuffer(int length);
  void ReleaseBuffer(int length = -1);

  /// The left and then the right one, as operator+= appends them.
  friend CString operator+(const CString& left, const CString& right) { return CString(left) += right; }
  friend CString operator+(const CString& left, const char* right) { return CString(left) += right; }
  friend CString operator+(const char* left, const CString& right) { return CString(left) += right; }
  friend CString operator+(const CString& left, char right) { return CString(left) += right; }

  /// Compare all bytes of a string, as unsigned; a text ends at its zero byte, and null counts as "".
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
